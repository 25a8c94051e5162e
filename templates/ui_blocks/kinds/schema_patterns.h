// Regular expressions of the schema for what compose reads from texts: whole numbers in a
// range, numbers, identifiers, and texts free of the forbidden characters. They are
// written for both Python's `re` and ECMAScript with the u flag: no \p classes, no `$`
// (Python's matches before a final newline) and no \s (wider than the blanks compose strips).
#pragma once

#include <optional>
#include <string>

namespace ub {

// A whole-number text whose value lies in [lo, hi] (either end open when absent), as
// int_of reads it: blanks around it, a sign, digits with single underscores between
// them, at most 18 digits.
std::string whole_text_pattern(std::optional<long long> lo, std::optional<long long> hi);

// A whole-number text that is even and at least `least` (1 to 10).
std::string even_text_pattern(long long least);

// A text float_of reads as a number, its magnitude aside (1e999 has the syntax).
std::string number_text_pattern();

// A name is_identifier accepts, but for its length (maxLength states that).
std::string identifier_pattern();

// An icon name: no slash, backslash or NUL.
std::string icon_name_pattern();

// A text with none of the forbidden characters.
std::string no_forbidden_pattern();

}  // namespace ub
