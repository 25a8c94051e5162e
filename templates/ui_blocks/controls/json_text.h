// JSON text in the layout file's format: two-space indent, ": " and ",\n" separators,
// keys in insertion order, texts escaped and numbers written as the JSON library's
// dump() writes them (non-ASCII kept literal, invalid UTF-8 refused).
#pragma once

#include <string>
#include <string_view>

#include "base/values.h"

namespace ub {

// True when s is valid UTF-8 (what append_json_string writes without refusing).
bool valid_utf8(std::string_view s);
// s as a quoted JSON string.
void append_json_string(std::string& out, std::string_view s);
void append_json_int(std::string& out, long long v);
// v as dump(2) writes it when v stands at nesting level `level` (its closing bracket
// is indented by 2 * level spaces).
void append_json(std::string& out, const Json& v, int level);
void append_indent(std::string& out, int level);

}  // namespace ub
