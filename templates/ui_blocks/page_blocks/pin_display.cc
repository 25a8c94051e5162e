// PIN display: a row of dots, the first `filled` of them filled, with an optional caption
// above. The dots are pictures (one filled, one empty), so no character of the font is
// needed for them.
#include <algorithm>

#include "checks/geometry.h"
#include "kinds/block_kind.h"
#include "page_blocks/page_blocks.h"

namespace ub {

namespace {

constexpr long long kMostDots = 12;

struct PinBoxes {
  long long length = 0, filled = 0;
  int dot = 0;     // side of a dot
  int gap = 0;     // between two dots
  int cap_h = 0;   // caption line and its gap, 0 without a caption
  int height = 0;  // the whole block
};

PinBoxes pin_boxes(const PageContext& page, const BlockRecord& blk) {
  const Metrics& m = page.m;
  PinBoxes b;
  b.length = integer(blk, "length");
  if (b.length < 1 || b.length > kMostDots)
    stop(cat("[X] pin_display.length 应在 1~", kMostDots, "，得到 ", b.length));
  const long long filled = integer(blk, "filled");
  if (filled < 0 || filled > kMostDots) stop(cat("[X] pin_display.filled 应在 0~", kMostDots, "，得到 ", filled));
  b.filled = std::min(filled, b.length);
  // About the cap height of the title font, never below 12 px.
  b.dot = std::max(r4(m.fs.h1 * 0.6), 12);
  b.gap = b.dot;
  b.cap_h = is_set(blk, "caption") ? m.h_b1 + m.spacer : 0;
  b.height = m.spacer + b.cap_h + b.dot + m.spacer;
  return b;
}

int pin_height(const PageContext& page, const BlockRecord& blk) { return pin_boxes(page, blk).height; }

}  // namespace

int build_pin_display(Build& bd, const BlockRecord& blk, NodeList& parent, int x, int y, int w) {
  const Metrics& m = bd.page.m;
  const PinBoxes b = pin_boxes(bd.page, blk);
  const std::string id = caption_id(blk);
  const long long asked = integer(blk, "filled");
  if (asked > b.length)
    bd.notes.add(cat("pin_display ", blk.name, "：filled ", asked, " > length ", b.length, " → 只画满 ", b.length, " 个点"));
  const int top = y + m.spacer;
  if (b.cap_h) {
    const std::string cap = cat("PinDisplay", id, "Caption");
    const std::string txt = text(blk, "caption");
    const int cw = w - 2 * m.pad_l;
    parent.push_back(bd.controls.text(cap, bd.controls.box(x + m.pad_l, top, cw, m.h_b1), m.fs.b1, bd.page.col("fg2"),
                                      txt, "", kAlignCenter));
    check_text_fit(bd.notes, bd.page, cap, txt, m.fs.b1, cw, m.h_b1, "PIN 点");
  }
  const int d = b.dot;
  const int row_w = (int)(b.length * d + (b.length - 1) * b.gap);
  const int left = x + (int)floordiv(w - row_w, 2);
  const std::string on = bd.pictures.shape(cat("pin_", d, "_on.png"), d, d, d / 2.0, bd.page.tcol("fg1"));
  const std::string off = bd.pictures.shape(cat("pin_", d, "_off.png"), d, d, d / 2.0, Rgba{0, 0, 0, 0},
                                            bd.page.tcol("fg2"), std::max<long long>(half_even(d / 8.0), 2));
  for (long long i = 0; i < b.length; ++i)
    parent.push_back(bd.controls.deco(cat("PinDisplay", id, "Dot", i + 1),
                                      bd.controls.box(left + i * (d + b.gap), top + b.cap_h, d, d),
                                      bd.page.col(i < b.filled ? "fg1" : "fg2"), i < b.filled ? on : off));
  return y + b.height;
}

extern const BlockKind kPinDisplay{.type = "pin_display",
                                   .prefix = "PinDisplay",
                                   .places = kOnPage | kInCard | kInForm,
                                   .group_gap = true,
                                   .planned_height = pin_height,
                                   .build = at_xyw<build_pin_display>};

}  // namespace ub
