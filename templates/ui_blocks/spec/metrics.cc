// Token-to-metric derivation: every pixel value of a page from the tokens and the screen.
#include "spec/metrics.h"

#include <algorithm>
#include <cmath>

#include "base/primitives.h"

namespace ub {

namespace {

const Json& req(const Json& obj, const std::string& key, const std::string& where) {
  if (!obj.is_object()) throw InputError("_tokens.json: '" + where + "' must be a mapping");
  auto it = obj.find(key);
  if (it == obj.end()) throw InputError("_tokens.json: missing key '" + where + "." + key + "'");
  return *it;
}

double num(const Json& v, const std::string& what) {
  if (!v.is_number()) throw InputError("_tokens.json: '" + what + "' must be a number, not " + type_name(v));
  return v.get<double>();
}

// A pixel count: a whole number.
int whole(const Json& v, const std::string& what) {
  double d = num(v, what);
  if (d != std::floor(d)) throw InputError("_tokens.json: '" + what + "' must be a whole number");
  return (int)d;
}

}  // namespace

int FontSizes::at(const std::string& role) const {
  for (const auto& [k, v] : roles)
    if (k == role) return v;
  throw InputError("no font size for role '" + role + "'");
}

std::string FontSizes::plain_text() const {
  Json o = Json::object();
  for (const auto& [k, v] : roles) o[k] = v;
  return ub::plain_text(o);
}

Metrics build_metrics(int W, int H, const Json& tok) {
  Metrics m;
  const Json& s = req(tok, "size", "tok");
  const Json& sh = req(tok, "shape", "tok");
  const Json& sp = req(tok, "spacer", "tok");
  const Json& ladder_j = req(tok, "ladder", "tok");
  if (!ladder_j.is_array()) throw InputError("_tokens.json: 'ladder' must be a sequence");
  std::vector<double> ladder;
  for (const Json& e : ladder_j) ladder.push_back(num(e, "ladder"));

  auto S = [&](const char* k) { return num(req(s, k, "size"), std::string("size.") + k); };
  auto Spx = [&](const char* k) { return whole(req(s, k, "size"), std::string("size.") + k); };
  auto SH = [&](const char* k) { return num(req(sh, k, "shape"), std::string("shape.") + k); };
  // An entry of the spacer table named by a size token.
  auto SPof = [&](const char* k) {
    const Json& name = req(s, k, "size");
    if (!name.is_string()) throw InputError(std::string("_tokens.json: 'size.") + k + "' must name a spacer");
    return whole(req(sp, name.get<std::string>(), "spacer"), "spacer." + name.get<std::string>());
  };

  // 1-3: screen and the flattened spacer table.
  m.W = W;
  m.H = H;
  for (auto it = sp.begin(); it != sp.end(); ++it) m.spacers.emplace_back(it.key(), whole(it.value(), "spacer." + it.key()));
  m.spacer = whole(req(sp, "spacer", "spacer"), "spacer.spacer");
  m.spacer1 = whole(req(sp, "spacer1", "spacer"), "spacer.spacer1");
  m.spacer2 = whole(req(sp, "spacer2", "spacer"), "spacer.spacer2");
  m.spacer3 = whole(req(sp, "spacer3", "spacer"), "spacer.spacer3");

  // 4-5: compact mode and font sizes.
  m.compact = H < num(req(tok, "compact_when_h_lt", "tok"), "compact_when_h_lt");
  double base_h = num(req(req(tok, "base_screen", "tok"), "height", "base_screen"), "base_screen.height");
  if (base_h == 0) throw InputError("_tokens.json: 'base_screen.height' must not be 0");
  double scale = (double)H / base_h;
  const Json& font = req(tok, "font", "tok");
  const Json& compact_font = req(tok, "compact_font", "tok");
  if (m.compact) {
    if (!compact_font.is_object()) throw InputError("_tokens.json: 'compact_font' must be a mapping");
    for (auto it = compact_font.begin(); it != compact_font.end(); ++it)
      m.fs.roles.emplace_back(it.key(), whole(it.value(), "compact_font." + it.key()));
  } else {
    if (!font.is_object()) throw InputError("_tokens.json: 'font' must be a mapping");
    for (auto it = font.begin(); it != font.end(); ++it) {
      const Json& c = it.value();
      std::string w = "font." + it.key();
      double v = pick(num(req(c, "base", w), w + ".base") * scale, num(req(c, "min", w), w + ".min"),
                      num(req(c, "max", w), w + ".max"), ladder);
      if (v != std::floor(v)) throw InputError("_tokens.json: font size of '" + it.key() + "' is not whole");
      m.fs.roles.emplace_back(it.key(), (int)v);
    }
  }
  m.fs.h1 = m.fs.at("h1");
  m.fs.h2 = m.fs.at("h2");
  m.fs.b1 = m.fs.at("b1");
  m.fs.b2 = m.fs.at("b2");

  // 6: text line heights.
  double th = S("text_h_of_fs");
  m.h_h1 = r4(m.fs.h1 * th);
  m.h_h2 = r4(m.fs.h2 * th);
  m.h_b1 = r4(m.fs.b1 * th);
  m.h_b2 = r4(m.fs.b2 * th);

  // 7-16: paddings, gaps, chevron.
  m.pad_l = m.compact ? SPof("pad_l_compact") : SPof("pad_l_wide");
  m.pad_r = m.pad_l;
  m.margin = SPof("card_inset");
  m.group_gap = SPof("group_gap");
  m.row_gap = Spx("row_gap_px");
  m.content_w = W - 2 * m.margin;
  m.chev_w = std::max(r4(W * S("chev_w_of_w")), Spx("chev_w_min"));
  m.chev_h = std::max(r4(H * S("chev_h_of_h")), Spx("chev_h_min"));
  m.text_chev_gap =
      std::max(std::min(r4(H * S("text_chev_gap_of_h")), Spx("text_chev_gap_max")), Spx("text_chev_gap_min"));
  m.text_vpad = Spx("text_vpad");

  // 17-20: row height, corner radius, line width.
  m.two_line = !m.compact && m.h_b1 + m.h_b2 + 8 <= r4(H * 0.14);
  int text_need = m.two_line ? m.h_b1 + m.h_b2 + 8 : m.h_b1 + 8;
  double ratio = m.compact ? S("row_h_of_h_compact") : S("row_h_of_h");
  m.row_h = std::max(r4(text_need), r4(H * ratio));
  m.radius = std::max(std::min((int)half_even(m.row_h * SH("container_radius_of_row_h")),
                               whole(req(sh, "container_radius_px", "shape"), "shape.container_radius_px")),
                      whole(req(sh, "container_radius_min", "shape"), "shape.container_radius_min"));
  // A false threshold passes through as the line width itself.
  const Json& thick = req(sh, "line_px_thick_below_row_h", "shape");
  if (!truthy(thick)) m.line_w = 0;
  else m.line_w = m.row_h < num(thick, "shape.line_px_thick_below_row_h") ? 2 : whole(req(sh, "line_px", "shape"), "shape.line_px");

  // 21-35: row parts and widgets.
  m.icon_bg = r4(m.row_h * S("icon_bg_of_row_h"));
  m.icon = std::max(r4(m.row_h * S("icon_of_row_h")), Spx("icon_min"));
  m.icon_left = (int)half_even(m.pad_l * S("icon_pad_of_pad_l"));
  m.thumb = m.icon;
  m.seek_h = std::max(r4(m.row_h * 0.6), m.thumb);
  m.edit_h = std::max(r4(m.row_h * 0.7), m.h_b1 + m.spacer);
  m.opt_h = m.edit_h;
  m.cb = std::max(r4(m.row_h * 0.5), m.icon);
  m.widget_pad = m.spacer;
  m.li_h = std::max(r4(m.row_h * 0.7), m.h_b1 + m.spacer);
  m.li_peek = 2;
  m.wheel_h = std::max(r4(m.row_h * 0.6), m.h_b1 + m.spacer);
  m.wheel_col_w = r4(m.content_w * 0.2);

  // 36-52: strips, navigation, toast, grid.
  m.tab_h = std::max(m.h_b1 + 2 * m.spacer, r4(H * 0.09));
  m.ind_h = std::max((int)half_even(H * 0.005), 2);
  m.pill_h = std::max(m.h_b2 + m.spacer, r4(H * 0.07));
  m.pill_pad = r4(m.h_b2 * 0.75);
  m.banner_h = std::max(m.h_b1 + 2 * m.spacer, r4(H * 0.08));
  m.divider_h = std::max(m.h_b2, r4(H * 0.05));
  int glyph_min = has(s, "glyph_min_px") ? Spx("glyph_min_px") : 24;
  m.ic_min = std::max(glyph_min, m.icon);
  m.icon_fill = has(s, "icon_fill_box_from_h") && H >= Spx("icon_fill_box_from_h");
  m.nav_gap = m.row_gap;
  m.nav_ic = m.ic_min;
  m.nav_h = std::max(m.nav_ic + m.nav_gap + m.h_b2 + 2 * m.spacer, r4(H * 0.1));
  m.toast_h = m.h_b1 + 2 * m.spacer2;
  m.toast_top_of_h = 0.6;
  m.grid_ic = m.ic_min;
  m.grid_ib = std::max(r4(m.grid_ic * 1.5), m.icon_bg);
  m.grid_tile_h = 2 * m.spacer + m.grid_ib + m.h_b2;
  m.grid_gap = m.spacer2;
  m.grid_row_gap = m.spacer;

  // 53-62: toolbar, keypad, chart, gallery, loading.
  m.tb_h = std::max(m.ic_min + 2 * m.spacer, r4(H * S("tb_h_of_h")));
  m.tb_ic = std::max(r4(m.tb_h * S("tb_ic_of_tb_h")), m.ic_min);
  m.key_gap = m.spacer;
  m.key_w = (int)floordiv(m.content_w - 2 * m.key_gap, 3);
  m.key_h = std::max(std::min(r4(H * S("key_h_max_of_h")), r4(m.key_w * S("key_h_of_w"))), m.h_b1 + 2 * m.spacer);
  m.chart_plot_h = std::max(m.h_b2 * 4, r4(H * S("chart_h_of_h")));
  m.gal_tile_h = std::max(r4((double)floordiv(m.content_w - 2 * m.grid_gap, 3) * S("gal_tile_of_w")),
                          m.ic_min + 2 * m.spacer);
  m.gal_ic_max = Spx("gal_ic_max");
  m.load_h_of_h = S("load_h_of_h");
  m.load_bar_h = std::max(r4(m.h_b1 * S("load_bar_h_of_fs")), 10);

  // 63-69: fixed bands, viewport, overscroll.
  int e = m.compact ? 0 : m.h_b2 + 4;
  m.bar_top = std::max(m.h_h1 + e + Spx("bar_min_pad"), r4(H * S("bar_top_of_h")));
  m.bar_bot = std::max(r4(H * 0.07) + 24, r4(H * S("bar_bot_of_h")));
  m.btn_h = std::min(r4(H * 0.07), m.bar_bot - 24);
  m.btn_w = std::max(r4(W * 0.16), 64);
  m.content_bottom = H - m.bar_bot;
  m.viewport = m.content_bottom - m.bar_top;
  const Json& scroll = req(tok, "scroll", "tok");
  m.drag_max = std::max(r4(W * num(req(scroll, "drag_max_dis_of_w", "scroll"), "scroll.drag_max_dis_of_w")),
                        whole(req(scroll, "drag_max_dis_min", "scroll"), "scroll.drag_max_dis_min"));
  return m;
}

}  // namespace ub
