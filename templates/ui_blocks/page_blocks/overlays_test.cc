#include "block_test_util.h"

namespace {

using namespace pbtest;

TEST(Dialog, HiddenModalWindowWithCentredPanel) {
  auto c = composer(480, 272);
  ub::NodeList root;
  EXPECT_EQ(c->build_dialog(named({{"type", "dialog"}, {"title", "删除"}}, 3), root), 272);
  ASSERT_EQ(root.size(), 1u);
  const auto& win = *root[0];
  EXPECT_EQ(win.caption, "DialogWindow3");
  EXPECT_EQ(ltwh(win), std::make_tuple(0, 0, 480, 272));
  EXPECT_EQ(win.payload, (Json{{"modal", true}, {"visible", false}, {"touchable", false}}));
  EXPECT_EQ(captions(win.children), (std::vector<std::string>{"DialogScrim3", "DialogPanel3"}));
  EXPECT_EQ(bg_name(*win.children[0]), "cc_scrim_480x272.png");
  EXPECT_EQ(c->assets.at("cc_scrim_480x272.png").fill, c->tcol("scrim", 102));

  const auto& panel = *win.children[1];
  EXPECT_EQ(captions(panel.children),
            (std::vector<std::string>{"DialogPanelBg3", "DialogTitle3", "DialogBody3", "DialogButtonSecondary3",
                                      "DialogButtonPrimary3"}));
  const auto& m = c->m;
  const int pw = std::max(m.compact ? ub::r4(480 * 0.8) : ub::r4(480 * 0.6), 200);
  EXPECT_EQ(panel.pos.width, pw);
  EXPECT_EQ(panel.pos.left, (480 - pw) / 2);
  const int lines = m.compact ? 1 : 2;
  EXPECT_EQ(panel.children[2]->pos.height, m.h_b1 * lines);
  EXPECT_EQ(panel.children[3]->payload["text"], "取消");
  EXPECT_EQ(panel.children[4]->payload["text"], "确定");
  // Right of the primary button stays spacer2, or one more when the split is odd.
  const auto& prim = *panel.children[4];
  EXPECT_EQ(pw - (prim.pos.left + prim.pos.width), m.spacer2 + (pw - 3 * m.spacer2) % 2);
  EXPECT_EQ(bg_name(prim), ub::cat("btn_primary_", prim.pos.width, "x", m.btn_h, ".png"));
}

TEST(Dialog, NarrowScreenPanelIsAtLeast200) {
  auto c = composer(240, 320);
  ub::NodeList root;
  c->build_dialog(named({{"type", "dialog"}, {"visible", 1}}, 1), root);
  EXPECT_EQ(root[0]->children[1]->pos.width, 200);
  EXPECT_EQ(root[0]->children[1]->pos.left, 20);
  EXPECT_EQ(root[0]->payload["visible"], true);
}

TEST(Toast, NonModalPlateAsWideAsItsText) {
  auto c = composer(800, 480);
  ub::NodeList root;
  c->build_toast(named({{"type", "toast"}, {"visible", true}}, 2), root);
  const auto& win = *root[0];
  EXPECT_EQ(win.payload, (Json{{"modal", false}, {"visible", true}, {"touchable", false}}));
  const auto& m = c->m;
  // Empty text: the smallest text box (8) plus the side padding.
  const int w = 8 + 2 * m.spacer3;
  const auto& plate = *win.children[0];
  EXPECT_EQ(plate.caption, "ToastBg2");
  EXPECT_EQ(plate.pos.width, w);
  EXPECT_EQ(plate.pos.left, (800 - w) / 2);
  EXPECT_EQ(plate.pos.top, (int)((480 - m.toast_h) * m.toast_top_of_h));
  EXPECT_EQ(bg_name(plate), ub::cat("toast_bg_", w, "x", m.toast_h, ".png"));
  EXPECT_EQ(c->assets.at(bg_name(plate)).fill, c->tcol("mask", 153));
  EXPECT_EQ(ltwh(*win.children[1]), ltwh(plate));

  // A long text stops at 70% of the content width and is noted.
  c->build_toast(named({{"type", "toast"}, {"text", std::string(300, 'x')}}, 4), root);
  EXPECT_EQ(root[1]->children[0]->pos.width, ub::r4(m.content_w * 0.7));
  ASSERT_FALSE(c->notes.empty());
  EXPECT_NE(c->notes.back().find("ToastText4(toast)"), std::string::npos);
}

}  // namespace
