// Fixed bands that change the content window before the flow: a toolbar may raise the
// title band, a bottom navigation takes its height off the viewport (once).
#include <algorithm>

#include "kinds/block_place.h"
#include "kinds/registry.h"
#include "page/flow.h"

namespace ub {

namespace {
constexpr int kMinViewport = 40;
}  // namespace

std::vector<Json*> top_blocks(Composer& c) {
  std::vector<Json*> out;
  if (!c.page.is_object())
    throw InputError(cat("\"page\" must be a JSON object, got ", type_name(c.page), ": ", c.page.dump()));
  auto it = c.page.find("blocks");
  if (it == c.page.end() || !truthy(*it)) return out;
  if (!it->is_array()) throw InputError(cat("\"page.blocks\" must be a list of blocks, got ", type_name(*it)));
  for (Json& b : *it) out.push_back(&b);
  return out;
}

void apply_band_changes(Composer& c, FlowLists& f) {
  Metrics& m = c.m;
  const BlockKind& top = block_kinds().with_flow(Flow::TopBand);
  const BlockKind& nav = block_kinds().with_flow(Flow::NavBand);
  for (Json* b : top_blocks(c)) {
    if (is_kind(*b, top)) f.toolbars.push_back(b);
    if (is_kind(*b, nav)) f.navs.push_back(b);
  }
  if (f.toolbars.size() >= 2) stop_at(*f.toolbars[1], cat("[X] ", top.type, " 只能出现一次（一页一条顶部工具条）"));
  if (f.toolbars.size() == 1) {
    m.bar_top = std::max(m.tb_h, m.bar_top);
    m.viewport = std::max(m.content_bottom - m.bar_top, kMinViewport);
    c.notes.push_back(cat(top.type, " 固定带 ", m.tb_h, " px 占标题带位置 → 标题带 ", m.bar_top, "，视口重算为 ",
                          m.viewport));
  }
  if (!f.navs.empty()) {
    m.viewport = std::max(m.viewport - m.nav_h, kMinViewport);
    c.notes.push_back(cat(nav.type, " 固定带 ", m.nav_h, " px 贴底栏上沿 → 视口缩至 ", m.viewport));
  }
}

}  // namespace ub
