// Big value: one large reading with its unit beside it and a caption under it
// (a thermostat's "22.5" "°C" "室内温度", a washer's "1:45"). The reading takes the
// display font of the screen, stepped down until reading and unit fit the width.
#include <algorithm>

#include "checks/geometry.h"
#include "kinds/block_kind.h"
#include "page_blocks/display_font.h"
#include "page_blocks/page_blocks.h"

namespace ub {

namespace {

struct BigValueBoxes {
  std::string value, unit, caption;
  int fs = 0;       // font size of the reading
  int value_w = 0;  // box of the reading
  int unit_w = 0;   // box of the unit, 0 without one
  int line_h = 0;   // line of the reading
  int height = 0;   // the whole block
  // A reading with a unit ends at the unit; one without stands centred.
  int align() const { return unit.empty() ? kAlignCenter : kAlignRight; }
};

BigValueBoxes big_value_boxes(const PageContext& page, const BlockRecord& blk) {
  const Metrics& m = page.m;
  BigValueBoxes b;
  // A reading of 0 is a reading: only an absent or empty value is none.
  const Json& given = given_value(blk, "value");
  b.value = given.is_number() ? to_text(given) : text(blk, "value");
  if (b.value.empty()) stop("[X] big_value.value 不能为空（大读数块就是为了显示它）");
  b.unit = text(blk, "unit");
  b.caption = text(blk, "caption");
  b.unit_w = b.unit.empty() ? 0 : page.text_box_w(b.unit, m.fs.h2, kAlignLeft);
  b.fs = fitting_font(page, display_font(page), b.value, b.unit_w, m.content_w - 2 * m.pad_l, b.align());
  b.value_w = page.text_box_w(b.value, b.fs, b.align());
  b.line_h = line_height(page, b.fs);
  b.height = m.spacer + b.line_h + (b.caption.empty() ? 0 : m.row_gap + m.h_b2) + m.spacer;
  return b;
}

int big_value_height(const PageContext& page, const BlockRecord& blk) { return big_value_boxes(page, blk).height; }

}  // namespace

int build_big_value(Build& bd, const BlockRecord& blk, NodeList& parent, int x, int y, int w) {
  const Metrics& m = bd.page.m;
  const BigValueBoxes b = big_value_boxes(bd.page, blk);
  const std::string id = caption_id(blk);
  // Reading and unit are centred together.
  const int left = x + (int)floordiv(w - b.value_w - b.unit_w, 2);
  const int top = y + m.spacer;
  const std::string value_cap = cat("BigValue", id, "Value");
  parent.push_back(bd.controls.text(value_cap, bd.controls.box(left, top, b.value_w, b.line_h), b.fs,
                                    bd.page.col("fg1"), b.value, "", b.align(), true));
  check_text_fit(bd.notes, bd.page, value_cap, b.value, b.fs, b.value_w, b.line_h, "大读数");
  if (!b.unit.empty()) {
    // The unit stands on the reading's baseline, about 0.35 of a font size below the
    // middle of a line.
    const int mid = top + b.line_h / 2 + (int)half_even(0.35 * (b.fs - m.fs.h2));
    const int uy = std::clamp(mid - m.h_h2 / 2, top, top + b.line_h - m.h_h2);
    const std::string unit_cap = cat("BigValue", id, "Unit");
    parent.push_back(bd.controls.text(unit_cap, bd.controls.box(left + b.value_w, uy, b.unit_w, m.h_h2), m.fs.h2,
                                      bd.page.col("fg2"), b.unit, "", kAlignLeft));
    check_text_fit(bd.notes, bd.page, unit_cap, b.unit, m.fs.h2, b.unit_w, m.h_h2, "大读数");
  }
  if (!b.caption.empty()) {
    const std::string cap = cat("BigValue", id, "Caption");
    const int cw = w - 2 * m.pad_l;
    parent.push_back(bd.controls.text(cap, bd.controls.box(x + m.pad_l, top + b.line_h + m.row_gap, cw, m.h_b2),
                                      m.fs.b2, bd.page.col("fg2"), b.caption, "", kAlignCenter));
    check_text_fit(bd.notes, bd.page, cap, b.caption, m.fs.b2, cw, m.h_b2, "大读数");
  }
  return y + b.height;
}

extern const BlockKind kBigValue{.type = "big_value",
                                 .prefix = "BigValue",
                                 .places = kOnPage | kInCard | kInForm,
                                 .group_gap = true,
                                 .planned_height = big_value_height,
                                 .build = at_xyw<build_big_value>};

}  // namespace ub
