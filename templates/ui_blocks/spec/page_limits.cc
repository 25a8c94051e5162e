#include "spec/page_limits.h"

#include <unicode/uchar.h>
#include <unicode/utf8.h>

#include <algorithm>
#include <cstdint>

namespace ub {

bool is_identifier(const std::string& s) {
  const auto* p = reinterpret_cast<const uint8_t*>(s.data());
  const int32_t n = (int32_t)std::min<size_t>(s.size(), 1 << 20);
  if (n == 0 || (size_t)n != s.size()) return false;
  int32_t i = 0;
  int count = 0;
  while (i < n) {
    UChar32 c;
    U8_NEXT(p, i, n, c);
    if (c < 0 || ++count > kMaxIdentifierLength) return false;  // ill-formed UTF-8 or too long
    if (c < 0x80) {  // ASCII: the letters start a name, digits and underscores go anywhere else
      const bool letter = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
      const bool digit = c >= '0' && c <= '9';
      if (!(letter || c == '_' || (count > 1 && digit))) return false;
      continue;
    }
    const int8_t cat_ = u_charType(c);
    const bool letter = u_hasBinaryProperty(c, UCHAR_XID_START);
    const bool mark = cat_ == U_NON_SPACING_MARK || cat_ == U_COMBINING_SPACING_MARK;
    const bool digit = cat_ == U_DECIMAL_DIGIT_NUMBER;
    if (count == 1 ? !(letter || c == '_') : !(letter || mark || digit || c == '_')) return false;
  }
  return true;
}

}  // namespace ub
