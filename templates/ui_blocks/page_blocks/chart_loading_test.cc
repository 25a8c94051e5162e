#include "assets/picture_names.h"
#include "block_test_util.h"

namespace {

using namespace pbtest;

// Neither title nor labels nor note: the plot alone; a false kind is a bar chart.
TEST(ChartCard, BarePlotOfAFalseKindIsABarChart) {
  auto c = bench(1024, 600);
  const auto& m = c->m;
  ub::NodeList content;
  build_chart_card(c->bd, named({{"type", "chart_card"}, {"kind", false}, {"data", {2, 2}}}, 5), content, 0, 0);
  EXPECT_EQ(content[0]->pos.height, 2 * m.spacer2 + m.chart_plot_h);
  EXPECT_EQ(bg_name(*content[0]->children[1]), ub::cat("chart_bar_", m.content_w - 2 * m.pad_l, "x", m.chart_plot_h,
                                                       "_", ub::data_digest({2, 2}), ".png"));
}

// The limit is part of the picture and of its name: charts differing in it alone differ.
TEST(ChartCard, LimitEntersThePictureAndItsName) {
  auto c = bench(800, 480);
  const auto& m = c->m;
  ub::NodeList content;
  build_chart_card(c->bd, named({{"type", "chart_card"}, {"data", {3, 5}}, {"limit", 4}}, 1), content, 0, 0);
  build_chart_card(c->bd, named({{"type", "chart_card"}, {"data", {3, 5}}, {"limit", "4.5"}}, 2), content, 0, 0);
  build_chart_card(c->bd, named({{"type", "chart_card"}, {"data", {3, 5}}}, 3), content, 0, 0);
  const std::string stem = ub::cat("chart_bar_", m.content_w - 2 * m.pad_l, "x", m.chart_plot_h, "_");
  EXPECT_EQ(bg_name(*content[0]->children[1]), stem + ub::data_digest({3, 5, 4}) + ".png");
  EXPECT_EQ(bg_name(*content[1]->children[1]), stem + ub::data_digest({3, 5, 4.5}) + ".png");
  EXPECT_EQ(bg_name(*content[2]->children[1]), stem + ub::data_digest({3, 5}) + ".png");
  const ub::Asset& a = c->pictures.all().at(bg_name(*content[0]->children[1]));
  EXPECT_EQ(a.limit, 4.0);
  EXPECT_EQ(a.limit_color, c->ctx.tcol("danger"));
  EXPECT_FALSE(c->pictures.all().at(bg_name(*content[2]->children[1])).limit.has_value());
  EXPECT_EQ(stop_message([&] {
              build_chart_card(c->bd, named({{"type", "chart_card"}, {"data", {1, 2}}, {"limit", "high"}}, 4), content,
                               0, 0);
            }),
            "[X] chart_card.limit 必须是数字，得到 'high'");
}

TEST(ChartCard, StopsComeInTheirOrderWithLiteralForms) {
  auto c = bench(480, 272);
  ub::NodeList content;
  auto chart = [&](Json blk) {
    blk["type"] = "chart_card";
    return stop_message([&] { build_chart_card(c->bd, named(blk, 1), content, 0, 0); });
  };
  EXPECT_EQ(chart({{"kind", "pie"}, {"data", {"x"}}}), "[X] chart_card.kind 只支持 line / bar，得到 'pie'");
  EXPECT_EQ(chart({{"kind", 3}}), "[X] chart_card.kind 只支持 line / bar，得到 3");
  EXPECT_EQ(chart({{"data", {nullptr}}}), "[X] chart_card.data 必须全是数字，得到 None");
  EXPECT_EQ(chart({{"data", {1, true}}}), "[X] chart_card.data 必须全是数字，得到 True");
  EXPECT_EQ(chart({{"data", {1}}, {"labels", {"a", "b"}}}), "[X] chart_card.data 至少 2 个数据点，得到 1 个");
  EXPECT_EQ(chart({{"data", {"1e3", " 2.5 "}}}), "");
}

// lines 0 counts as false and gives 3 bars; a negative value gives 1.
TEST(Loading, SkeletonLineCounts) {
  auto c = bench(480, 272);
  ub::NodeList content;
  build_loading(c->bd, named({{"type", "loading"}, {"variant", "skeleton"}, {"lines", 0}}, 4), content, 0, 0);
  build_loading(c->bd, named({{"type", "loading"}, {"variant", "skeleton"}, {"lines", -2}}, 5), content, 0, 0);
  EXPECT_EQ(content[0]->children.size(), 2u + 3);
  EXPECT_EQ(content[1]->children.size(), 2u + 1);
}

}  // namespace
