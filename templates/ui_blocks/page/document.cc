// The layout document: the root record with every control below it, and the
// document-level checks that decide whether the page may be written.
#include <algorithm>

#include "checks/document_scans.h"
#include "compose.h"
#include "page/page_layout.h"

namespace ub {

LayoutText page_layout(const NodeList& nodes, const LayoutRoot& root, const EmitLayer& required_keys,
                       const std::string& page_name, const std::vector<std::string>& places,
                       const RowFamilyState& rows) {
  LayoutText out = write_layout(root, nodes, required_keys);

  assert_caption_unique(out.controls, page_name, places);
  rows.assert_row_gaps();
  if (!may_hold_forbidden(out.text)) return out;
  // Rare: the exact scan over the parsed document names the texts in document order.
  auto badch = find_forbidden_chars(Json::parse(out.text));
  if (!badch.empty()) {
    std::u32string chars = BLACKLIST_CHARS;
    std::sort(chars.begin(), chars.end());
    std::vector<std::string> shown, listed;
    std::vector<const Node*> makers;
    for (char32_t ch : chars) shown.push_back(utf8_encode(std::u32string(1, ch)));
    for (size_t i = 0; i < badch.size() && i < 8; ++i) {
      listed.push_back(badch[i].first.value_or("None") + ": " + badch[i].second);
      // Captions are unique by now: the record of a caption is its control.
      if (!badch[i].first) continue;
      for (const ControlRef& r : out.controls)
        if (r.caption && *r.caption == *badch[i].first) {
          makers.push_back(r.node);
          break;
        }
    }
    stop(with_places("[X] 文本含引擎字库黑名单字符 " + join(shown, "、") +
                         "（check_all 会 FAIL）——请改用 ASCII 等价写法（如 … → ...；℃ → 摄氏度）：\n    " +
                         join(listed, "\n    "),
                     makers, places));
  }
  return out;
}

LayoutText Composer::layout() {
  const NodeList& nodes = run();
  return page_layout(nodes, LayoutRoot{ctx_.W, ctx_.H, hex2int(ctx_.tok_color("page"))}, required_keys_,
                     ctx_.page_name, flow_.places(), rows_);
}

CheckedLayout Composer::checked_layout() {
  const NodeList& nodes = run();
  const LayoutRoot root{ctx_.W, ctx_.H, hex2int(ctx_.tok_color("page"))};
  bool plain = false;
  LayoutText index = index_layout(nodes, required_keys_, &plain);
  if (!plain) return {layout(), root, false};
  CheckedLayout out{std::move(index), root, true};
  assert_caption_unique(out.layout.controls, ctx_.page_name, flow_.places());
  rows_.assert_row_gaps();
  return out;
}

Json Composer::document() { return Json::parse(layout().text); }

}  // namespace ub
