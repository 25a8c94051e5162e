#include "spec/quick_json.h"

#include <clocale>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <deque>
#include <unordered_set>
#include <utility>
#include <vector>

namespace ub {

namespace {

using Member = std::pair<std::string, Json>;

class QuickReader {
 public:
  QuickReader(std::string_view text, int max_depth)
      : p_(text.data()), end_(text.data() + text.size()), max_depth_(max_depth) {}

  bool document(Json& out) {
    skip_space();
    if (!value(out, 0)) return false;
    skip_space();
    return p_ == end_;
  }

 private:
  void skip_space() {
    while (p_ != end_ && (*p_ == ' ' || *p_ == '\n' || *p_ == '\r' || *p_ == '\t')) ++p_;
  }

  bool word(const char* w, size_t n) {
    if ((size_t)(end_ - p_) < n || std::memcmp(p_, w, n) != 0) return false;
    p_ += n;
    return true;
  }

  bool value(Json& out, int depth) {
    if (p_ == end_) return false;
    switch (*p_) {
      case '{': return object(out, depth + 1);
      case '[': return array(out, depth + 1);
      case '"': {
        std::string s;
        if (!string(s)) return false;
        out = std::move(s);
        return true;
      }
      case 't': out = true; return word("true", 4);
      case 'f': out = false; return word("false", 5);
      case 'n': out = nullptr; return word("null", 4);
      default: return number(out);
    }
  }

  bool array(Json& out, int depth) {
    if (max_depth_ > 0 && depth > max_depth_) return false;
    ++p_;
    out = Json(Json::value_t::array);
    auto& items = out.get_ref<Json::array_t&>();
    skip_space();
    if (p_ != end_ && *p_ == ']') {
      ++p_;
      return true;
    }
    for (;;) {
      skip_space();
      items.emplace_back();
      if (!value(items.back(), depth)) return false;
      skip_space();
      if (p_ == end_) return false;
      if (*p_ == ']') {
        ++p_;
        return true;
      }
      if (*p_++ != ',') return false;
    }
  }

  // Members gather in a buffer of the object's depth and move into it, reserved once,
  // when it closes (its own vector would copy the const keys each time it grows).
  bool object(Json& out, int depth) {
    if (max_depth_ > 0 && depth > max_depth_) return false;
    ++p_;
    if (pending_.size() < (size_t)depth) pending_.resize(depth);
    std::vector<Member>& buffer = pending_[depth - 1];
    buffer.clear();
    skip_space();
    if (p_ != end_ && *p_ == '}') {
      ++p_;
      out = Json(Json::value_t::object);
      return true;
    }
    for (;;) {
      skip_space();
      if (p_ == end_ || *p_ != '"') return false;
      std::string key;
      if (!string(key)) return false;
      skip_space();
      if (p_ == end_ || *p_++ != ':') return false;
      skip_space();
      buffer.emplace_back(std::move(key), nullptr);
      if (!value(buffer.back().second, depth)) return false;
      skip_space();
      if (p_ == end_) return false;
      if (*p_ == '}') {
        ++p_;
        break;
      }
      if (*p_++ != ',') return false;
    }
    if (repeats_key(buffer)) return false;
    out = Json(Json::value_t::object);
    Json::object_t::Container& members = out.get_ref<Json::object_t&>();
    members.reserve(buffer.size());
    for (auto& [k, v] : buffer) members.emplace_back(std::move(k), std::move(v));
    buffer.clear();
    return true;
  }

  static bool repeats_key(const std::vector<Member>& members) {
    const size_t n = members.size();
    if (n <= 16) {
      for (size_t i = 1; i < n; ++i)
        for (size_t j = 0; j < i; ++j)
          if (members[i].first == members[j].first) return true;
      return false;
    }
    std::unordered_set<std::string_view> seen;
    seen.reserve(n);
    for (const Member& m : members)
      if (!seen.insert(m.first).second) return true;
    return false;
  }

  // -?(0|[1-9][0-9]*)(.[0-9]+)?([eE][+-]?[0-9]+)?, typed as the full reader types it:
  // unsigned when not negative, signed when negative, a double with a fraction or exponent.
  bool number(Json& out) {
    const char* start = p_;
    const bool negative = *p_ == '-';
    if (negative) ++p_;
    if (p_ == end_ || !digit(*p_)) return false;
    if (*p_ == '0') ++p_;
    else
      while (p_ != end_ && digit(*p_)) ++p_;
    const char* int_end = p_;
    bool is_float = false;
    if (p_ != end_ && *p_ == '.') {
      ++p_;
      if (p_ == end_ || !digit(*p_)) return false;
      while (p_ != end_ && digit(*p_)) ++p_;
      is_float = true;
    }
    if (p_ != end_ && (*p_ == 'e' || *p_ == 'E')) {
      ++p_;
      if (p_ != end_ && (*p_ == '+' || *p_ == '-')) ++p_;
      if (p_ == end_ || !digit(*p_)) return false;
      while (p_ != end_ && digit(*p_)) ++p_;
      is_float = true;
    }
    if (!is_float) {
      const char* d = start + (negative ? 1 : 0);
      if (int_end - d > 18) return false;
      uint64_t n = 0;
      for (; d != int_end; ++d) n = n * 10 + (uint64_t)(*d - '0');
      if (negative) out = -(int64_t)n;
      else out = n;
      return true;
    }
    char buf[64];
    const size_t len = (size_t)(p_ - start);
    if (len >= sizeof buf || !decimal_point_is_dot()) return false;
    std::memcpy(buf, start, len);
    buf[len] = '\0';
    char* stop = nullptr;
    const double x = std::strtod(buf, &stop);
    if (stop != buf + len || !std::isfinite(x)) return false;
    out = x;
    return true;
  }

