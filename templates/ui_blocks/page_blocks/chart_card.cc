// Chart card: one composed chart picture on a white card, with an optional title, x-axis
// labels centred in the data slots and a one-line axis note.
#include <cmath>
#include <optional>

#include "assets/picture_names.h"
#include "checks/geometry.h"
#include "kinds/block_kind.h"
#include "page_blocks/block_parts.h"
#include "page_blocks/page_blocks.h"

namespace ub {

int build_chart_card(Build& bd, const BlockRecord& blk, NodeList& parent, int x, int y) {
  const Metrics& m = bd.page.m;
  const Json& kind_v = value(blk, "kind");
  if (!kind_v.is_string() || (kind_v != "line" && kind_v != "bar"))
    stop("[X] chart_card.kind 只支持 line / bar，得到 " + literal_form(kind_v));
  const std::string kind = kind_v.get<std::string>();

  std::vector<double> data;
  for (const Json& v : list(blk, "data")) {
    try {
      data.push_back(float_of(v));
    } catch (const InputError&) {
      stop("[X] chart_card.data 必须全是数字，得到 " + literal_form(v));
    }
  }
  std::optional<double> limit;
  if (is_set(blk, "limit")) {
    try {
      limit = float_of(value(blk, "limit"));
    } catch (const InputError&) {
      stop("[X] chart_card.limit 必须是数字，得到 " + literal_form(value(blk, "limit")));
    }
  }
  const int n = (int)data.size();
  if (n < 2) stop(cat("[X] chart_card.data 至少 2 个数据点，得到 ", n, " 个"));
  std::vector<std::string> labels;
  for (const Json& v : list(blk, "labels")) labels.push_back(to_text(v));
  if (!labels.empty() && (int)labels.size() != n)
    stop(cat("[X] chart_card.labels 个数（", labels.size(), "）必须与 data（", n, "）一致，或整省"));

  const std::string s_ = caption_id(blk);
  const int w = m.content_w, padl = m.pad_l, plot_w = w - 2 * padl, plot_h = m.chart_plot_h;
  const std::string title = text(blk, "title"), note = text(blk, "note");

  // Heights run downward from the top padding.
  int h = m.spacer2;
  const int y_title = h;
  if (!title.empty()) h += m.h_b1 + m.spacer;
  const int y_plot = h;
  h += plot_h;
  int y_lab = 0, y_note = 0;
  if (!labels.empty()) {
    h += m.spacer;
    y_lab = h;
    h += m.h_b2;
  }
  if (!note.empty()) {
    h += m.spacer1;
    y_note = h;
    h += m.h_b2;
  }
  h += m.spacer2;

  auto win = make_node("window", cat("ChartCard", s_), bd.controls.box(x, y, w, h));
  win->children.push_back(
      bd.controls.deco(cat("ChartCard", s_, "Bg"), bd.controls.box(0, 0, w, h), bd.page.col("surface"),
                       bd.pictures.shape(cat("card_", w, "x", h, ".png"), w, h, m.radius, bd.page.tcol("surface"))));
  if (!title.empty()) {
    const std::string cap = cat("ChartCard", s_, "Title");
    win->children.push_back(bd.controls.text(cap, bd.controls.box(padl, y_title, plot_w, m.h_b1), m.fs.b1,
                                             bd.page.col("fg1"), title, "", kAlignLeft, true));
    check_text_fit(bd.notes, bd.page, cap, title, m.fs.b1, plot_w, m.h_b1, "图表标题");
  }
  // The name holds the kind, the size and a digest of the data and the limit: charts of
  // one size differ.
  std::vector<double> digested = data;
  if (limit) digested.push_back(*limit);
  win->children.push_back(bd.controls.deco(
      cat("ChartCard", s_, "Plot"), bd.controls.box(padl, y_plot, plot_w, plot_h), bd.page.col("line"),
      bd.pictures.chart(cat("chart_", kind, "_", plot_w, "x", plot_h, "_", data_digest(digested), ".png"), plot_w,
                        plot_h, kind, data, bd.page.tcol("brand"), bd.page.tcol("line"), 1, limit,
                        bd.page.tcol("danger"))));
  if (!labels.empty()) {
    // One label per data slot; the last slot takes the remainder of the plot width.
    const Columns slots = split_columns(plot_w, n);
    for (int i = 0; i < n; ++i) {
      const std::string cap = cat("ChartCard", s_, "Label", i + 1);
      win->children.push_back(bd.controls.text(cap,
                                               bd.controls.box(padl + slots.lefts[i], y_lab, slots.widths[i], m.h_b2),
                                               m.fs.b2, bd.page.col("fg2"), labels[i], "", kAlignCenter));
      check_text_fit(bd.notes, bd.page, cap, labels[i], m.fs.b2, slots.widths[i], m.h_b2, "图表 x 轴刻度");
    }
  }
  if (!note.empty()) {
    const std::string cap = cat("ChartCard", s_, "Note");
    win->children.push_back(bd.controls.text(cap, bd.controls.box(padl, y_note, plot_w, m.h_b2), m.fs.b2,
                                             bd.page.col("fg2"), note, "", kAlignRight));
    check_text_fit(bd.notes, bd.page, cap, note, m.fs.b2, plot_w, m.h_b2, "图表轴注");
  }

  assert_children_fit(*win, w, h, cat("ChartCard", s_));
  parent.push_back(win);
  return y + h;
}

namespace {

long long chart_limits(const LimitCheck& lc, const BlockRecord& b) {
  const long long plot_w = lc.m.content_w - 2LL * lc.m.pad_l;
  const long long most = std::max<long long>(plot_w / kMinSlotPx, 2);
  const std::string reason = cat("slots of ", kMinSlotPx, " px fit in the plot's ", plot_w, " px");
  lc.at_most(b, "data", (long long)list_size(b, "data"), most, reason);
  lc.at_most(b, "labels", (long long)list_size(b, "labels"), most, reason);
  if (is_set(b, "limit")) {
    double v = 0;
    try {
      v = float_of(value(b, "limit"));
    } catch (const InputError&) {
      v = 0;  // the builder names the value that is no number
    }
    if (!(std::fabs(v) <= kMaxChartValue))
      fail_at(b, "limit", cat(literal_form(value(b, "limit")), " must be a finite number of magnitude at most 1e15"));
  }
  const Json& data = value(b, "data");
  if (!data.is_array()) return lc.m.h_b2;
  for (size_t i = 0; i < data.size(); ++i) {
    double v = 0;
    try {
      v = float_of(data[i]);
    } catch (const InputError&) {
      continue;  // the builder names the value that is no number
    }
    if (!(std::fabs(v) <= kMaxChartValue))
      fail_at(b, cat("data[", i, "]"), cat(literal_form(data[i]), " must be a finite number of magnitude at most 1e15"));
  }

  return lc.m.h_b2;
}

}  // namespace

extern const BlockKind kChartCard{.type = "chart_card", .prefix = "ChartCard", .group_gap = true, .limits = chart_limits, .build = at_xy<build_chart_card>};

}  // namespace ub
