#include "block_test_util.h"

namespace {

using namespace pbtest;

TEST(Toolbar, ActionsFromTheRightAndTheTitleUpToThem) {
  auto c = bench(800, 480);
  const auto& m = c->m;
  ub::NodeList band;
  const auto blk = named({{"type", "toolbar"}, {"title", "设备"}, {"backIcon", "x"},
                    {"actions", {"search", {{"icon", "plus"}}, Json::object()}}}, 5);
  EXPECT_EQ(build_toolbar(c->bd, blk, band), m.tb_h);
  EXPECT_EQ(bg_name(*must_find(band, "Toolbar5Action3Icon")), ub::cat("ic_more_", m.tb_ic, ".png"));  // no icon
  // The back picture's name does not change with backIcon.
  EXPECT_EQ(c->pictures.all().at(bg_name(*must_find(band, "Toolbar5BackIcon"))).g, "x");
  EXPECT_EQ(bg_name(*must_find(band, "Toolbar5BackIcon")), ub::cat("ic_back_", m.tb_ic, ".png"));
  const auto a3 = must_find(band, "Toolbar5Action3"), a1 = must_find(band, "Toolbar5Action1");
  EXPECT_EQ(a3->pos.left + a3->pos.width, 800 - m.margin);
  const auto title = must_find(band, "Toolbar5Title");
  EXPECT_EQ(title->pos.left + title->pos.width, a1->pos.left);  // flush on the leftmost hit box
}

TEST(Toolbar, WithoutBackAndWithAVeryLongTitle) {
  auto c = bench(320, 240);
  ub::NodeList band;
  build_toolbar(c->bd, named({{"type", "toolbar"}, {"back", false}}, 1), band);
  EXPECT_EQ(must_find(band, "Toolbar1Title")->pos.left, c->m.margin);
  EXPECT_EQ(find(band, "Toolbar1Back"), nullptr);
  build_toolbar(c->bd, named({{"type", "toolbar"}, {"title", std::string(60, 'W')}, {"actions", {"a", "b", "c"}}}, 2), band);
  EXPECT_GE(must_find(band, "Toolbar2Title")->pos.width, 1);
  EXPECT_NE(c->notes.all().back().find("Toolbar2Title(toolbar)"), std::string::npos);
}

// "2" selects the third item: the solid icon form in the brand colour.
TEST(Nav, ATextSelectionPicksItsItem) {
  auto c = bench(800, 480);
  ub::NodeList root;
  const auto blk = named({{"type", "bottom_nav"}, {"selected", "2"},
                    {"items", {{{"text", "首页"}, {"icon", "home"}}, "设置", {{"text", "我"}, {"icon", "user"}}}}},
                   7);
  EXPECT_EQ(build_nav(c->bd, blk, root), c->m.content_bottom);
  const auto on = must_find(root, "Nav7Item3Icon"), off = must_find(root, "Nav7Item2Icon");
  EXPECT_EQ(bg_name(*on), ub::cat("nav_user_", c->m.nav_ic, "_on.png"));
  EXPECT_EQ(bg_name(*off), ub::cat("nav_info_", c->m.nav_ic, "_off.png"));
  EXPECT_EQ(c->pictures.all().at(bg_name(*on)).color, c->ctx.tcol("brand"));
  EXPECT_EQ(color0(*must_find(root, "Nav7Item2Label")), c->ctx.col("fg2"));
}

}  // namespace
