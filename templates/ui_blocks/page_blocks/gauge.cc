// Gauge: a ring picture open at the bottom with the value's share of the range drawn
// over it and an optional limit tick, the reading in the ring's middle, the range under
// it and an optional caption. The value arc turns to the danger colour past the limit.
#include <algorithm>
#include <cmath>

#include "checks/geometry.h"
#include "kinds/block_kind.h"
#include "page_blocks/page_blocks.h"
#include "page_blocks/display_font.h"

namespace ub {

namespace {

struct GaugeBoxes {
  double value = 0, lo = 0, hi = 100;
  std::optional<double> limit;
  std::string reading, range, caption;
  int side = 0;    // the ring picture, square
  int stroke = 0;  // ring width
  int fs = 0;      // font size of the reading
  int height = 0;  // the whole block
};

// A number as the page shows it: a text as given, a number turned into text.
std::string shown(const Json& v) { return v.is_string() ? v.get<std::string>() : to_text(v); }

GaugeBoxes gauge_boxes(const PageContext& page, const BlockRecord& blk) {
  const Metrics& m = page.m;
  GaugeBoxes b;
  const Json& given = given_value(blk, "value");
  if (given.is_null() || given == "") stop("[X] gauge.value 不能为空（仪表盘就是为了显示它）");
  b.value = float_of(given);
  b.lo = number(blk, "min");
  b.hi = number(blk, "max");
  if (!(b.hi > b.lo)) stop(cat("[X] gauge.max 必须大于 min，得到 min ", shown(value(blk, "min")), "、max ", shown(value(blk, "max"))));
  const Json& limit = given_value(blk, "limit");
  // A limit of 0 is a limit; the other false values leave it out.
  if (limit.is_number() || truthy(limit)) b.limit = float_of(limit);

  const std::string unit = text(blk, "unit");
  b.reading = shown(given) + unit;
  b.range = cat(shown(value(blk, "min")), " ~ ", shown(value(blk, "max")), unit);
  if (b.limit) b.range += cat("，上限 ", shown(limit), unit);
  b.caption = text(blk, "caption");

  const int most = m.content_w - 2 * m.pad_l;
  auto ring = [&](int side) {
    b.side = std::min(side, most);
    b.stroke = (int)std::max<long long>(half_even(b.side * 0.09), 4);
  };
  ring(std::max(r4(m.H * 0.3), 64));
  // The reading stands inside the ring; a ring too small for it at the smallest size
  // grows until it holds it.
  b.fs = fitting_font(page, display_font(page), b.reading, 0, b.side - 2 * b.stroke);
  const int need = page.text_box_w(b.reading, b.fs);
  while (need > b.side - 2 * b.stroke && b.side < most) ring(b.side + 4);
  b.height = m.spacer + b.side + m.row_gap + m.h_b2 + (b.caption.empty() ? 0 : m.row_gap + m.h_b2) + m.spacer;
  return b;
}

int gauge_height(const PageContext& page, const BlockRecord& blk) { return gauge_boxes(page, blk).height; }

// Thousandths of the range, held to it.
int per_mille(double v, double lo, double hi) {
  return (int)half_even(std::clamp((v - lo) / (hi - lo), 0.0, 1.0) * 1000);
}

}  // namespace

int build_gauge(Build& bd, const BlockRecord& blk, NodeList& parent, int x, int y, int w) {
  const Metrics& m = bd.page.m;
  const GaugeBoxes b = gauge_boxes(bd.page, blk);
  const std::string id = caption_id(blk);
  const int d = b.side, left = x + (int)floordiv(w - d, 2), top = y + m.spacer;

  const int v = per_mille(b.value, b.lo, b.hi);
  const int l = b.limit ? per_mille(*b.limit, b.lo, b.hi) : -1;
  const bool over = b.limit && b.value > *b.limit;
  // The name carries every measure the pixels follow: size, ring, value, limit, colour.
  const std::string name =
      cat("gauge_", d, "_", b.stroke, "_", v, b.limit ? cat("_", l) : "", over ? "_over" : "", ".png");
  const std::string value_token = over ? "danger" : "brand";
  parent.push_back(bd.controls.deco(cat("Gauge", id, "Ring"), bd.controls.box(left, top, d, d),
                                    bd.page.col(value_token),
                                    bd.pictures.gauge(name, d, b.stroke, v, l, bd.page.tcol("line"),
                                                      bd.page.tcol(value_token), bd.page.tcol("danger"))));

  const int lh = line_height(bd.page, b.fs), inner = d - 2 * b.stroke;
  const std::string value_cap = cat("Gauge", id, "Value");
  parent.push_back(bd.controls.text(value_cap, bd.controls.box(left + b.stroke, top + (d - lh) / 2, inner, lh), b.fs,
                                    bd.page.col("fg1"), b.reading, "", kAlignCenter, true));
  check_text_fit(bd.notes, bd.page, value_cap, b.reading, b.fs, inner, lh, "仪表盘");

  const int tw = w - 2 * m.pad_l;
  auto line = [&](const char* part, const std::string& txt, int ty) {
    const std::string cap = cat("Gauge", id, part);
    parent.push_back(bd.controls.text(cap, bd.controls.box(x + m.pad_l, ty, tw, m.h_b2), m.fs.b2, bd.page.col("fg2"),
                                      txt, "", kAlignCenter));
    check_text_fit(bd.notes, bd.page, cap, txt, m.fs.b2, tw, m.h_b2, "仪表盘");
  };
  const int range_y = top + d + m.row_gap;
  line("Range", b.range, range_y);
  if (!b.caption.empty()) line("Caption", b.caption, range_y + m.h_b2 + m.row_gap);
  return y + b.height;
}

extern const BlockKind kGauge{.type = "gauge",
                              .prefix = "Gauge",
                              .places = kOnPage | kInCard | kInForm,
                              .group_gap = true,
                              .planned_height = gauge_height,
                              .build = at_xyw<build_gauge>};

}  // namespace ub
