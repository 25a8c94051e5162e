#include "driver/console_text.h"

#include "base/values.h"

namespace ub {

namespace {

// At s[i]: the length of a valid UTF-8 sequence (valid = true), or of the maximal
// invalid part that one replacement character stands for (valid = false).
size_t utf8_step(const std::string& s, size_t i, bool& valid) {
  const auto b = [&](size_t k) { return (unsigned char)s[k]; };
  const unsigned char c = b(i);
  valid = true;
  if (c < 0x80) return 1;
  size_t n;
  unsigned lo = 0x80, hi = 0xbf;
  if (c >= 0xc2 && c <= 0xdf) n = 2;
  else if (c >= 0xe0 && c <= 0xef) {
    n = 3;
    if (c == 0xe0) lo = 0xa0;
    if (c == 0xed) hi = 0x9f;
  } else if (c >= 0xf0 && c <= 0xf4) {
    n = 4;
    if (c == 0xf0) lo = 0x90;
    if (c == 0xf4) hi = 0x8f;
  } else {
    valid = false;
    return 1;
  }
  size_t k = 1;
  for (; k < n && i + k < s.size(); ++k) {
    unsigned x = b(i + k);
    unsigned l = k == 1 ? lo : 0x80, h = k == 1 ? hi : 0xbf;
    if (x < l || x > h) break;
  }
  valid = k == n;
  return k;
}

bool is_space(char32_t c) {
  return (c >= 0x09 && c <= 0x0d) || (c >= 0x1c && c <= 0x20) || c == 0x85 || c == 0xa0 || c == 0x1680 ||
         (c >= 0x2000 && c <= 0x200a) || c == 0x2028 || c == 0x2029 || c == 0x202f || c == 0x205f ||
         c == 0x3000;
}

bool is_break(char32_t c) {
  return c == '\n' || c == '\r' || c == 0x0b || c == 0x0c || (c >= 0x1c && c <= 0x1e) || c == 0x85 ||
         c == 0x2028 || c == 0x2029;
}

}  // namespace

std::string decode_replace(const std::string& bytes) {
  std::string out;
  out.reserve(bytes.size());
  for (size_t i = 0; i < bytes.size();) {
    bool valid = true;
    size_t n = utf8_step(bytes, i, valid);
    if (valid) out.append(bytes, i, n);
    else out += "\xEF\xBF\xBD";
    i += n;
  }
  return out;
}

std::string strip_space(const std::string& s) {
  std::u32string u = utf8_decode(s);
  size_t b = 0, e = u.size();
  while (b < e && is_space(u[b])) ++b;
  while (e > b && is_space(u[e - 1])) --e;
  return utf8_encode(u.substr(b, e - b));
}

std::vector<std::string> split_lines(const std::string& s) {
  std::u32string u = utf8_decode(s);
  std::vector<std::string> lines;
  std::u32string cur;
  for (size_t i = 0; i < u.size(); ++i) {
    if (!is_break(u[i])) {
      cur += u[i];
      continue;
    }
    if (u[i] == '\r' && i + 1 < u.size() && u[i + 1] == '\n') ++i;
    lines.push_back(utf8_encode(cur));
    cur.clear();
  }
  if (!cur.empty()) lines.push_back(utf8_encode(cur));
  return lines;
}

}  // namespace ub
