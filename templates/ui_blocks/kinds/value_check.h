// The values a page gives to a block's keys, checked against what the type's library
// entry declares before anything is composed: flags take true or false (1 or 0), texts
// take a text or a number, lists hold texts or records of declared keys, an index names
// an entry of its list, an icon name is never a path, and no shown text holds a character
// the engine's font lacks. A false value (null, false, 0, "", [], {}) stands for an absent
// key, except for a flag. A failure is bad input naming the key by its JSON path.
#pragma once

#include <string>
#include <vector>

#include "base/values.h"
#include "kinds/block_record.h"

namespace ub {

// Checks the block (not its inner blocks); throws InputError on the first wrong value.
void check_values(const BlockRecord& b);

// A text of the page that is shown as it is (page.title, page.subtitle): a text or a
// number, free of forbidden characters. `path` is its place in spec.json.
void check_shown_text(const Json& v, const std::string& path);

// The stop for a forbidden character `c` in the text `s` at `path`.
[[noreturn]] void fail_forbidden(const std::string& path, const std::string& s, char32_t c);

// "unknown key "lable" (did you mean "label"?)": the did-you-mean when a known key is close.
std::string unknown_key_text(const std::string& key, const std::vector<std::string>& known);

// The fixed stop for an icon name that holds / \ or NUL, the name shown with NUL written
// \x00 so that the message is never cut short, and its place when known.
[[noreturn]] void fail_icon_path(const std::string& name, const std::string& path);

// "U+2192": a code point as written in messages.
std::string code_point(char32_t c);

}  // namespace ub
