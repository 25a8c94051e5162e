// A quick reader for the common case of a spec: well-formed JSON text without duplicate
// keys. Anything else is left to the full reader, which gives the located error.
#pragma once

#include <optional>
#include <string_view>

#include "base/values.h"

namespace ub {

// The document of text exactly as read_json(text, max_depth) gives it, or nothing when
// the text is malformed, repeats a key in an object, nests deeper than max_depth, holds a
// number the quick path does not read (an integer of more than 18 digits, a number beyond
// the range of a double) or starts with a byte-order mark.
std::optional<Json> read_quick_json(std::string_view text, int max_depth);

}  // namespace ub
