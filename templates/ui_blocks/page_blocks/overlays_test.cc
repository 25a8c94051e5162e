#include "block_test_util.h"

namespace {

using namespace pbtest;

TEST(Dialog, HiddenModalWindowWithCentredPanel) {
  auto c = composer(480, 272);
  const auto& m = c->m;
  ub::NodeList root;
  EXPECT_EQ(c->build_dialog(named({{"type", "dialog"}, {"title", "删除"}}, 3), root), 272);
  const auto& win = *root.at(0);
  EXPECT_EQ(ltwh(win), std::make_tuple(0, 0, 480, 272));
  EXPECT_EQ(win.payload, (Json{{"modal", true}, {"visible", false}, {"touchable", false}}));
  EXPECT_EQ(captions(win.children), (std::vector<std::string>{"DialogScrim3", "DialogPanel3"}));
  EXPECT_EQ(bg_name(*win.children[0]), "cc_scrim_480x272.png");
  EXPECT_EQ(c->assets.at("cc_scrim_480x272.png").fill, c->tcol("scrim", 102));

  const auto& panel = *win.children[1];
  EXPECT_EQ(captions(panel.children), (std::vector<std::string>{"DialogPanelBg3", "DialogTitle3", "DialogBody3",
                                                                "DialogButtonSecondary3", "DialogButtonPrimary3"}));
  const int pw = std::max(m.compact ? ub::r4(480 * 0.8) : ub::r4(480 * 0.6), 200);
  EXPECT_EQ(std::make_pair(panel.pos.left, panel.pos.width), std::make_pair((480 - pw) / 2, pw));
  EXPECT_EQ(panel.children[2]->pos.height, m.h_b1 * (m.compact ? 1 : 2));
  EXPECT_EQ(panel.children[3]->payload["text"], "取消");
  // Right of the primary button: spacer2, one pixel more when the split is odd.
  const auto& prim = *panel.children[4];
  EXPECT_EQ(prim.payload["text"], "确定");
  EXPECT_EQ(pw - (prim.pos.left + prim.pos.width), m.spacer2 + (pw - 3 * m.spacer2) % 2);
  EXPECT_EQ(bg_name(prim), ub::cat("btn_primary_", prim.pos.width, "x", m.btn_h, ".png"));

  // On a 240-pixel-wide screen even 80% is too little: the panel is 200 wide.
  auto narrow = composer(240, 320);
  root.clear();
  narrow->build_dialog(named({{"type", "dialog"}, {"visible", 1}}, 1), root);
  EXPECT_EQ(root[0]->children[1]->pos.width, 200);
  EXPECT_EQ(root[0]->payload["visible"], true);
}

TEST(Toast, NonModalPlateAsWideAsItsText) {
  auto c = composer(800, 480);
  const auto& m = c->m;
  ub::NodeList root;
  c->build_toast(named({{"type", "toast"}, {"visible", true}}, 2), root);
  const auto& win = *root[0];
  EXPECT_EQ(win.payload, (Json{{"modal", false}, {"visible", true}, {"touchable", false}}));
  const int w = 8 + 2 * m.spacer3;  // the smallest text box plus the padding
  const auto& plate = *win.children[0];
  EXPECT_EQ(ltwh(plate), std::make_tuple((800 - w) / 2, (int)((480 - m.toast_h) * m.toast_top_of_h), w, m.toast_h));
  EXPECT_EQ(bg_name(plate), ub::cat("toast_bg_", w, "x", m.toast_h, ".png"));
  EXPECT_EQ(c->assets.at(bg_name(plate)).fill, c->tcol("mask", 153));
  EXPECT_EQ(ltwh(*win.children[1]), ltwh(plate));

  // A long text stops at 70% of the content width and is noted.
  c->build_toast(named({{"type", "toast"}, {"text", std::string(300, 'x')}}, 4), root);
  EXPECT_EQ(root[1]->children[0]->pos.width, ub::r4(m.content_w * 0.7));
  EXPECT_NE(c->notes.back().find("ToastText4(toast)"), std::string::npos);
}

}  // namespace
