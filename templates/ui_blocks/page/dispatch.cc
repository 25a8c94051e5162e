// The dispatch of the main loop: which builder a top-level block goes to, whether a
// group gap precedes it, and how the flow cursor moves afterwards.
#include "kinds/block_place.h"
#include "page/flow.h"

namespace ub {

namespace {

std::vector<std::string> library_types(const PageContext& page) {
  std::vector<std::string> names;
  for (const auto& [type, def] : page.blocks) names.push_back(type);  // std::map: already sorted
  return names;
}

void dispatch_placed(Build& bd, const BlockRecord& b, FlowLists& f) {
  const Json& tv = given_value(b, "type");
  if (!tv.is_string() || !bd.page.blocks.count(tv.get<std::string>())) {
    const std::vector<std::string> types = library_types(bd.page);
    stop_at(b, cat("[X] 未知块类型：", to_text(tv), "（可用：", join(types, ", "), "）"), type_hint(tv, types));
  }
  const BlockKind* k = b.kind;
  if (!k) stop(cat("[X] 块 ", tv.get<std::string>(), " 没有 builder"));
  const Metrics& m = bd.page.m;

  switch (k->flow) {
    case Flow::Title:
      if (f.seen_title) stop(cat("[X] ", k->type, " 只能出现一次"));
      f.seen_title = true;
      break;
    case Flow::Footer:
      f.footer.push_back(&b);
      break;
    case Flow::Dialog:
      f.dialogs.push_back(&b);
      break;
    case Flow::Toast:
      f.toasts.push_back(&b);
      break;
    case Flow::TopBand:
    case Flow::NavBand:
      break;  // fixed bands: handled before and after the flow
    case Flow::Content:
      if (k->group_gap && bd.flow.y() > 0) bd.flow.set_y(bd.flow.y() + m.group_gap);
      bd.flow.set_y(k->build(bd, b, f.content, Spot{m.margin, bd.flow.y(), m.content_w}));
      break;
  }
}

}  // namespace

void dispatch_block(Build& bd, const BlockRecord& b, FlowLists& f) {
  build_placed(bd.flow, b, f.content, [&] { dispatch_placed(bd, b, f); });
}

}  // namespace ub