  static bool digit(char c) { return c >= '0' && c <= '9'; }

  // The full reader hands numbers to strtod in the C library's current locale.
  static bool decimal_point_is_dot() {
    const lconv* lc = std::localeconv();
    return lc && lc->decimal_point && lc->decimal_point[0] == '.' && lc->decimal_point[1] == '\0';
  }

  // A string at p_ (on its opening quote): escapes resolved, UTF-8 checked.
  bool string(std::string& out) {
    ++p_;
    const char* run = p_;  // start of the bytes not yet copied to out
    for (;;) {
      if (p_ == end_) return false;
      const auto c = (unsigned char)*p_;
      if (c == '"') {
        out.append(run, p_);
        ++p_;
        return true;
      }
      if (c < 0x20) return false;
      if (c == '\\') {
        out.append(run, p_);
        if (!escape(out)) return false;
        run = p_;
      } else if (c < 0x80) {
        ++p_;
      } else if (!utf8_sequence()) {
        return false;
      }
    }
  }

  // One well-formed UTF-8 sequence of two to four bytes at p_.
  bool utf8_sequence() {
    const auto b = [&](ptrdiff_t i) { return (unsigned char)p_[i]; };
    const auto in = [&](ptrdiff_t i, unsigned lo, unsigned hi) {
      return end_ - p_ > i && b(i) >= lo && b(i) <= hi;
    };
    const unsigned c = b(0);
    size_t n;
    if (c >= 0xC2 && c <= 0xDF) n = 2;
    else if (c == 0xE0) n = in(1, 0xA0, 0xBF) ? 3 : 0;
    else if ((c >= 0xE1 && c <= 0xEC) || c == 0xEE || c == 0xEF) n = in(1, 0x80, 0xBF) ? 3 : 0;
    else if (c == 0xED) n = in(1, 0x80, 0x9F) ? 3 : 0;
    else if (c == 0xF0) n = in(1, 0x90, 0xBF) ? 4 : 0;
    else if (c >= 0xF1 && c <= 0xF3) n = in(1, 0x80, 0xBF) ? 4 : 0;
    else if (c == 0xF4) n = in(1, 0x80, 0x8F) ? 4 : 0;
    else n = 0;
    if (n == 0) return false;
    for (size_t i = (n == 2 ? 1 : 2); i < n; ++i)
      if (!in((ptrdiff_t)i, 0x80, 0xBF)) return false;
    p_ += n;
    return true;
  }

  bool hex4(unsigned& cp) {
    if (end_ - p_ < 4) return false;
    cp = 0;
    for (int i = 0; i < 4; ++i) {
      const char h = *p_++;
      cp <<= 4;
      if (h >= '0' && h <= '9') cp |= (unsigned)(h - '0');
      else if (h >= 'a' && h <= 'f') cp |= (unsigned)(h - 'a' + 10);
      else if (h >= 'A' && h <= 'F') cp |= (unsigned)(h - 'A' + 10);
      else return false;
    }
    return true;
  }

  // An escape at p_ (on its backslash), appended to out.
  bool escape(std::string& out) {
    ++p_;
    if (p_ == end_) return false;
    switch (*p_++) {
      case '"': out += '"'; return true;
      case '\\': out += '\\'; return true;
      case '/': out += '/'; return true;
      case 'b': out += '\b'; return true;
      case 'f': out += '\f'; return true;
      case 'n': out += '\n'; return true;
      case 'r': out += '\r'; return true;
      case 't': out += '\t'; return true;
      case 'u': break;
      default: return false;
    }
    unsigned cp;
    if (!hex4(cp)) return false;
    if (cp >= 0xDC00 && cp <= 0xDFFF) return false;  // a low surrogate alone
    if (cp >= 0xD800 && cp <= 0xDBFF) {
      unsigned low;
      if (end_ - p_ < 2 || p_[0] != '\\' || p_[1] != 'u') return false;
      p_ += 2;
      if (!hex4(low) || low < 0xDC00 || low > 0xDFFF) return false;
      cp = 0x10000 + ((cp - 0xD800) << 10) + (low - 0xDC00);
    }
    if (cp < 0x80) {
      out += (char)cp;
    } else if (cp < 0x800) {
      out += (char)(0xC0 | (cp >> 6));
      out += (char)(0x80 | (cp & 0x3F));
    } else if (cp < 0x10000) {
      out += (char)(0xE0 | (cp >> 12));
      out += (char)(0x80 | ((cp >> 6) & 0x3F));
      out += (char)(0x80 | (cp & 0x3F));
    } else {
      out += (char)(0xF0 | (cp >> 18));
      out += (char)(0x80 | ((cp >> 12) & 0x3F));
      out += (char)(0x80 | ((cp >> 6) & 0x3F));
      out += (char)(0x80 | (cp & 0x3F));
    }
    return true;
  }

  const char* p_;
  const char* end_;
  int max_depth_;
  // Buffers by depth, kept between objects for their capacity; a deque keeps the open
  // objects' buffers in place while deeper ones are added.
  std::deque<std::vector<Member>> pending_;
};

}  // namespace

std::optional<Json> read_quick_json(std::string_view text, int max_depth) {
  if (text.size() >= 3 && text.substr(0, 3) == "\xEF\xBB\xBF") return std::nullopt;
  Json doc;
  if (!QuickReader(text, max_depth).document(doc)) return std::nullopt;
  return doc;
}

}  // namespace ub
