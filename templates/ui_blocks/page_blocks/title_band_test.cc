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

TEST(TitleBand, TitleCentredWithRoomForTheSubtitle) {
  Composer c(ubtest::page_spec(800, 480), "main", ubtest::installation());
  const Metrics& m = c.m;
  NodeList nodes;
  EXPECT_EQ(c.build_title(blk(R"({"title": "设置", "subtitle": "网络"})", 1), nodes, m.margin, 0), m.bar_top);
  ASSERT_EQ(nodes.size(), 2u);
  const Pos& t = nodes[0]->pos;
  EXPECT_EQ(nodes[0]->caption, "TextTitle");
  EXPECT_EQ(t.left, m.margin);
  EXPECT_EQ(t.top, (int)floordiv(m.bar_top - m.h_h1 - (m.h_b2 + 4), 2));
  EXPECT_EQ(t.width, 800 - 2 * m.margin);
  EXPECT_EQ(t.height, m.h_h1);
  EXPECT_EQ(nodes[0]->payload["bold"], true);
  EXPECT_EQ(nodes[1]->caption, "TextSubtitle");
  EXPECT_EQ(nodes[1]->pos.top, t.top + m.h_h1 + 4);
  EXPECT_EQ(nodes[1]->pos.height, m.h_b2);

  NodeList alone;
  c.build_title(blk(R"({"title": "设置"})", 1), alone, m.margin, 0);
  ASSERT_EQ(alone.size(), 1u);
  EXPECT_EQ(alone[0]->pos.top, (int)floordiv(m.bar_top - m.h_h1, 2));
}

TEST(TitleBand, CompactScreenDropsTheSubtitleButKeepsItsPlace) {
  Composer c(ubtest::page_spec(320, 240), "main", ubtest::installation());
  ASSERT_TRUE(c.m.compact);
  NodeList nodes;
  c.build_title(blk(R"({"title": "设置", "subtitle": "网络"})", 1), nodes, c.m.margin, 0);
  ASSERT_EQ(nodes.size(), 1u);
  EXPECT_EQ(nodes[0]->pos.top, (int)floordiv(c.m.bar_top - c.m.h_h1 - (c.m.h_b2 + 4), 2));
}

TEST(BottomBar, ButtonsFromTheRightAndStatusAtTheLeft) {
  Composer c(ubtest::page_spec(800, 480), "main", ubtest::installation());
  const Metrics& m = c.m;
  NodeList nodes;
  EXPECT_EQ(c.build_actions(blk(R"({"secondary": "取消", "status": "已连接"})", 7), nodes, m.margin, 0), 480);
  ASSERT_EQ(nodes.size(), 4u);
  EXPECT_EQ(nodes[0]->caption, "FooterBg7");
  EXPECT_EQ(nodes[0]->pos.top, m.content_bottom);
  EXPECT_EQ(nodes[0]->pos.height, m.bar_bot);
  EXPECT_EQ(nodes[0]->payload["backgroundPic"], cat("images/footbg_800x", m.bar_bot, ".png"));

  const int px = 800 - m.margin - m.btn_w;
  const int by = m.content_bottom + (int)floordiv(m.bar_bot - m.btn_h, 2);
  EXPECT_EQ(nodes[1]->caption, "ButtonSecondary7");
  EXPECT_EQ(nodes[1]->pos.left, px - m.spacer - m.btn_w);
  EXPECT_EQ(nodes[1]->payload["text"], "取消");
  EXPECT_EQ(nodes[2]->caption, "ButtonPrimary7");
  EXPECT_EQ(nodes[2]->pos.left, px);
  EXPECT_EQ(nodes[2]->pos.top, by);
  EXPECT_EQ(nodes[2]->payload["text"], "确定");
  EXPECT_EQ(nodes[2]->payload["backgroundPic"], cat("images/btn_primary_", m.btn_w, "x", m.btn_h, ".png"));
  EXPECT_EQ(nodes[3]->caption, "ActionStatus7");
  EXPECT_EQ(nodes[3]->pos.width, r4(m.content_w * 0.4));
  EXPECT_EQ(nodes[3]->pos.top, by + (int)floordiv(m.btn_h - m.h_b2, 2));

  NodeList only;
  c.build_actions(blk(R"({"primary": "保存"})", 2), only, m.margin, 0);
  ASSERT_EQ(only.size(), 2u);
  EXPECT_EQ(only[1]->pos.left, px);  // without a secondary the primary keeps its place
}

TEST(BottomBar, LongStatusIsNotedNotRefused) {
  Composer c(ubtest::page_spec(320, 240), "main", ubtest::installation());
  NodeList nodes;
  c.build_actions(blk(R"({"status": "这是一段非常非常非常非常非常非常长的状态文字"})", 3), nodes, c.m.margin, 0);
  ASSERT_EQ(c.notes.size(), 1u);
  EXPECT_NE(c.notes[0].find("ActionStatus3(footer) 文本「"), std::string::npos);
  EXPECT_NE(c.notes[0].find("文案过长"), std::string::npos);
}
