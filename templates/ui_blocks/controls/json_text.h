// JSON text in the layout file's format: two-space indent, ": " and ",\n" separators,
// keys in insertion order, texts escaped and numbers written as the JSON library's
// dump() writes them (non-ASCII kept literal, invalid UTF-8 refused).
#pragma once

#include <string>
#include <string_view>

#include "base/values.h"
#include "controls/text_out.h"

namespace ub {

// True when s is valid UTF-8 (what append_json_string writes without refusing).
bool valid_utf8(std::string_view s);
// s as a quoted JSON string.
void append_json_string(TextOut& out, std::string_view s);
inline void append_json_int(TextOut& out, long long v) { out.integer(v); }
// v as dump(2) writes it when v stands at nesting level `level` (its closing bracket
// is indented by 2 * level spaces).
void append_json(TextOut& out, const Json& v, int level);
inline void append_indent(TextOut& out, int level) { out.spaces(2 * (size_t)level); }

}  // namespace ub
