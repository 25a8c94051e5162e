#include "base/primitives.h"

#include <unicode/uchar.h>

#include <cmath>
#include <cstdlib>

namespace ub {

int r4(double v) {
  int g = narrow_int(narrow_int(half_even(v * 0.25)) * 4LL);
  return g > 4 ? g : 4;
}

int r4up(double v) {
  int g = narrow_int(narrow_int(trunc_int(-std::floor(v * -0.25))) * 4LL);
  return g > 4 ? g : 4;
}

double pick(double target, double lo, double hi, const std::vector<double>& ladder) {
  if (ladder.empty()) throw InputError("font ladder is empty");
  double best = ladder[0];
  for (double e : ladder)
    if (std::fabs(e - target) < std::fabs(best - target)) best = e;
  double v = best < hi ? best : hi;
  return v > lo ? v : lo;
}

// One base-16 field of a colour text; a missing or non-hex digit is broken token data.
static long long hex_field(const std::string& s, size_t at, size_t len) {
  if (at >= s.size()) throw InputError("bad colour value: '" + s + "'");
  std::string f = s.substr(at, len);
  long long v = 0;
  for (char c : f) {
    int d;
    if (c >= '0' && c <= '9') d = c - '0';
    else if (c >= 'a' && c <= 'f') d = c - 'a' + 10;
    else if (c >= 'A' && c <= 'F') d = c - 'A' + 10;
    else throw InputError("bad colour value: '" + s + "'");
    v = v * 16 + d;
  }
  return v;
}

static std::string strip_hash(const std::string& s) {
  size_t i = s.find_first_not_of('#');
  return i == std::string::npos ? std::string() : s.substr(i);
}

std::array<int, 4> colour_channels(const std::string& s, int default_a) {
  std::string h = strip_hash(s);
  return {(int)hex_field(h, 0, 2), (int)hex_field(h, 2, 2), (int)hex_field(h, 4, 2),
          h.size() >= 8 ? (int)hex_field(h, 6, 2) : default_a};
}

long long hex2int(const std::string& s) {
  std::string h = strip_hash(s);
  if (h.size() == 8) {
    long long r = hex_field(h, 0, 2), g = hex_field(h, 2, 2), b = hex_field(h, 4, 2), a = hex_field(h, 6, 2);
    return (a << 24) | (r << 16) | (g << 8) | b;
  }
  return hex_field(h, 0, 6);
}

// Letters (general category L*) or any character with a numeric value.
static bool is_alnum(char32_t c) {
  if (u_isalpha((UChar32)c)) return true;
  return u_getIntPropertyValue((UChar32)c, UCHAR_NUMERIC_TYPE) != U_NT_NONE;
}

std::pair<int, int> text_min_size(const std::string& text, double font_size, int align) {
  if (text.empty()) return {0, 0};
  double wsum = 0.0;
  for (char32_t c : utf8_decode(text)) {
    if (c > 0x2E7F) wsum += 1.0;
    else if (is_alnum(c)) wsum += 0.55;
    else if (c == '(' || c == ')' || c == '[' || c == ']' || c == '{' || c == '}') wsum += 0.55;
    else wsum += 0.6;
  }
  long long mw = trunc_int(wsum * font_size * 1.1) + 16;
  if (align == kAlignCenter || align == kAlignLeft) mw += 8;
  return {narrow_int(mw), narrow_int(trunc_int(font_size * 1.25))};
}

std::string row_field(const Json& row, std::initializer_list<const char*> keys) {
  for (const char* k : keys) {
    const Json& v = get(row, k);
    if (v.is_null() || (v.is_string() && v.get_ref<const std::string&>().empty())) continue;
    return to_text(v);
  }
  return "";
}

}  // namespace ub
