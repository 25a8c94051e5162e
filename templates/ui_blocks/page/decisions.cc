// After the flow: who builds the top band (a page_title block, page.title, or the
// toolbar), and where the bottom bar comes from. A page needs both bands.
#include "kinds/registry.h"
#include "page/flow.h"

namespace ub {

const BlockRecord* decide_title(Build& bd, const Json& page, const PageRecords& records, FlowLists& f) {
  const BlockKind& title = block_kinds().with_flow(Flow::Title);
  const BlockKind& top = block_kinds().with_flow(Flow::TopBand);
  const BlockRecord* title_blk = nullptr;
  for (const BlockRecord& b : records.blocks)
    if (is_kind(b, title)) {
      title_blk = &b;
      break;
    }
  const bool toolbar = !f.toolbars.empty();
  if (toolbar && title_blk)
    stop(cat("[X] 同页既有 ", top.type, " 又有 ", title.type, "（两者争同一条固定带）——二选一：要返回/动作就留 ",
             top.type, "，否则留 ", title.type));
  if (toolbar) {
    // Its title came from page.title already, when it had none.
    if (truthy(get(page, "subtitle")))
      bd.notes.add(
          cat(top.type, " 已在标题带上 → page.subtitle 忽略（副标题请写进 ", top.type, ".title 或另起一行）"));
  } else if (!title_blk && records.title) {
    title_blk = &*records.title;
  }
  if (!title_blk && !toolbar)
    stop(cat("[X] 缺标题：给 page.title（+ page.subtitle）、一个 ", title.type, " 块，或一个 ", top.type,
             " 块——顶部固定带高靠它定"));
  return title_blk;
}

void decide_footer(const Json& page, const PageRecords& records, FlowLists& f) {
  const BlockKind& footer = block_kinds().with_flow(Flow::Footer);
  const Json& pf = get(page, "footer");
  if (f.footer.empty() && truthy(pf)) {
    if (!pf.is_object() || !records.footer)
      throw InputError("spec.json: page.footer: expected a mapping, got " + shown_value(pf));
    f.footer.push_back(&*records.footer);
  }
  if (f.footer.empty()) stop(cat("[X] 缺 ", footer.type, "（底部固定带必须有，否则视口高度没法定）"));
}

}  // namespace ub
