#include "base/forbidden_chars.h"

#include "base/values.h"

namespace ub {

std::u32string forbidden_in(const std::string& text) {
  std::u32string found;
  for (char32_t ch : utf8_decode(text))
    if (kForbiddenChars.find(ch) != std::u32string_view::npos && found.find(ch) == std::u32string::npos) found += ch;
  return found;
}

bool has_forbidden(const std::string& text) { return !forbidden_in(text).empty(); }

}  // namespace ub
