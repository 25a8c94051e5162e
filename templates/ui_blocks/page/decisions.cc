// After the flow: who builds the top band (a page_title block, page.title, or the
// toolbar), and where the bottom bar comes from. A page needs both bands.
#include "page/flow.h"

namespace ub {

namespace {
bool is_type(const Json& b, const char* t) {
  const Json& v = get(b, "type");
  return v.is_string() && v.get_ref<const std::string&>() == t;
}
}  // namespace

Json* decide_title(Composer& c, FlowLists& f) {
  Json* title_blk = nullptr;
  for (Json* b : top_blocks(c))
    if (is_type(*b, "page_title")) {
      title_blk = b;
      break;
    }
  const bool toolbar = !f.toolbars.empty();
  if (toolbar && title_blk)
    stop("[X] 同页既有 toolbar 又有 page_title（两者争同一条固定带）——二选一：要返回/动作就留 toolbar，否则留 "
         "page_title");
  if (toolbar) {
    Json& tb = *f.toolbars.front();
    if (!truthy(get(tb, "title"))) tb["title"] = value_or(c.page, "title", "");
    if (truthy(get(c.page, "subtitle")))
      c.notes.push_back("toolbar 已在标题带上 → page.subtitle 忽略（副标题请写进 toolbar.title 或另起一行）");
  } else if (!title_blk && truthy(get(c.page, "title"))) {
    Json blk = Json::object();
    blk["type"] = "page_title";
    blk["title"] = get(c.page, "title");
    blk["subtitle"] = get(c.page, "subtitle");
    f.owned.push_back(std::move(blk));
    title_blk = &c.name_block(f.owned.back());
  }
  if (!title_blk && !toolbar)
    stop("[X] 缺标题：给 page.title（+ page.subtitle）、一个 page_title 块，或一个 toolbar 块——顶部固定带高靠它定");
  return title_blk;
}

void decide_footer(Composer& c, FlowLists& f) {
  const Json& pf = get(c.page, "footer");
  if (f.footer.empty() && truthy(pf)) {
    if (!pf.is_object())
      throw InputError(cat("\"page.footer\" must be a JSON object, got ", type_name(pf), ": ", pf.dump()));
    Json blk = pf;
    blk["type"] = "bottom_actions";
    f.owned.push_back(std::move(blk));
    f.footer.push_back(&c.name_block(f.owned.back()));
  }
  if (f.footer.empty()) stop("[X] 缺 bottom_actions（底部固定带必须有，否则视口高度没法定）");
}

}  // namespace ub
