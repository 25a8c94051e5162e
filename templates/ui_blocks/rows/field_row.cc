// Field rows: the family's text band, and below it a band of its own for the
// control (the check box alone sits at the end of the text band).
#include "kinds/block_kind.h"
#include "rows/row_text.h"
#include "rows/rows.h"

namespace ub {

extern const BlockKind kSliderRow, kProgressRow, kInputRow, kCheckboxRow, kRadioRow;

int build_field_row(Build& bd, const BlockRecord& blk, NodeList& parent, int x0, int y0, int w) {
  const Metrics& m = bd.page.m;
  const std::string& name = blk.name;
  const RowBoxes rb = bd.rows.row_boxes(x0, y0, w);
  NodeList out;
  row_text_band(bd, out, name, text(blk, "label"), row_value(bd.page, blk), rb, y0);

  // The band uses the row's padding on both sides, not the text box.
  const int band_y = y0 + m.row_h;
  const int bx = x0 + m.pad_l;
  const int bw = w - 2 * m.pad_l;
  const int wp = m.widget_pad;
  int band_h = 0;
  const bool readonly = is_kind(blk, kProgressRow);
  if (readonly || is_kind(blk, kSliderRow)) {
    band_h = m.seek_h + 2 * wp;
    out.push_back(bd.controls.make_seekbar(cat("SeekRow", name, "Bar"), bd.controls.box(bx, band_y + wp, bw, m.seek_h),
                                           trunc_int(number(blk, "progress")), readonly));
  } else if (is_kind(blk, kInputRow)) {
    band_h = m.edit_h + 2 * wp;
    out.push_back(
        bd.controls.make_edittext(cat("EditRow", name, "Box"), bd.controls.box(bx, band_y + wp, bw, m.edit_h),
                                  EditFields{value(blk, "hintText"), value(blk, "text"), integer(blk, "textType"),
                                             flag(blk, "isPassword"), value(blk, "passwordChar")}));
  } else if (is_kind(blk, kCheckboxRow)) {
    const int s = m.cb;
    out.push_back(bd.controls.make_checkbox(cat("CheckRow", name, "Box"),
                                            bd.controls.box(x0 + w - m.pad_r - s, y0 + floordiv(m.row_h - s, 2), s, s),
                                            flag(blk, "checked")));
  } else if (is_kind(blk, kRadioRow)) {
    const Json& options = list(blk, "options");
    band_h = static_cast<int>(options.size()) * m.opt_h + 2 * wp;
    out.push_back(bd.controls.make_radiogroup(cat("RadioRow", name, "Group"),
                                              bd.controls.box(bx, band_y + wp, bw, band_h - 2 * wp), options,
                                              integer(blk, "selected"), cat("RadioRow", name)));
  }

  parent.insert(parent.end(), out.begin(), out.end());
  return y0 + m.row_h + band_h;
}

namespace {

int seek_height(const PageContext& c, const BlockRecord&) { return c.m.row_h + c.m.seek_h + 2 * c.m.widget_pad; }
int edit_height(const PageContext& c, const BlockRecord&) { return c.m.row_h + c.m.edit_h + 2 * c.m.widget_pad; }
int radio_height(const PageContext& c, const BlockRecord& blk) {
  const int n = static_cast<int>(list(blk, "options").size());
  return c.m.row_h + n * c.m.opt_h + 2 * c.m.widget_pad;
}

// Only the check box sits at the row's end; the other controls have a band.
int checkbox_reserve(const Metrics& m, const BlockRecord&) { return m.cb; }

// A progress is a share of 100, a number or numeric text ("72.5"): checked before it is
// cut to an integer.
long long progress_limits(const LimitCheck& lc, const BlockRecord& b) {
  const Json& v = value(b, "progress");
  if (truthy(v)) {
    double p = 0;
    try {
      p = float_of(v);
    } catch (const InputError&) {
      fail_at(b, "progress", "expected a number, got " + shown_value(v));
    }
    if (!(p >= 0 && p <= 100)) fail_at(b, "progress", cat(literal_form(v), " must lie between 0 and 100"));
  }
  return lc.m.h_b2;
}

long long input_limits(const LimitCheck& lc, const BlockRecord& b) {
  lc.int_key(b, "textType");
  return lc.m.h_b2;
}

long long radio_limits(const LimitCheck& lc, const BlockRecord& b) {
  lc.int_key(b, "selected");
  return lc.stacked(b, "options", (long long)list_size(b, "options"), lc.m.opt_h);
}

constexpr unsigned kRowPlaces = kOnPage | kInCard | kInForm;

}  // namespace

extern const BlockKind kSliderRow{.type = "slider_row", .prefix = "SliderRow", .places = kRowPlaces,
                                  .family = RowFamily::Field, .planned_height = seek_height,
                                  .limits = progress_limits, .build = at_xyw<build_field_row>};
extern const BlockKind kProgressRow{.type = "progress_row", .prefix = "ProgressRow", .places = kRowPlaces,
                                    .family = RowFamily::Field, .planned_height = seek_height,
                                    .limits = progress_limits, .build = at_xyw<build_field_row>};
extern const BlockKind kInputRow{.type = "input_row", .prefix = "InputRow", .places = kRowPlaces,
                                 .family = RowFamily::Field, .planned_height = edit_height,
                                 .limits = input_limits, .build = at_xyw<build_field_row>};
extern const BlockKind kCheckboxRow{.type = "checkbox_row", .prefix = "CheckboxRow", .places = kRowPlaces,
                                    .family = RowFamily::Field, .end_reserve = checkbox_reserve,
                                    .build = at_xyw<build_field_row>};
extern const BlockKind kRadioRow{.type = "radio_row", .prefix = "RadioRow", .places = kRowPlaces,
                                 .family = RowFamily::Field, .planned_height = radio_height,
                                 .limits = radio_limits, .build = at_xyw<build_field_row>};

}  // namespace ub
