#include "page_blocks/block_parts.h"

#include <algorithm>

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

double size_token(const Json& tok, const std::string& key) { return float_of(get(get(tok, "size"), key)); }

void append_layers(Node& win, const NodeList& deco, const NodeList& btns) {
  win.children.insert(win.children.end(), deco.begin(), deco.end());
  win.children.insert(win.children.end(), btns.begin(), btns.end());
}

}  // namespace ub
