// Fixed bands: the toolbar takes the title band's place, the bottom navigations stand on
// the bottom bar. What they change in the metrics is settled with the page context.
#include "kinds/block_place.h"
#include "kinds/registry.h"
#include "page/flow.h"

namespace ub {

void collect_bands(const PageRecords& page, FlowLists& f) {
  const BlockKind& top = block_kinds().with_flow(Flow::TopBand);
  const BlockKind& nav = block_kinds().with_flow(Flow::NavBand);
  for (const BlockRecord& b : page.blocks) {
    if (is_kind(b, top)) f.toolbars.push_back(&b);
    if (is_kind(b, nav)) f.navs.push_back(&b);
  }
  if (f.toolbars.size() >= 2) stop_at(*f.toolbars[1], cat("[X] ", top.type, " 只能出现一次（一页一条顶部工具条）"));
}

}  // namespace ub
