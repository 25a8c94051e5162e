// The pieces of the page run: the block lists the flow sorts blocks into, the fixed
// bands, the dispatch of one block, and the decisions after it.
#pragma once

#include <vector>

#include "kinds/build.h"
#include "page/page_records.h"

namespace ub {

// Blocks set aside by the main loop, as pointers into the page's records.
struct FlowLists {
  NodeList content;
  std::vector<const BlockRecord*> footer, dialogs, navs, toasts, toolbars;
  bool seen_title = false;
};

// Sets the toolbar and the bottom navigations aside (their changes to the metrics are
// already in the page context); refuses a second toolbar.
void collect_bands(const PageRecords& page, FlowLists& f);

// One top-level block through the dispatch table; moves the flow's cursor.
void dispatch_block(Build& bd, const BlockRecord& b, FlowLists& f);

// The block that builds the title band, or null when a toolbar holds the band.
const BlockRecord* decide_title(Build& bd, const Json& page, const PageRecords& records, FlowLists& f);
// Makes sure the page has a bottom bar, from page.footer if need be.
void decide_footer(const Json& page, const PageRecords& records, FlowLists& f);

// The content as it enters the root: in a scroll window when higher than the viewport,
// else placed under the title band.
NodeList place_content(Build& bd, NodeList& content, int content_h);

}  // namespace ub
