#include "page_blocks/block_parts.h"

#include <algorithm>
#include <optional>

namespace ub {

int Columns::min_width() const { return widths.empty() ? 0 : *std::min_element(widths.begin(), widths.end()); }

Columns split_columns(int span, int n, int gap) {
  Columns c;
  const int base = (int)floordiv(span, n);
  int left = 0;
  for (int i = 0; i < n; ++i) {
    const int w = i + 1 < n ? base : span - base * (n - 1);
    c.widths.push_back(w);
    c.lefts.push_back(left);
    left += w + gap;
  }
  return c;
}

std::vector<Json> list_or_empty(const Json& blk, const std::string& key) {
  const Json& v = get(blk, key);
  if (!truthy(v)) return {};
  if (!v.is_array()) throw KeyError(key, "expected a list, got " + shown_value(v));
  return std::vector<Json>(v.begin(), v.end());
}

Json entry_map(const Json& v, const std::string& key) {
  if (v.is_object()) return v;
  Json out = Json::object();
  out[key] = to_text(v);
  return out;
}

std::optional<std::string> entry_state(const Json& it) {
  const Json& s = get(it, "state");
  if (s.is_null()) return std::nullopt;
  return to_text(s);
}

long long seq_of(const Json& blk) { return int_of(get(blk, "_seq")); }

double size_token(const Json& tok, const std::string& key) { return float_of(get(get(tok, "size"), key)); }

void append_layers(Node& win, const NodeList& deco, const NodeList& btns) {
  win.children.insert(win.children.end(), deco.begin(), deco.end());
  win.children.insert(win.children.end(), btns.begin(), btns.end());
}

}  // namespace ub
