// Fixed bands: the toolbar takes the title band's place, the bottom navigations stand on
// the bottom bar. What they change in the metrics is settled with the page context.
#include "kinds/block_place.h"
#include "kinds/registry.h"
#include "page/flow.h"

namespace ub {

std::vector<Json*> top_blocks(Json& page) {
  std::vector<Json*> out;
  if (!page.is_object())
    throw InputError(cat("\"page\" must be a JSON object, got ", type_name(page), ": ", page.dump()));
  auto it = page.find("blocks");
  if (it == page.end() || !truthy(*it)) return out;
  if (!it->is_array()) throw InputError(cat("\"page.blocks\" must be a list of blocks, got ", type_name(*it)));
  for (Json& b : *it) out.push_back(&b);
  return out;
}

void collect_bands(Json& page, FlowLists& f) {
  const BlockKind& top = block_kinds().with_flow(Flow::TopBand);
  const BlockKind& nav = block_kinds().with_flow(Flow::NavBand);
  for (Json* b : top_blocks(page)) {
    if (is_kind(*b, top)) f.toolbars.push_back(b);
    if (is_kind(*b, nav)) f.navs.push_back(b);
  }
  if (f.toolbars.size() >= 2) stop_at(*f.toolbars[1], cat("[X] ", top.type, " 只能出现一次（一页一条顶部工具条）"));
}

}  // namespace ub
