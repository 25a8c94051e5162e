#include "block_test_util.h"

namespace {

using namespace pbtest;

TEST(Tabs, SelectedPartsAreCutFromTheBarBeforeTheButtons) {
  auto c = composer(1024, 600);
  const auto& m = c->m;
  ASSERT_NE(m.content_w % 3, 0);  // a real remainder for the last tab
  ub::NodeList content;
  EXPECT_EQ(c->build_tabs(named({{"type", "tabs"}, {"items", {"日", "周", 3}}, {"selected", 1}}, 4), content, 16, 10),
            10 + m.tab_h);
  const auto& win = *content[0];
  EXPECT_EQ(captions(win.children), (std::vector<std::string>{"TabsBg4", "TabsIndicator4", "TabsOnBg4", "Tabs4Item1",
                                                              "Tabs4Item2", "Tabs4Item3"}));
  const int w = m.content_w, h = m.tab_h, base = w / 3;
  EXPECT_EQ(win.children[5]->pos.width, w - 2 * base);
  EXPECT_EQ(win.children[5]->payload["text"], "3");

  // The indicator is the item's box at the bottom; the selected background stops above it.
  const auto& ind = *win.children[1];
  EXPECT_EQ(ltwh(ind), std::make_tuple(base, h - m.ind_h, base, m.ind_h));
  EXPECT_EQ(bg_name(ind), ub::cat("ind_", base, "x", m.ind_h, "_l", base, ".png"));
  const auto& clip = c->assets.at(bg_name(ind));
  EXPECT_EQ(std::make_tuple(clip.kind, clip.src_w, clip.src_h, clip.src_x, clip.src_y, clip.radius),
            std::make_tuple(std::string("clip"), w, h, base, h - m.ind_h, h / 2));
  const auto& on = *win.children[2];
  EXPECT_EQ(ltwh(on), std::make_tuple(base, 0, base, h - m.ind_h));
  EXPECT_EQ(bg_name(on), ub::cat("tab_on_", base, "x", h - m.ind_h, "_l", base, ".png"));
  EXPECT_EQ(c->assets.at(bg_name(on)).fill, c->tcol("brand1"));
  EXPECT_EQ(color0(*win.children[4]), c->col("brand"));
  EXPECT_EQ(color0(*win.children[3]), c->col("fg2"));

  // A false selection is the first tab; true is no number.
  c->build_tabs(named({{"items", {"a", "b"}}, {"selected", false}}, 5), content, 16, 0);
  EXPECT_EQ(must_find(content, "TabsIndicator5")->pos.left, 0);
  EXPECT_THROW(c->build_tabs(named({{"items", {"a", "b"}}, {"selected", true}}, 6), content, 0, 0), ub::InputError);
}

}  // namespace
