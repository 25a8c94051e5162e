// The wheel picker: one cycling listview per column over a static selection band.
#include <cmath>

#include "kinds/block_kind.h"
#include "rows/listview.h"
#include "rows/row_text.h"
#include "rows/rows.h"

namespace ub {

extern const BlockKind kWheelPicker;

namespace {

bool is_whole(const Json& v) {
  return v.is_number_integer() || v.is_number_unsigned() ||
         (v.is_number_float() && std::isfinite(v.get<double>()) && v.get<double>() == std::trunc(v.get<double>()));
}

// An integer count, a list, or one column (the library's default).
int column_count(const BlockRecord& blk) {
  const Json& cols = value(blk, "columns");
  if (!truthy(cols)) return 1;
  if (cols.is_boolean()) return 1;
  // A whole number, also written with a fraction of zero (2.0).
  if (is_whole(cols)) return static_cast<int>(std::max(int_of(cols), 1LL));
  if (cols.is_array()) return static_cast<int>(cols.size());
  throw KeyError("columns", "expected a whole number or a list, got " + shown_value(cols));
}

}  // namespace

std::vector<std::vector<std::string>> wheel_columns(const BlockRecord& wheel) {
  std::vector<std::vector<std::string>> out(column_count(wheel));
  const Json& cols = value(wheel, "columns");
  if (!cols.is_array()) return out;
  for (size_t i = 0; i < cols.size(); ++i)
    if (cols[i].is_array())
      for (const Json& v : cols[i]) out[i].push_back(to_text(v));
  return out;
}

int build_wheel(Build& bd, const BlockRecord& blk, NodeList& parent, int x, int y, int w) {
  const Metrics& m = bd.page.m;
  const Json& tok = bd.page.tok;
  const std::string& name = blk.name;
  // Only the number of columns shapes the picker.
  const int n = column_count(blk);
  // The middle row is the selected one, so the count must be odd.
  const int rows = static_cast<int>(std::max(integer(blk, "rows"), 3LL));
  if (rows % 2 == 0) stop(cat("[X] ", kWheelPicker.type, ".rows 必须为奇数（正中行 = 选中行），得到 ", rows));
  const int ih = m.wheel_h;
  const int lv_h = rows * ih;  // exactly one window, no remainder
  const int gap = m.spacer2;

  int avail = static_cast<int>(floordiv(w - (n - 1) * gap - 2 * m.pad_l, n));
  avail = std::max(avail, 2 * m.cb);
  avail = std::min(avail, m.wheel_col_w);
  const int col_w = r4(avail);

  int cur = y;
  if (is_set(blk, "label")) {
    parent.push_back(bd.controls.text(cat("Label", name), bd.controls.box(x + m.pad_l, y, w - 2 * m.pad_l, m.h_b2),
                                      m.fs.b2, bd.page.col("fg2"), text(blk, "label")));
    cur += m.h_b2 + m.spacer;
  }

  // Columns stand together in the middle and never start left of the block.
  const int total = n * col_w + (n - 1) * gap;
  const int cx0 = x + std::max(0, static_cast<int>(floordiv(w - total, 2)));
  // The limit comes from the shape tokens, not from m.radius.
  int band_r = static_cast<int>(half_even(ih * 0.18));
  band_r = std::min(band_r, static_cast<int>(int_of(get(get(tok, "shape"), "container_radius_px"))));
  band_r = std::max(band_r, 4);

  NodeList bands, lists;
  for (int i = 0; i < n; ++i) {
    const int cx = cx0 + i * (col_w + gap);
    const std::string cap = cat(name, "Col", i + 1);
    const std::string p =
        bd.pictures.shape(cat("wband_", col_w, "x", ih, ".png"), col_w, ih, band_r, bd.page.tcol("brand1"));
    bands.push_back(bd.controls.deco(cat("Band", cap), bd.controls.box(cx, cur + (rows / 2) * ih, col_w, ih),
                                     bd.page.col("brand1"), p));
    Json item = list_item_template(bd, cat("Text", cap), col_w, ih, false);
    item["alignment"] = kAlignCenter;
    for (Json& sub : item["subItem"]) sub["alignment"] = kAlignCenter;
    // A wheel runs round and has no spacing between its rows.
    Json payload = listview_payload(rows, 0, true, m.drag_max, std::move(item));
    lists.push_back(make_node("listview", cat("List", cap), bd.controls.box(cx, cur, col_w, lv_h), std::move(payload)));
  }
  bd.data.wheels.push_back({name, wheel_columns(blk)});
  // The band is defined first so the rows scroll over it.
  parent.insert(parent.end(), bands.begin(), bands.end());
  parent.insert(parent.end(), lists.begin(), lists.end());
  return cur + lv_h;
}

namespace {

int wheel_height(const PageContext& c, const BlockRecord& blk) {
  const Metrics& m = c.m;
  const int label_h = is_set(blk, "label") ? m.h_b2 + m.spacer : 0;
  const long long rows = std::max(integer(blk, "rows"), 3LL);
  return static_cast<int>(rows * m.wheel_h) + label_h;
}

long long wheel_limits(const LimitCheck& lc, const BlockRecord& b) {
  const Metrics& m = lc.m;
  const Json& cols = value(b, "columns");
  long long n = 1;
  if (cols.is_array()) {
    n = (long long)cols.size();
    for (size_t i = 0; i < cols.size(); ++i)
      if (cols[i].is_array()) lc.stacked(b, cat("columns[", i, "]").c_str(), (long long)cols[i].size(), m.wheel_h);
  } else if (cols.is_number() && truthy(cols)) {
    n = lc.int_key(b, "columns");
  }
  // Each column is at least two check boxes wide, with a gap between columns.
  const long long col_w = 2LL * m.cb, gap = m.spacer2;
  lc.at_most(b, "columns", n, (m.W + gap) / (col_w + gap),
             cat("columns of ", col_w, " px fit on a screen ", m.W, " px wide"));
  const long long rows = std::max<long long>(lc.int_key(b, "rows"), 3);
  return lc.stacked(b, "rows", rows, m.wheel_h);
}

}  // namespace

extern const BlockKind kWheelPicker{.type = "wheel_picker",
                                    .prefix = "WheelPicker",
                                    .places = kOnPage | kInCard | kInForm,
                                    .group_gap = true,
                                    .planned_height = wheel_height,
                                    .limits = wheel_limits,
                                    .build = at_xyw<build_wheel>};

}  // namespace ub
