#include "rows/row_text.h"

#include "checks/geometry.h"

namespace ub {

std::string block_name(const Json& blk) {
  const Json& v = get(blk, "_name");
  if (v.is_null()) throw InputError("block without _name: " + literal_form(get(blk, "type")));
  return to_text(v);
}

int block_seq(const Json& blk) {
  const Json& v = get(blk, "_seq");
  if (v.is_null()) throw InputError("block without _seq: " + literal_form(get(blk, "type")));
  return static_cast<int>(int_of(v));
}

std::string row_value(const PageContext& c, const Json& blk) {
  std::string value = text_or(blk, "value");
  if (c.m.compact && truthy(get(blk, "value_short"))) value = text_or(blk, "value_short");
  return value;
}

const Json& block_list(const Json& blk, const std::string& key) {
  static const Json empty = Json::array();
  const Json& v = get(blk, key);
  if (!truthy(v)) return empty;
  if (!v.is_array())
    throw KeyError(key, "expected a list, got " + shown_value(v));
  return v;
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
