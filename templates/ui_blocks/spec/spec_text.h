// The text of a spec.json read as a document.
#pragma once

#include <string>

#include "base/values.h"

namespace ub {

// Nesting deeper than any page is refused before it can exhaust the stack later on.
constexpr int kMaxSpecDepth = 256;

// Parses the text of the spec at path. Malformed text, nesting beyond kMaxSpecDepth and
// a number beyond the range of a double (1e999) throw InputError naming the file.
Json parse_spec_text(const std::string& text, const std::string& path);

}  // namespace ub
