#include "rows/row_text.h"

#include "checks/geometry.h"

namespace ub {

std::string row_value(const PageContext& c, const BlockRecord& blk) {
  if (c.m.compact && is_set(blk, "value_short")) return text(blk, "value_short");
  return text(blk, "value");
}

void row_text_band(Build& bd, NodeList& out, const std::string& name, const std::string& label,
                   const std::string& value, const RowBoxes& rb, int y0) {
  const Metrics& m = bd.page.m;
  const std::string cap_label = cat("TextRow", name, "Label");
  const std::string cap_value = cat("TextRow", name, "Value");
  if (m.two_line) {
    out.push_back(bd.controls.text(cap_label, bd.controls.box(rb.text_left, y0 + m.text_vpad, rb.text_w, m.h_b1),
                                   m.fs.b1, bd.page.col("fg1"), label));
    check_text_fit(bd.notes, bd.page, cap_label, label, m.fs.b1, rb.text_w, m.h_b1, "label");
    if (!value.empty()) {
      out.push_back(bd.controls.text(cap_value,
                                     bd.controls.box(rb.text_left, y0 + m.text_vpad + m.h_b1, rb.text_w, m.h_b2),
                                     m.fs.b2, bd.page.col("fg2"), value));
      check_text_fit(bd.notes, bd.page, cap_value, value, m.fs.b2, rb.text_w, m.h_b2, "value");
    }
    return;
  }
  // One line: the label keeps a fixed 42 % share, even without a value.
  const int lw = r4(rb.text_w * 0.42) - m.spacer;
  const int ty = y0 + static_cast<int>(floordiv(m.row_h - m.h_b1, 2));
  out.push_back(
      bd.controls.text(cap_label, bd.controls.box(rb.text_left, ty, lw, m.h_b1), m.fs.b1, bd.page.col("fg1"), label));
  check_text_fit(bd.notes, bd.page, cap_label, label, m.fs.b1, lw, m.h_b1, "label");
  if (!value.empty()) {
    const int vw = rb.text_w - lw - m.spacer;
    out.push_back(bd.controls.text(cap_value, bd.controls.box(rb.text_left + lw + m.spacer, ty, vw, m.h_b1), m.fs.b2,
                                   bd.page.col("fg2"), value, "", kAlignRight));
    check_text_fit(bd.notes, bd.page, cap_value, value, m.fs.b2, vw, m.h_b1, "value");
  }
}

}  // namespace ub
