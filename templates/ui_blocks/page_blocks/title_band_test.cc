#include <gtest/gtest.h>

#include "compose.h"
#include "test_support.h"

using namespace ub;

namespace {

Json blk(const char* s, int seq) {
  Json b = Json::parse(s);
  b["_seq"] = seq;
  return b;
}

}  // namespace

TEST(TitleBand, CompactScreenDropsTheSubtitleButKeepsItsPlace) {
  Composer c(ubtest::page_spec(320, 240), "main", ubtest::installation());
  ASSERT_TRUE(c.m.compact);
  NodeList nodes;
  c.build_title(blk(R"({"title": "设置", "subtitle": "网络"})", 1), nodes, c.m.margin, 0);
  ASSERT_EQ(nodes.size(), 1u);
  EXPECT_EQ(nodes[0]->pos.top, (int)floordiv(c.m.bar_top - c.m.h_h1 - (c.m.h_b2 + 4), 2));
}

TEST(BottomBar, PrimaryKeepsItsPlaceWithoutASecondary) {
  Composer c(ubtest::page_spec(800, 480), "main", ubtest::installation());
  NodeList both, only;
  EXPECT_EQ(c.build_actions(blk(R"({"secondary": "取消", "status": "已连接"})", 7), both, c.m.margin, 0), 480);
  c.build_actions(blk(R"({"primary": "保存"})", 2), only, c.m.margin, 0);
  ASSERT_EQ(both.size(), 4u);
  ASSERT_EQ(only.size(), 2u);
  EXPECT_EQ(both[2]->caption, "ButtonPrimary7");
  EXPECT_EQ(both[2]->payload.to_json()["text"], "确定");  // the default text
  EXPECT_EQ(only[1]->pos.left, both[2]->pos.left);
  EXPECT_EQ(both[1]->pos.left + both[1]->pos.width + c.m.spacer, both[2]->pos.left);
  EXPECT_EQ(both[3]->caption, "ActionStatus7");
  EXPECT_EQ(both[3]->pos.left, c.m.margin);
}
