#include "assets/picture_names.h"
#include "block_test_util.h"

namespace {

using namespace pbtest;

TEST(ChartCard, LabelsInDataSlotsAndHeights) {
  auto c = composer(1024, 600);
  const auto& m = c->m;
  const int plot_w = m.content_w - 2 * m.pad_l, base = plot_w / 3;
  ASSERT_NE(plot_w % 3, 0);
  ub::NodeList content;
  Json blk = {{"kind", "line"}, {"data", {1, "2.5", 3}}, {"labels", {"一", "二", 3}}, {"title", "温度"}, {"note", "度"}};
  const int end = c->build_chart_card(named(blk, 4), content, m.margin, 0);
  const auto& win = *content[0];
  EXPECT_EQ(end, 2 * m.spacer2 + m.h_b1 + m.spacer + m.chart_plot_h + m.spacer + m.h_b2 + m.spacer1 + m.h_b2);
  EXPECT_EQ(captions(win.children), (std::vector<std::string>{"ChartCard4Bg", "ChartCard4Title", "ChartCard4Plot",
                                                              "ChartCard4Label1", "ChartCard4Label2",
                                                              "ChartCard4Label3", "ChartCard4Note"}));
  const auto& l3 = *win.children[5];
  EXPECT_EQ(std::make_pair(l3.pos.left, l3.pos.left + l3.pos.width), std::make_pair(m.pad_l + 2 * base, m.pad_l + plot_w));
  const std::string plot =
      ub::cat("chart_line_", plot_w, "x", m.chart_plot_h, "_", ub::data_digest({1, 2.5, 3}), ".png");
  EXPECT_EQ(bg_name(*win.children[2]), plot);
  EXPECT_EQ(c->assets.at(plot).data, (std::vector<double>{1, 2.5, 3}));

  // Neither title nor labels nor note; a false kind is a bar chart.
  content.clear();
  c->build_chart_card(named({{"kind", false}, {"data", {2, 2}}}, 5), content, 0, 0);
  EXPECT_EQ(content[0]->pos.height, 2 * m.spacer2 + m.chart_plot_h);
  EXPECT_EQ(bg_name(*content[0]->children[1]),
            ub::cat("chart_bar_", plot_w, "x", m.chart_plot_h, "_", ub::data_digest({2, 2}), ".png"));
}

TEST(ChartCard, StopsComeInTheirOrderWithLiteralForms) {
  auto c = composer(480, 272);
  ub::NodeList content;
  auto chart = [&](Json blk) { return stop_message([&] { c->build_chart_card(named(blk, 1), content, 0, 0); }); };
  EXPECT_EQ(chart({{"kind", "pie"}, {"data", {"x"}}}), "[X] chart_card.kind 只支持 line / bar，得到 'pie'");
  EXPECT_EQ(chart({{"kind", 3}}), "[X] chart_card.kind 只支持 line / bar，得到 3");
  EXPECT_EQ(chart({{"data", {nullptr}}}), "[X] chart_card.data 必须全是数字，得到 None");
  EXPECT_EQ(chart({{"data", {1, true}}}), "[X] chart_card.data 必须全是数字，得到 True");
  EXPECT_EQ(chart({{"data", {1}}, {"labels", {"a", "b"}}}), "[X] chart_card.data 至少 2 个数据点，得到 1 个");
  EXPECT_EQ(chart({{"data", {"1e3", " 2.5 "}}}), "");
}

TEST(Loading, SpinnerCentredSkeletonInsetWithAShortLastBar) {
  auto c = composer(480, 272);
  const auto& m = c->m;
  ub::NodeList content;
  c->build_loading(named({{"type", "loading"}}, 2), content, m.margin, 0);
  const auto& sp = *content[0];
  EXPECT_GE(sp.pos.height, ub::r4(272 * m.load_h_of_h));
  EXPECT_EQ(captions(sp.children), (std::vector<std::string>{"Loading2Bg", "Loading2Icon", "Loading2Text"}));
  EXPECT_EQ(sp.children[2]->payload["text"], "加载中...");
  EXPECT_EQ(ltwh(*sp.children[2]), std::make_tuple(0, sp.children[1]->pos.top + m.ic_min + m.spacer, m.content_w, m.h_b1));
  EXPECT_EQ(bg_name(*sp.children[1]), ub::cat("ic_loader_", m.ic_min, ".png"));

  const int tw = m.content_w - 2 * m.pad_l;
  content.clear();
  c->build_loading(named({{"variant", "skeleton"}, {"lines", 1}}, 3), content, m.margin, 0);
  EXPECT_EQ(captions(content[0]->children), (std::vector<std::string>{"Loading3Bg", "Loading3Text", "Loading3Bar1"}));
  EXPECT_EQ(content[0]->children[2]->pos.width, std::max(ub::r4(tw * 0.6), 8));
  EXPECT_EQ(content[0]->pos.height, 2 * m.spacer2 + m.h_b1 + m.spacer1 + m.load_bar_h);
  EXPECT_EQ(content[0]->children[1]->payload["alignment"], 36);

  // lines 0 counts as false and gives 3; a negative value gives 1.
  content.clear();
  c->build_loading(named({{"variant", "skeleton"}, {"lines", 0}}, 4), content, 0, 0);
  c->build_loading(named({{"variant", "skeleton"}, {"lines", -2}}, 5), content, 0, 0);
  EXPECT_EQ(content[0]->children.size(), 2u + 3);
  EXPECT_EQ(bg_name(*content[0]->children[2]), ub::cat("skel_", tw, "x", m.load_bar_h, ".png"));
  EXPECT_EQ(content[1]->children.size(), 2u + 1);
}

}  // namespace
