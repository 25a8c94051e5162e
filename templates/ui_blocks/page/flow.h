// The pieces of the page run: the block lists the flow sorts blocks into, the fixed
// bands, the dispatch of one block, and the decisions after it.
#pragma once

#include <deque>
#include <vector>

#include "kinds/build.h"

namespace ub {

// Blocks set aside by the main loop, as pointers into the page (or into `owned`).
struct FlowLists {
  NodeList content;
  std::vector<Json*> footer, dialogs, navs, toasts, toolbars;
  bool seen_title = false;
  std::deque<Json> owned;  // blocks the run makes itself (title from page.title, footer copy)
};

// Top-level blocks of the page (empty when there are none).
std::vector<Json*> top_blocks(Json& page);

// Sets the toolbar and the bottom navigations aside (their changes to the metrics are
// already in the page context); refuses a second toolbar.
void collect_bands(Json& page, FlowLists& f);

// One top-level block through the dispatch table; moves the flow's cursor.
void dispatch_block(Build& bd, Json& b, FlowLists& f);

// The block that builds the title band, or null when a toolbar holds the band.
Json* decide_title(Build& bd, Json& page, FlowLists& f);
// Makes sure the page has a bottom bar, from page.footer if need be.
void decide_footer(Build& bd, Json& page, FlowLists& f);

// The content as it enters the root: in a scroll window when higher than the viewport,
// else placed under the title band.
NodeList place_content(Build& bd, NodeList& content, int content_h);

}  // namespace ub
