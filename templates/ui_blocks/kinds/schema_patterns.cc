#include "kinds/schema_patterns.h"

#include <cstdio>
#include <stdexcept>
#include <utility>
#include <vector>

#include "base/forbidden_chars.h"
#include "base/values.h"
#include "spec/page_limits.h"

namespace ub {

namespace {

// The blanks int_of and float_of strip, and the end of the text.
const char* const kBlanks = "[ \\t\\n\\r\\f\\v]*";
const char* const kEnd = "(?![\\s\\S])";
constexpr int kMaxDigits = 18;

// One digit string as a sequence of digit classes, each a range of digits.
using Digits = std::vector<std::pair<int, int>>;

// The digit strings of equal length from lo to hi (lo <= hi), as few sequences as the
// usual split by leading digit gives.
void digit_ranges(const std::string& lo, const std::string& hi, std::vector<Digits>& out) {
  const size_t n = lo.size();
  if (n == 0) {
    out.push_back({});
    return;
  }
  const int a0 = lo[0] - '0', b0 = hi[0] - '0';
  auto prefixed = [&](int d, const std::string& l, const std::string& h) {
    std::vector<Digits> rest;
    digit_ranges(l, h, rest);
    for (Digits& r : rest) {
      r.insert(r.begin(), {d, d});
      out.push_back(std::move(r));
    }
  };
  const std::string zeros(n - 1, '0'), nines(n - 1, '9');
  if (a0 == b0) return prefixed(a0, lo.substr(1), hi.substr(1));
  int a = a0, b = b0;
  if (lo.substr(1) != zeros) prefixed(a++, lo.substr(1), nines);
  const bool hi_full = hi.substr(1) == nines;
  if (!hi_full) --b;
  if (a <= b) {
    Digits d{{a, b}};
    d.insert(d.end(), n - 1, {0, 9});
    out.push_back(std::move(d));
  }
  if (!hi_full) prefixed(b0, zeros, hi.substr(1));
}

std::string digit_class(std::pair<int, int> r) {
  if (r.first == r.second) return std::string(1, char('0' + r.first));
  return cat("[", char('0' + r.first), "-", char('0' + r.second), "]");
}

// A sequence with an optional underscore between its digits; runs of any digit folded.
std::string render(const Digits& d) {
  std::string s = digit_class(d[0]);
  for (size_t i = 1; i < d.size();) {
    size_t j = i;
    while (j < d.size() && d[j] == std::pair{0, 9}) ++j;
    if (j - i >= 2) {
      s += cat("(?:_?[0-9]){", j - i, "}");
      i = j;
    } else {
      s += "_?" + digit_class(d[i++]);
    }
  }
  return s;
}

// Magnitudes from a to b (1 <= a <= b), without leading zeros. Lengths the range covers
// whole are folded into one run: [1-9] and a count of digits.
std::string magnitudes(unsigned long long a, unsigned long long b) {
  std::vector<std::string> alts;
  size_t run_from = 0, run_to = 0;  // whole lengths, 0: none yet
  auto close_run = [&] {
    if (!run_from) return;
    if (run_from == 1 && run_to == 1) alts.push_back("[1-9]");
    else alts.push_back(cat("[1-9](?:_?[0-9]){", run_from - 1, run_to > run_from ? cat(",", run_to - 1) : "", "}"));
    run_from = run_to = 0;
  };
  for (size_t len = std::to_string(a).size(); len <= std::to_string(b).size(); ++len) {
    unsigned long long first = 1;
    for (size_t i = 1; i < len; ++i) first *= 10;
    const unsigned long long last = first * 10 - 1;
    if (a <= first && b >= last) {
      if (!run_from) run_from = len;
      run_to = len;
      continue;
    }
    close_run();
    std::vector<Digits> seqs;
    digit_ranges(std::to_string(std::max(a, first)), std::to_string(std::min(b, last)), seqs);
    for (const Digits& d : seqs) alts.push_back(render(d));
  }
  close_run();
  return join(alts, "|");
}

std::string whole_text(const std::string& body) {
  // At most 18 digits, the leading zeros counted.
  return cat("^", kBlanks, "(?=[+-]?[0-9](?:_?[0-9]){0,", kMaxDigits - 1, "}", kBlanks, kEnd, ")(?:", body, ")",
             kBlanks, kEnd);
}

std::string code_point(char32_t c) {
  if ((c >= '0' && c <= '9') || (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '_')
    return std::string(1, char(c));
  if (c < 0x10000) {
    char buf[8];
    std::snprintf(buf, sizeof buf, "\\u%04X", unsigned(c));
    return buf;
  }
  return utf8_encode(std::u32string(1, c));  // both dialects take astral letters as they are
}

// A character class of the code points for which `in` holds.
template <class In>
std::string char_class(In in) {
  std::string s = "[";
  for (char32_t c = 0; c <= 0x10FFFF; ++c) {
    if ((c >= 0xD800 && c <= 0xDFFF) || !in(c)) continue;
    char32_t e = c;
    while (e < 0x10FFFF && !(e + 1 >= 0xD800 && e + 1 <= 0xDFFF) && in(e + 1)) ++e;
    s += code_point(c);
    if (e > c) s += (e > c + 1 ? "-" : "") + code_point(e);
    c = e;
  }
  return s + "]";
}

}  // namespace

std::string whole_text_pattern(std::optional<long long> lo, std::optional<long long> hi) {
  const long long most = 999999999999999999LL;  // 18 digits
  const long long l = std::max(lo.value_or(-most), -most), h = std::min(hi.value_or(most), most);
  std::vector<std::string> alts;
  if (l <= 0 && h >= 0) alts.push_back("[+-]?0(?:_?0)*");
  if (h >= 1) alts.push_back("\\+?(?:0_?)*(?:" + magnitudes(std::max(l, 1LL), h) + ")");
  if (l <= -1) alts.push_back("-(?:0_?)*(?:" + magnitudes(std::max(-h, 1LL), -l) + ")");
  if (alts.empty()) return "^(?!)";
  return whole_text(join(alts, "|"));
}

std::string even_text_pattern(long long least) {
  if (least < 1 || least > 10) throw std::invalid_argument("even_text_pattern: least must lie in 1..10");
  // One even digit from least on, or two digits and more ending in an even one.
  std::string one;
  for (long long d = least; d <= 8; ++d)
    if (d % 2 == 0) one += char('0' + d);
  std::string body = "\\+?(?:0_?)*(?:";
  if (!one.empty()) body += "[" + one + "]|";
  return whole_text(cat(body, "[1-9](?:_?[0-9]){0,", kMaxDigits - 2, "}_?[02468])"));
}

std::string number_text_pattern() {
  return cat("^", kBlanks, "\\+?-?(?:[0-9]+(?:\\.[0-9]*)?|\\.[0-9]+)(?:[eE][+-]?[0-9]+)?", kBlanks, kEnd);
}

std::string identifier_pattern() {
  // Made once: it asks is_identifier about every code point.
  static const std::string pattern = [] {
    auto one = [](char32_t c) { return utf8_encode(std::u32string(1, c)); };
    const std::string first = char_class([&](char32_t c) { return is_identifier(one(c)); });
    const std::string next = char_class([&](char32_t c) { return is_identifier("a" + one(c)); });
    return "^" + first + next + "*" + kEnd;
  }();
  return pattern;
}

std::string icon_name_pattern() { return "^[^/\\\\\\u0000]*$"; }

std::string no_forbidden_pattern() {
  std::string s = "^[^";
  for (char32_t c : kForbiddenChars) s += code_point(c);
  return s + "]*$";
}

}  // namespace ub
