#include "block_test_util.h"

namespace {

using namespace pbtest;

TEST(Tabs, SelectedPartsAreCutFromTheBarBeforeTheButtons) {
  auto c = composer(1024, 600);
  ub::NodeList content;
  const auto& m = c->m;
  ASSERT_NE(m.content_w % 3, 0);  // a real remainder for the last tab
  EXPECT_EQ(c->build_tabs(named({{"type", "tabs"}, {"items", {"日", "周", 3}}, {"selected", 1}}, 4), content, m.margin, 10),
            10 + m.tab_h);
  const auto& win = *content[0];
  EXPECT_EQ(captions(win.children), (std::vector<std::string>{"TabsBg4", "TabsIndicator4", "TabsOnBg4", "Tabs4Item1",
                                                              "Tabs4Item2", "Tabs4Item3"}));
  const int w = m.content_w, h = m.tab_h, base = w / 3;
  EXPECT_EQ(win.children[5]->pos.width, w - 2 * base);
  EXPECT_EQ(win.children[5]->payload["text"], "3");

  // The indicator is exactly the item's box at the bottom; the background stops above it.
  const auto& ind = *win.children[1];
  EXPECT_EQ(ltwh(ind), std::make_tuple(base, h - m.ind_h, base, m.ind_h));
  EXPECT_EQ(bg_name(ind), ub::cat("ind_", base, "x", m.ind_h, "_l", base, ".png"));
  const auto& clip = c->assets.at(bg_name(ind));
  EXPECT_EQ(clip.kind, "clip");
  EXPECT_EQ(std::make_tuple(clip.src_w, clip.src_h, clip.src_x, clip.src_y, clip.radius),
            std::make_tuple(w, h, base, h - m.ind_h, h / 2));
  const auto& on = *win.children[2];
  EXPECT_EQ(ltwh(on), std::make_tuple(base, 0, base, h - m.ind_h));
  EXPECT_EQ(bg_name(on), ub::cat("tab_on_", base, "x", h - m.ind_h, "_l", base, ".png"));
  EXPECT_EQ(c->assets.at(bg_name(on)).fill, c->tcol("brand1"));

  EXPECT_EQ(color0(*win.children[4]), c->col("brand"));
  EXPECT_EQ(color0(*win.children[3]), c->col("fg2"));
}

TEST(Tabs, CountAndSelectionBounds) {
  auto c = composer(480, 272);
  ub::NodeList content;
  auto tabs = [&](Json blk) { return stop_message([&] { c->build_tabs(named(blk, 1), content, 0, 0); }); };
  EXPECT_EQ(tabs({{"items", nullptr}}), "[X] tabs.items 至少 2 个（分段控件），得到 0");
  EXPECT_EQ(tabs({{"items", {"a", "b"}}, {"selected", 2}}), "[X] tabs.selected=2 越界（可选 0~1）");
  EXPECT_EQ(tabs({{"items", {"a", "b"}}, {"selected", false}}), "");
  EXPECT_THROW(c->build_tabs(named({{"items", {"a", "b"}}, {"selected", true}}, 2), content, 0, 0), ub::InputError);
}

}  // namespace
