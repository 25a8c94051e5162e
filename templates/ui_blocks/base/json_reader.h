// Reading JSON text into an ordered document in time linear in its size.
#pragma once

#include <stdexcept>
#include <string_view>

#include "base/values.h"

namespace ub {

// Nesting beyond the reader's bound (thrown before the document is complete).
struct JsonTooDeep : std::runtime_error {
  using std::runtime_error::runtime_error;
};

// Parses text like Json::parse does, with the same results and the same parse_error /
// out_of_range exceptions, but appends each object member without searching the members
// before it (the ordered reader's own look-up makes a wide object, such as a window with
// thousands of children, quadratic). A key given twice keeps its first place and its last
// value, as with Json::parse. max_depth > 0 bounds the nesting: a container opened inside
// max_depth open ones throws JsonTooDeep.
// On a parse error, failed_at (when given) gets the line and column (1-based, in code
// points) where the offending token starts.
struct TextPlace {
  size_t line = 0, column = 0;
};
Json read_json(std::string_view text, int max_depth = 0, TextPlace* failed_at = nullptr);

}  // namespace ub
