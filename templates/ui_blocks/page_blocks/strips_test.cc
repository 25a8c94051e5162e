#include "block_test_util.h"

namespace {

using namespace pbtest;

TEST(Banner, AllSixStatesTakeTheirColoursAndIcon) {
  struct Case {
    const char *state, *fg, *bg, *icon;
  };
  const Case cases[] = {{"info", "info", "info1", "info"},    {"success", "success", "success1", "check"},
                        {"warn", "warn", "warn1", "warning"}, {"danger", "danger", "danger1", "warning"},
                        {"ok", "success", "success1", "check"}, {"off", "fg2", "page", "info"}};
  auto c = composer(800, 480);
  const auto& m = c->m;
  for (const auto& k : cases) {
    SCOPED_TRACE(k.state);
    ub::NodeList content;
    c->build_banner(named({{"type", "banner"}, {"state", k.state}, {"text", "提示"}}, 1), content, m.margin, 0);
    const auto& kids = content[0]->children;
    EXPECT_EQ(captions(kids), (std::vector<std::string>{"BannerBg1", "Banner1Icon", "Banner1Text", "Banner1Close"}));
    const std::string bg = ub::cat("bnr_", k.state, "_", m.content_w, "x", m.banner_h, ".png");
    EXPECT_EQ(bg_name(*kids[0]), bg);
    EXPECT_EQ(c->assets.at(bg).fill, c->tcol(k.bg));
    EXPECT_EQ(color0(*kids[0]), c->col(k.fg));
    EXPECT_EQ(color0(*kids[2]), c->col(k.fg));
    EXPECT_EQ(bg_name(*kids[1]), ub::cat("ic_", k.icon, "_", m.ic_min, "_", k.state, ".png"));
    EXPECT_EQ(c->assets.at(bg_name(*kids[1])).color, c->tcol(k.fg));
    EXPECT_EQ(bg_name(*kids[3]), ub::cat("ic_close_", std::max(m.ic_min, 16), "_", k.state, ".png"));
  }
}

TEST(Banner, CloseButtonAndItsRowGap) {
  auto c = composer(480, 272);
  const auto& m = c->m;
  ub::NodeList content;
  c->build_banner(named({{"type", "banner"}, {"close", false}}, 1), content, m.margin, 0);
  const auto text = must_find(content, "Banner1Text");
  EXPECT_EQ(text->pos.left + text->pos.width, m.content_w - m.pad_r);
  EXPECT_EQ(find(content, "Banner1Close"), nullptr);
  EXPECT_TRUE(!c->row_gaps_ || c->row_gaps_->empty());

  c->build_banner(named({{"type", "banner"}}, 2), content, m.margin, 0);
  const auto close = must_find(content, "Banner2Close"), text2 = must_find(content, "Banner2Text");
  EXPECT_EQ(close->pos.left - (text2->pos.left + text2->pos.width), m.text_chev_gap);
  ASSERT_TRUE(c->row_gaps_.has_value());
  EXPECT_EQ(c->row_gaps_->back(), std::make_pair(std::string("Banner2Text"), m.text_chev_gap));
}

TEST(Pill, AsWideAsItsTextAtMostTheContent) {
  auto c = composer(480, 272);
  const auto& m = c->m;
  ub::NodeList content;
  EXPECT_EQ(c->build_pill(named({{"type", "status_pill"}}, 3), content, m.margin, 8), 8 + m.pill_h);
  EXPECT_EQ(bg_name(*content[0]->children[0]), ub::cat("pill_ok_", 8 + 2 * m.pill_pad, "x", m.pill_h, ".png"));
  c->build_pill(named({{"state", "off"}, {"text", std::string(200, 'x')}}, 4), content, m.margin, 0);
  EXPECT_EQ(content[1]->pos.width, m.content_w);
  EXPECT_EQ(color0(*content[1]->children[0]), c->col("page"));
  EXPECT_EQ(color0(*content[1]->children[1]), c->col("fg2"));
}

TEST(DividerLabel, TwoLinesOfOneImageAroundTheText) {
  auto c = composer(800, 480);
  const auto& m = c->m;
  ub::NodeList content;
  EXPECT_EQ(c->build_divider_label(named({{"text", "或"}}, 2), content, m.margin, 40), 40 + m.divider_h);
  EXPECT_EQ(captions(content), (std::vector<std::string>{"DividerLabel2LineL", "DividerLabel2LineR", "DividerLabel2Text"}));
  EXPECT_EQ(bg_name(*content[0]), bg_name(*content[1]));
  EXPECT_EQ(content[1]->pos.left + content[1]->pos.width, m.margin + m.content_w);
  EXPECT_EQ(content[2]->pos.left - (content[0]->pos.left + content[0]->pos.width), m.text_chev_gap);
  // A very long text: the box stops short of the content and the lines keep 4 px.
  content.clear();
  c->build_divider_label(named({{"text", std::string(400, 'x')}}, 3), content, m.margin, 0);
  EXPECT_EQ(content[2]->pos.width, m.content_w - 2 * (m.spacer + 4));
  EXPECT_EQ(content[0]->pos.width, 4);
}

TEST(EmptyState, DiscAboveTheMiddleOfAtLeastThirtyPercent) {
  auto c = composer(800, 480);
  const auto& m = c->m;
  const int s = ub::r4(m.icon_bg * 2);
  const int band = std::max(s + 2 * (m.spacer2 + 4 + m.h_b2), ub::r4(480 * 0.3));
  ub::NodeList content;
  EXPECT_EQ(c->build_empty(named({{"type", "empty_state"}, {"sub", "稍后再试"}}, 6), content, m.margin, 0), band);
  EXPECT_EQ(captions(content),
            (std::vector<std::string>{"EmptyStateBg6", "EmptyStateIcon6", "EmptyStateText6", "EmptyStateSub6"}));
  EXPECT_EQ(content[0]->pos.top, (band - s) / 2 - m.h_b1);
  EXPECT_EQ(bg_name(*content[1]), ub::cat("ic_info_", s / 2, ".png"));
}

}  // namespace
