#include <gtest/gtest.h>

#include "page_bench.h"
#include "page_blocks/page_blocks.h"

using namespace ub;

namespace {

ubtest::Named blk(const char* type, const char* s, int seq) {
  Json b = Json::parse(s);
  b["type"] = type;
  return ubtest::Named(std::move(b), seq);
}

}  // namespace

TEST(TitleBand, CompactScreenDropsTheSubtitleButKeepsItsPlace) {
  ubtest::PageBench c(ubtest::page_spec(320, 240));
  ASSERT_TRUE(c.m.compact);
  NodeList nodes;
  build_title(c.bd, blk("page_title", R"({"title": "设置", "subtitle": "网络"})", 1), nodes, c.m.margin, 0);
  ASSERT_EQ(nodes.size(), 1u);
  EXPECT_EQ(nodes[0]->pos.top, (int)floordiv(c.m.bar_top - c.m.h_h1 - (c.m.h_b2 + 4), 2));
}

TEST(BottomBar, PrimaryKeepsItsPlaceWithoutASecondary) {
  ubtest::PageBench c(ubtest::page_spec(800, 480));
  NodeList both, only;
  EXPECT_EQ(build_actions(c.bd, blk("bottom_actions", R"({"secondary": "取消", "status": "已连接"})", 7), both, c.m.margin, 0), 480);
  build_actions(c.bd, blk("bottom_actions", R"({"primary": "保存"})", 2), only, c.m.margin, 0);
  ASSERT_EQ(both.size(), 4u);
  ASSERT_EQ(only.size(), 2u);
  EXPECT_EQ(both[2]->caption, "ButtonPrimary7");
  EXPECT_EQ(both[2]->payload.to_json()["text"], "确定");  // the default text
  EXPECT_EQ(only[1]->pos.left, both[2]->pos.left);
  EXPECT_EQ(both[1]->pos.left + both[1]->pos.width + c.m.spacer, both[2]->pos.left);
  EXPECT_EQ(both[3]->caption, "ActionStatus7");
  EXPECT_EQ(both[3]->pos.left, c.m.margin);
}
