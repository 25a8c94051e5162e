// Field rows: the family's text band, and below it a band of its own for the
// control (the check box alone sits at the end of the text band).
#include "compose.h"
#include "rows/row_text.h"

namespace ub {

int Composer::build_field_row(const Json& blk, NodeList& parent, int x0, int y0, int w) {
  const std::string t = text_or(blk, "type");
  const std::string name = block_name(blk);
  const RowBoxes rb = row_boxes(x0, y0, w);
  NodeList out;
  row_text_band(*this, out, name, text_or(blk, "label"), row_value(*this, blk), rb, y0);

  // The band uses the row's padding on both sides, not the text box.
  const int band_y = y0 + m.row_h;
  const int bx = x0 + m.pad_l;
  const int bw = w - 2 * m.pad_l;
  const int wp = m.widget_pad;
  int band_h = 0;
  if (t == "slider_row" || t == "progress_row") {
    band_h = m.seek_h + 2 * wp;
    out.push_back(make_seekbar(cat("SeekRow", name, "Bar"), box(bx, band_y + wp, bw, m.seek_h),
                               value_or(blk, "progress", 0), t == "progress_row"));
  } else if (t == "input_row") {
    band_h = m.edit_h + 2 * wp;
    out.push_back(make_edittext(cat("EditRow", name, "Box"), box(bx, band_y + wp, bw, m.edit_h), blk));
  } else if (t == "checkbox_row") {
    const int s = m.cb;
    out.push_back(make_checkbox(cat("CheckRow", name, "Box"),
                                box(x0 + w - m.pad_r - s, y0 + floordiv(m.row_h - s, 2), s, s),
                                flag(blk, "checked", false)));
  } else if (t == "radio_row") {
    const Json& options = block_list(blk, t, "options");
    band_h = static_cast<int>(options.size()) * m.opt_h + 2 * wp;
    out.push_back(make_radiogroup(cat("RadioRow", name, "Group"), box(bx, band_y + wp, bw, band_h - 2 * wp),
                                  options, value_or(blk, "selected", 0), cat("RadioRow", name)));
  }

  parent.insert(parent.end(), out.begin(), out.end());
  return m.row_h + band_h;
}

}  // namespace ub
