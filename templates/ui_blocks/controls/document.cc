// The layout document: the root record with every control below it, and the
// document-level checks that decide whether the page may be written.
#include <algorithm>

#include "compose.h"
#include "controls/layout_stream.h"

namespace ub {

LayoutText Composer::layout() {
  NodeList nodes = nodes_ ? *nodes_ : run();
  LayoutText out = write_layout(LayoutRoot{W, H, hex2int(tok_color("page"))}, nodes, required_keys);

  assert_caption_unique(out.controls, page_name, places);
  assert_row_gaps();
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

CheckedLayout checked_layout(Composer& c) {
  NodeList nodes = c.nodes_ ? *c.nodes_ : c.run();
  const LayoutRoot root{c.W, c.H, hex2int(c.tok_color("page"))};
  bool plain = false;
  LayoutText index = index_layout(nodes, c.required_keys, &plain);
  if (!plain) return {c.layout(), root, false};
  CheckedLayout out{std::move(index), root, true};
  assert_caption_unique(out.layout.controls, c.page_name, c.places);
  c.assert_row_gaps();
  return out;
}

Json Composer::document() { return Json::parse(layout().text); }

}  // namespace ub
