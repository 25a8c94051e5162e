// The layout document: the root record with every control below it, and the
// document-level checks that decide whether the page may be written.
#include <algorithm>

#include "compose.h"

namespace ub {

Json Composer::document() {
  NodeList nodes = nodes_ ? *nodes_ : run();
  Json doc = Json::object();
  doc["id"] = 0;
  doc["position"] = Pos{0, 0, W, H}.to_json();
  doc["resolution"] = Json{{"width", W}, {"height", H}};
  doc["backgroundColor"] = hex2int(tok_color("page"));
  doc["touchable"] = false;
  doc["topmost"] = false;
  Json body = serialize(nodes, required_keys);
  for (auto it = body.begin(); it != body.end(); ++it) doc[it.key()] = std::move(it.value());

  assert_caption_unique(doc, page_name);
  assert_row_gaps();
  auto badch = find_forbidden_chars(doc);
  if (!badch.empty()) {
    std::u32string chars = BLACKLIST_CHARS;
    std::sort(chars.begin(), chars.end());
    std::vector<std::string> shown, listed;
    for (char32_t ch : chars) shown.push_back(utf8_encode(std::u32string(1, ch)));
    for (size_t i = 0; i < badch.size() && i < 8; ++i)
      listed.push_back(badch[i].first.value_or("None") + ": " + badch[i].second);
    stop("[X] 文本含引擎字库黑名单字符 " + join(shown, "、") +
         "（check_all 会 FAIL）——请改用 ASCII 等价写法（如 … → ...；℃ → 摄氏度）：\n    " + join(listed, "\n    "));
  }
  return doc;
}

}  // namespace ub
