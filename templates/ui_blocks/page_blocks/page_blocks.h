// The page-level builders: bands, overlays and the blocks of the content flow that are
// no rows. Each returns the new bottom y (see BlockKind::build).
#pragma once

#include "kinds/build.h"

namespace ub {

int build_title(Build& bd, const BlockRecord& blk, NodeList& parent, int x, int y);
int build_actions(Build& bd, const BlockRecord& blk, NodeList& parent, int x, int y);
int build_dialog(Build& bd, const BlockRecord& blk, NodeList& parent);
int build_toast(Build& bd, const BlockRecord& blk, NodeList& parent);
int build_tabs(Build& bd, const BlockRecord& blk, NodeList& parent, int x, int y);
int build_banner(Build& bd, const BlockRecord& blk, NodeList& parent, int x, int y);
int build_pill(Build& bd, const BlockRecord& blk, NodeList& parent, int x, int y);
int build_divider_label(Build& bd, const BlockRecord& blk, NodeList& parent, int x, int y);
int build_empty(Build& bd, const BlockRecord& blk, NodeList& parent, int x, int y);
int build_grid(Build& bd, const BlockRecord& blk, NodeList& parent, int x, int y);
int build_gallery(Build& bd, const BlockRecord& blk, NodeList& parent, int x, int y);
int build_keypad(Build& bd, const BlockRecord& blk, NodeList& parent, int x, int y);
int build_button_row(Build& bd, const BlockRecord& blk, NodeList& parent, int x, int y);
int build_pill_row(Build& bd, const BlockRecord& blk, NodeList& parent, int x, int y);
int build_chart_card(Build& bd, const BlockRecord& blk, NodeList& parent, int x, int y);
int build_loading(Build& bd, const BlockRecord& blk, NodeList& parent, int x, int y);
int build_toolbar(Build& bd, const BlockRecord& blk, NodeList& parent);
int build_nav(Build& bd, const BlockRecord& blk, NodeList& parent);
int build_big_value(Build& bd, const BlockRecord& blk, NodeList& parent, int x, int y, int w);
int build_gauge(Build& bd, const BlockRecord& blk, NodeList& parent, int x, int y, int w);
int build_image(Build& bd, const BlockRecord& blk, NodeList& parent, int x, int y, int w);
int build_pin_display(Build& bd, const BlockRecord& blk, NodeList& parent, int x, int y, int w);

}  // namespace ub
