#include "controls/json_text.h"

#include <charconv>
#include <cstdint>
#include <cstring>

namespace ub {

using namespace std::string_view_literals;

namespace {

// Length of the valid UTF-8 sequence starting at s[i] (a byte >= 0x80), or 0.
size_t utf8_len(std::string_view s, size_t i) {
  auto at = [&](size_t k) -> unsigned { return k < s.size() ? (unsigned char)s[k] : 0u; };
  auto cont = [](unsigned b, unsigned lo = 0x80, unsigned hi = 0xBF) { return b >= lo && b <= hi; };
  const unsigned b0 = at(i);
  if (b0 >= 0xC2 && b0 <= 0xDF) return cont(at(i + 1)) ? 2 : 0;
  if (b0 >= 0xE0 && b0 <= 0xEF) {
    const unsigned lo = b0 == 0xE0 ? 0xA0 : 0x80, hi = b0 == 0xED ? 0x9F : 0xBF;
    return cont(at(i + 1), lo, hi) && cont(at(i + 2)) ? 3 : 0;
  }
  if (b0 >= 0xF0 && b0 <= 0xF4) {
    const unsigned lo = b0 == 0xF0 ? 0x90 : 0x80, hi = b0 == 0xF4 ? 0x8F : 0xBF;
    return cont(at(i + 1), lo, hi) && cont(at(i + 2)) && cont(at(i + 3)) ? 4 : 0;
  }
  return 0;
}

}  // namespace

bool valid_utf8(std::string_view s) {
  for (size_t i = 0; i < s.size();) {
    if ((unsigned char)s[i] < 0x80) {
      ++i;
      continue;
    }
    const size_t n = utf8_len(s, i);
    if (n == 0) return false;
    i += n;
  }
  return true;
}


namespace {

// True when s holds no byte below 0x20, '"', '\\' or above 0x7f: eight bytes at a time.
bool plain_ascii(std::string_view s) {
  constexpr uint64_t kOnes = 0x0101010101010101ULL, kHigh = 0x8080808080808080ULL;
  auto bad = [&](uint64_t w) {
    const uint64_t quote = w ^ (kOnes * '"'), slash = w ^ (kOnes * '\\');
    return ((w - kOnes * 0x20) | (quote - kOnes) | (slash - kOnes) | w) & kHigh;
  };
  size_t i = 0;
  for (; i + 8 <= s.size(); i += 8) {
    uint64_t w;
    std::memcpy(&w, s.data() + i, 8);
    if (bad(w)) return false;
  }
  for (; i < s.size(); ++i) {
    const unsigned char b = (unsigned char)s[i];
    if (b < 0x20 || b >= 0x80 || b == '"' || b == '\\') return false;
  }
  return true;
}

}  // namespace

void append_json_string(TextOut& out, std::string_view s) {
  static const char hex[] = "0123456789abcdef";
  if (plain_ascii(s)) {
    out.put('"');
    out.put(s);
    out.put('"');
    return;
  }
  out.put('"');
  size_t run = 0;  // start of the bytes copied as they are
  for (size_t i = 0; i < s.size();) {
    const unsigned char b = (unsigned char)s[i];
    if (b >= 0x20 && b < 0x80 && b != '"' && b != '\\') {  // the usual byte first
      ++i;
      continue;
    }
    if (b >= 0x80) {
      const size_t n = utf8_len(s, i);
      if (n == 0) {
        // Let the library refuse it, with its own message.
        out.put(Json(std::string(s)).dump(-1, ' ', false, Json::error_handler_t::strict));
        return;
      }
      i += n;
      continue;
    }
    out.put(s.substr(run, i - run));
    switch (b) {
      case '"': out.put("\\\""sv); break;
      case '\\': out.put("\\\\"sv); break;
      case '\b': out.put("\\b"sv); break;
      case '\f': out.put("\\f"sv); break;
      case '\n': out.put("\\n"sv); break;
      case '\r': out.put("\\r"sv); break;
      case '\t': out.put("\\t"sv); break;
      default:
        out.put("\\u00"sv);
        out.put(hex[b >> 4]);
        out.put(hex[b & 15]);
    }
    run = ++i;
  }
  out.put(s.substr(run, s.size() - run));
  out.put('"');
}

void append_json(TextOut& out, const Json& v, int level) {
  switch (v.type()) {
    case Json::value_t::object: {
      if (v.empty()) {
        out.put("{}"sv);
        return;
      }
      out.put("{\n"sv);
      bool first = true;
      for (auto it = v.begin(); it != v.end(); ++it) {
        if (!first) out.put(",\n"sv);
        first = false;
        append_indent(out, level + 1);
        append_json_string(out, it.key());
        out.put(": "sv);
        append_json(out, it.value(), level + 1);
      }
      out.put('\n');
      append_indent(out, level);
      out.put('}');
      return;
    }
    case Json::value_t::array: {
      if (v.empty()) {
        out.put("[]"sv);
        return;
      }
      out.put("[\n"sv);
      bool first = true;
      for (const Json& e : v) {
        if (!first) out.put(",\n"sv);
        first = false;
        append_indent(out, level + 1);
        append_json(out, e, level + 1);
      }
      out.put('\n');
      append_indent(out, level);
      out.put(']');
      return;
    }
    case Json::value_t::string:
      append_json_string(out, v.get_ref<const std::string&>());
      return;
    case Json::value_t::boolean:
      out.put(v.get<bool>() ? "true"sv : "false"sv);
      return;
    case Json::value_t::null:
      out.put("null"sv);
      return;
    case Json::value_t::number_integer:
      append_json_int(out, v.get<long long>());
      return;
    case Json::value_t::number_unsigned:
      out.unsigned_integer(v.get<unsigned long long>());
      return;
    default:  // doubles (and anything rarer): the library's own shortest form
      out.put(v.dump(2, ' ', false, Json::error_handler_t::strict));
      return;
  }
}

}  // namespace ub
