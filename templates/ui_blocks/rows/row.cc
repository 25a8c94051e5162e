// A plain row: decorations that take no touch, and one transparent full-row
// button on top as the only hit area.
#include "kinds/block_kind.h"
#include "rows/row_text.h"
#include "rows/rows.h"

namespace ub {

extern const BlockKind kToggleRow, kDeviceCard;

int build_row(Build& bd, const BlockRecord& blk, NodeList& parent, int x0, int y0, int w, int reserve, bool has_icon) {
  const Metrics& m = bd.page.m;
  const bool toggle = is_kind(blk, kToggleRow);
  const std::string& name = blk.name;
  NodeList out;

  const std::string glyph_name = text(blk, "icon");
  if (has_icon && !glyph_name.empty()) {
    const int s = m.icon_bg;
    const int ix = x0 + m.icon_left;
    const int iy = y0 + static_cast<int>(floordiv(m.row_h - s, 2));
    const std::string p_bg = bd.pictures.shape(cat("icbg_", s, ".png"), s, s, floordiv(s, 2), bd.page.tcol("brand1"));
    out.push_back(
        bd.controls.deco(cat("ImageRow", name, "IconBg"), bd.controls.box(ix, iy, s, s), bd.page.col("brand1"), p_bg));
    const int ic = m.icon;
    const std::string p_ic = bd.pictures.glyph(cat("ic_", glyph_name, "_", ic, ".png"), glyph_name, ic,
                                               bd.page.tcol("brand"), std::make_pair(ic, ic));
    const int inset = static_cast<int>(floordiv(s - ic, 2));
    out.push_back(bd.controls.deco(cat("ImageRow", name, "Icon"), bd.controls.box(ix + inset, iy + inset, ic, ic),
                                   bd.page.col("brand"), p_ic));
  }

  const RowBoxes rb = bd.rows.row_boxes(x0, y0, w);
  std::optional<int> rt_edge;
  if (reserve != 0) rt_edge = x0 + w - m.pad_r - reserve;
  bd.rows.note_row_gaps(cat("TextRow", name), rb.right_edge, rt_edge);

  std::string label = text(blk, "label");
  if (label.empty()) label = text(blk, "text");
  row_text_band(bd, out, name, label, row_value(bd.page, blk), rb, y0);

  if (reserve != 0 && !toggle && flag(blk, "chevron")) {
    const int rx = x0 + w - m.pad_r;
    const int ry = y0 + static_cast<int>(floordiv(m.row_h - m.chev_h, 2));
    const std::string p =
        bd.pictures.chevron(cat("chev_", m.chev_w, "x", m.chev_h, ".png"), m.chev_w, m.chev_h, bd.page.tcol("chevron"));
    out.push_back(bd.controls.deco(cat("ImageRow", name, "Chevron"),
                                   bd.controls.box(rx - m.chev_w, ry, m.chev_w, m.chev_h), bd.page.col("chevron"), p));
  }

  if (toggle) {
    // The switch stands at the right padding; the family reserve covers its width.
    const bool on = flag(blk, "on");
    const int sw = r4(m.row_h * 1.3);
    const int sh = r4(m.row_h * 0.72);
    const int sx = x0 + w - m.pad_r - sw;
    const int sy = y0 + static_cast<int>(floordiv(m.row_h - sh, 2));
    const std::string c_sw = bd.page.tok_color(on ? "brand" : "switchOff");
    const std::string p1 =
        bd.pictures.shape(cat("sw_", sw, "x", sh, "_", on ? "on" : "off", ".png"), sw, sh, floordiv(sh, 2), rgba(c_sw));
    out.push_back(
        bd.controls.deco(cat("ToggleRow", name, "Track"), bd.controls.box(sx, sy, sw, sh), hex2int(c_sw), p1));
    const int kd = sh - 4;
    const std::string p2 = bd.pictures.shape(cat("swk_", kd, ".png"), kd, kd, floordiv(kd, 2), bd.page.tcol("surface"));
    out.push_back(bd.controls.deco(cat("ToggleRow", name, "Knob"),
                                   bd.controls.box(on ? sx + sw - kd - 2 : sx + 2, sy + 2, kd, kd),
                                   hex2int(bd.page.tok_color("surface")), p2));
  }

  if (is_kind(blk, kDeviceCard) && !m.compact) {
    // Status dot left of the text column, at the height of the value line.
    const int d = std::max(static_cast<int>(half_even(m.icon * 0.28)), 4);
    const bool online = flag(blk, "online");
    const std::string c_dot = bd.page.tok_color(online ? "brand" : "switchOff");
    // The state is in the name: an online and an offline dot of one size differ in colour.
    const std::string p =
        bd.pictures.shape(cat("dot_", d, online ? "_on" : "_off", ".png"), d, d, floordiv(d, 2), rgba(c_dot));
    const int dy = y0 + m.row_h - m.text_vpad - m.h_b2 + static_cast<int>(floordiv(m.h_b2 - d, 2));
    out.push_back(bd.controls.deco(cat("DeviceRow", name, "Dot"),
                                   bd.controls.box(rb.text_left - m.spacer - d, dy, d, d), bd.page.col("brand"), p));
  }

  // Created last so that it lies on top and takes every touch of the row.
  out.push_back(bd.controls.button(cat("ButtonRow", name), bd.controls.box(x0, y0, w, m.row_h)));

  parent.insert(parent.end(), out.begin(), out.end());
  return y0 + m.row_h;
}

namespace {

int build_plain_row(Build& bd, const BlockRecord& blk, NodeList& parent, Spot s) {
  const bool has_icon = bd.rows.icon().value_or(false) && is_set(blk, "icon") && !bd.page.m.compact;
  return build_row(bd, blk, parent, s.x, s.y, s.w, bd.rows.reserve().value_or(0), has_icon);
}

int chevron_reserve(const Metrics& m, const BlockRecord& blk) { return flag(blk, "chevron") ? m.chev_w : 0; }

// The switch; a toggle row reserves its chevron too, although it never draws one.
int switch_reserve(const Metrics& m, const BlockRecord& blk) { return std::max(r4(m.row_h * 1.3), chevron_reserve(m, blk)); }

constexpr unsigned kRowPlaces = kOnPage | kInCard | kInForm;

}  // namespace

extern const BlockKind kSettingRow{.type = "setting_row", .prefix = "SettingRow", .places = kRowPlaces,
                                   .family = RowFamily::Plain, .end_reserve = chevron_reserve,
                                   .build = build_plain_row};
extern const BlockKind kIconRow{.type = "icon_row", .prefix = "IconRow", .places = kRowPlaces,
                                .family = RowFamily::Plain, .end_reserve = chevron_reserve,
                                .build = build_plain_row};
extern const BlockKind kToggleRow{.type = "toggle_row", .prefix = "ToggleRow", .places = kRowPlaces,
                                  .family = RowFamily::Plain, .end_reserve = switch_reserve,
                                  .build = build_plain_row};
extern const BlockKind kDeviceCard{.type = "device_card", .prefix = "DeviceCard", .places = kRowPlaces,
                                   .family = RowFamily::Plain, .end_reserve = chevron_reserve,
                                   .build = build_plain_row};
extern const BlockKind kTimeRow{.type = "time_row", .prefix = "TimeRow", .places = kRowPlaces,
                                .family = RowFamily::Plain, .end_reserve = chevron_reserve,
                                .build = build_plain_row};

}  // namespace ub
