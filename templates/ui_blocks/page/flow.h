// The pieces of Composer::run: the block lists the flow sorts blocks into, the band
// changes before the flow, the dispatch of one block, and the decisions after it.
#pragma once

#include <deque>
#include <vector>

#include "compose.h"

namespace ub {

// Blocks set aside by the main loop, as pointers into the page (or into `owned`).
struct FlowLists {
  NodeList content;
  std::vector<Json*> footer, dialogs, navs, toasts, toolbars;
  bool seen_title = false;
  std::deque<Json> owned;  // blocks the run makes itself (title from page.title, footer copy)
};

// Top-level blocks of the page (empty when there are none).
std::vector<Json*> top_blocks(Composer& c);

// Toolbar and bottom navigation change bar_top and viewport before any content is laid out.
void apply_band_changes(Composer& c, FlowLists& f);

// One top-level block through the dispatch table; moves c.y.
void dispatch_block(Composer& c, Json& b, FlowLists& f);

// The block that builds the title band, or null when a toolbar holds the band.
Json* decide_title(Composer& c, FlowLists& f);
// Makes sure the page has a bottom bar, from page.footer if need be.
void decide_footer(Composer& c, FlowLists& f);

// The content as it enters the root: in a scroll window when higher than the viewport,
// else placed under the title band.
NodeList place_content(Composer& c, NodeList& content, int content_h);

}  // namespace ub
