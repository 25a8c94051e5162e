#include "block_test_util.h"

namespace {

using namespace pbtest;

TEST(Banner, EveryStateTakesItsColoursAndIcon) {
  struct Case {
    const char *state, *fg, *bg, *icon;
  };
  const Case cases[] = {{"info", "info", "info1", "info"},    {"success", "success", "success1", "check"},
                        {"warn", "warn", "warn1", "warning"}, {"danger", "danger", "danger1", "warning"},
                        {"ok", "success", "success1", "check"}, {"off", "fg2", "page", "info"}};
  auto c = bench(800, 480);
  for (const auto& k : cases) {
    SCOPED_TRACE(k.state);
    ub::NodeList content;
    build_banner(c->bd, named({{"type", "banner"}, {"state", k.state}, {"text", "提示"}}, 1), content, c->m.margin, 0);
    const auto& kids = content[0]->children;
    EXPECT_EQ(c->pictures.all().at(bg_name(*kids[0])).fill, c->ctx.tcol(k.bg));
    EXPECT_EQ(color0(*kids[2]), c->ctx.col(k.fg));
    EXPECT_EQ(bg_name(*kids[1]), ub::cat("ic_", k.icon, "_", c->m.ic_min, "_", k.state, ".png"));
    EXPECT_EQ(c->pictures.all().at(bg_name(*kids[1])).color, c->ctx.tcol(k.fg));
  }
}

TEST(Banner, CloseButtonAndItsRowGap) {
  auto c = bench(480, 272);
  const auto& m = c->m;
  ub::NodeList content;
  build_banner(c->bd, named({{"type", "banner"}, {"close", false}}, 1), content, m.margin, 0);
  const auto text = must_find(content, "Banner1Text");
  EXPECT_EQ(text->pos.left + text->pos.width, m.content_w - m.pad_r);
  EXPECT_EQ(find(content, "Banner1Close"), nullptr);
  EXPECT_TRUE(!c->rows.row_gaps() || c->rows.row_gaps()->empty());

  build_banner(c->bd, named({{"type", "banner"}}, 2), content, m.margin, 0);
  ASSERT_TRUE(c->rows.row_gaps().has_value());
  EXPECT_EQ(c->rows.row_gaps()->back(), std::make_pair(std::string("Banner2Text"), m.text_chev_gap));
}

// Very long texts: the pill stops at the content width, the divider's lines keep 4 px.
TEST(Strips, LongTextsStopShortOfTheContent) {
  auto c = bench(800, 480);
  const auto& m = c->m;
  ub::NodeList pill, divider;
  build_pill(c->bd, named({{"type", "status_pill"}, {"state", "off"}, {"text", std::string(200, 'x')}}, 4), pill, m.margin, 0);
  EXPECT_EQ(pill[0]->pos.width, m.content_w);
  EXPECT_EQ(color0(*pill[0]->children[0]), c->ctx.col("page"));
  build_divider_label(c->bd, named({{"type", "divider_label"}, {"text", std::string(400, 'x')}}, 3), divider, m.margin, 0);
  EXPECT_EQ(divider[2]->pos.width, m.content_w - 2 * (m.spacer + 4));
  EXPECT_EQ(divider[0]->pos.width, 4);
}

}  // namespace
