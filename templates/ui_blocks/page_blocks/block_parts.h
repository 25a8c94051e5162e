// Small pieces shared by the page-level builders: equal columns whose last one takes
// the remainder, and the layers of a window.
#pragma once

#include <string>
#include <vector>

#include "controls/node.h"
#include "base/values.h"

namespace ub {

// n columns over `span`: each span // n wide, the last one takes the whole remainder,
// so the columns end exactly on the span's right edge. lefts start at 0 and step by
// the width plus `gap`.
struct Columns {
  std::vector<int> widths, lefts;
  int min_width() const;
};
Columns split_columns(int span, int n, int gap = 0);

// Decorations first, then hit buttons: every button lies above every static part.
void append_layers(Node& win, const NodeList& deco, const NodeList& btns);

// A number of the size table of the tokens (a ratio such as gal_tile_of_w).
double size_token(const Json& tok, const std::string& key);

}  // namespace ub
