// All pixel metrics of one page, derived from the design tokens and the screen size.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "base/values.h"

namespace ub {

struct FontSizes {
  std::vector<std::pair<std::string, int>> roles;  // in token order
  int h1 = 0, h2 = 0, b1 = 0, b2 = 0;
  int at(const std::string& role) const;
  std::string plain_text() const;  // {'h1': 28, 'h2': 22, ...}
};

struct Metrics {
  int W = 0, H = 0;
  std::vector<std::pair<std::string, int>> spacers;  // the whole spacer table
  int spacer = 0, spacer1 = 0, spacer2 = 0, spacer3 = 0;
  bool compact = false;
  FontSizes fs;
  int h_h1 = 0, h_h2 = 0, h_b1 = 0, h_b2 = 0;
  int pad_l = 0, pad_r = 0, margin = 0, group_gap = 0, row_gap = 0, content_w = 0;
  int chev_w = 0, chev_h = 0, text_chev_gap = 0, text_vpad = 0;
  bool two_line = false;
  int row_h = 0, radius = 0, line_w = 0;
  int icon_bg = 0, icon = 0, icon_left = 0, thumb = 0, seek_h = 0, edit_h = 0, opt_h = 0, cb = 0;
  // The visible rows of a list or wheel without its own are the block library's defaults.
  int widget_pad = 0, li_h = 0, li_peek = 0, wheel_h = 0, wheel_col_w = 0;
  int tab_h = 0, ind_h = 0, pill_h = 0, pill_pad = 0, banner_h = 0, divider_h = 0, ic_min = 0;
  // Icons come from the library tier that covers their box, reduced to it, so the glyph
  // fills the box (pages at least size.icon_fill_box_from_h high); else from the largest
  // tier that fits, at its own size.
  bool icon_fill = false;
  int nav_gap = 0, nav_ic = 0, nav_h = 0, toast_h = 0;
  double toast_top_of_h = 0.6;
  int grid_ic = 0, grid_ib = 0, grid_tile_h = 0, grid_gap = 0, grid_row_gap = 0;
  int tb_h = 0, tb_ic = 0, key_gap = 0, key_w = 0, key_h = 0, chart_plot_h = 0;
  int gal_tile_h = 0, gal_ic_max = 0;
  double load_h_of_h = 0;
  int load_bar_h = 0, bar_top = 0, bar_bot = 0, btn_h = 0, btn_w = 0;
  int content_bottom = 0, viewport = 0, drag_max = 0;
};

// Derive m from W, H and the parsed tokens; a missing or mistyped token throws.
Metrics build_metrics(int W, int H, const Json& tok);

}  // namespace ub
