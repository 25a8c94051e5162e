// Small pieces shared by the page-level builders: equal columns whose last one takes
// the remainder, list values of a block, and entries read as mappings.
#pragma once

#include <optional>
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

// The entries of a list value read with "or an empty sequence": a false value gives no
// entries; a true value that is no list is bad input (KeyError).
std::vector<Json> list_or_empty(const Json& blk, const std::string& key);

// An entry as a mapping: a mapping stays as it is, any other value becomes {key: its text}.
Json entry_map(const Json& v, const std::string& key);

// The optional icon state of an entry: absent when the key is missing or null.
std::optional<std::string> entry_state(const Json& it);

// The block's page-wide number, the integer in its captions.
long long seq_of(const Json& blk);

// Decorations first, then hit buttons: every button lies above every static part.
void append_layers(Node& win, const NodeList& deco, const NodeList& btns);

// A number of the size table of the tokens (a ratio such as gal_tile_of_w).
double size_token(const Json& tok, const std::string& key);

}  // namespace ub
