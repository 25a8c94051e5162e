#include "base/values.h"

#include <unicode/uchar.h>
#include <unistd.h>

#include <charconv>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <fstream>
#include <limits>
#include <sstream>

namespace ub {

void stop(const std::string& msg) { throw StopError(msg); }

bool truthy(const Json& v) {
  switch (v.type()) {
    case Json::value_t::null: return false;
    case Json::value_t::boolean: return v.get<bool>();
    case Json::value_t::number_integer: return v.get<long long>() != 0;
    case Json::value_t::number_unsigned: return v.get<unsigned long long>() != 0;
    case Json::value_t::number_float: return v.get<double>() != 0.0;
    case Json::value_t::string: return !v.get_ref<const std::string&>().empty();
    case Json::value_t::array:
    case Json::value_t::object: return !v.empty();
    default: return true;
  }
}

const Json& get(const Json& obj, std::string_view key) {
  static const Json null_value;
  if (!obj.is_object()) return null_value;
  auto it = obj.find(key);
  return it == obj.end() ? null_value : *it;
}

bool has(const Json& obj, std::string_view key) {
  return obj.is_object() && obj.find(key) != obj.end();
}

Json value_or(const Json& obj, std::string_view key, const Json& def) {
  const Json& v = get(obj, key);
  return truthy(v) ? v : def;
}

std::string text_or(const Json& obj, std::string_view key, const std::string& def) {
  const Json& v = get(obj, key);
  return truthy(v) ? to_text(v) : def;
}

bool flag(const Json& obj, std::string_view key, bool def) {
  if (!has(obj, key)) return def;
  return truthy(get(obj, key));
}

long long int_or(const Json& obj, std::string_view key, long long def) {
  const Json& v = get(obj, key);
  return truthy(v) ? int_of(v) : def;
}

std::string float_text(double d) {
  if (std::isnan(d)) return "nan";
  if (std::isinf(d)) return d > 0 ? "inf" : "-inf";
  if (d == 0.0) return std::signbit(d) ? "-0.0" : "0.0";
  char buf[64];
  auto res = std::to_chars(buf, buf + sizeof buf, d, std::chars_format::scientific);
  std::string sci(buf, res.ptr);
  // sci looks like "-1.2345e+16"
  bool neg = sci[0] == '-';
  if (neg) sci.erase(0, 1);
  size_t epos = sci.find('e');
  std::string mant = sci.substr(0, epos);
  int exp = std::stoi(sci.substr(epos + 1));
  std::string digits;
  for (char c : mant)
    if (c != '.') digits += c;
  std::string out;
  if (exp < -4 || exp >= 16) {
    out = digits.substr(0, 1);
    if (digits.size() > 1) out += "." + digits.substr(1);
    char eb[16];
    std::snprintf(eb, sizeof eb, "e%c%02d", exp < 0 ? '-' : '+', std::abs(exp));
    out += eb;
  } else if (exp < 0) {
    out = "0." + std::string(-exp - 1, '0') + digits;
  } else {
    int intlen = exp + 1;
    if ((int)digits.size() <= intlen) {
      out = digits + std::string(intlen - digits.size(), '0') + ".0";
    } else {
      out = digits.substr(0, intlen) + "." + digits.substr(intlen);
    }
  }
  return neg ? "-" + out : out;
}

static std::string quote_text(const std::string& s) {
  // Single quotes unless the text holds one and no double quote.
  bool sq = s.find('\'') != std::string::npos, dq = s.find('"') != std::string::npos;
  char q = (sq && !dq) ? '"' : '\'';
  std::string out(1, q);
  for (char c : s) {
    if (c == q || c == '\\') out += '\\';
    if (c == '\n') { out += "\\n"; continue; }
    if (c == '\t') { out += "\\t"; continue; }
    if (c == '\r') { out += "\\r"; continue; }
    out += c;
  }
  out += q;
  return out;
}

std::string plain_text(const Json& v) {
  if (v.is_object()) {
    std::string out = "{";
    bool first = true;
    for (auto it = v.begin(); it != v.end(); ++it) {
      if (!first) out += ", ";
      first = false;
      out += quote_text(it.key()) + ": " + literal_form(it.value());
    }
    return out + "}";
  }
  if (v.is_array()) {
    std::string out = "[";
    bool first = true;
    for (const auto& e : v) {
      if (!first) out += ", ";
      first = false;
      out += literal_form(e);
    }
    return out + "]";
  }
  return to_text(v);
}

std::string to_text(const Json& v) {
  switch (v.type()) {
    case Json::value_t::null: return "None";
    case Json::value_t::boolean: return v.get<bool>() ? "True" : "False";
    case Json::value_t::number_integer: return std::to_string(v.get<long long>());
    case Json::value_t::number_unsigned: return std::to_string(v.get<unsigned long long>());
    case Json::value_t::number_float: return float_text(v.get<double>());
    case Json::value_t::string: return v.get<std::string>();
    default: return plain_text(v);
  }
}

std::string literal_form(const Json& v) {
  if (v.is_string()) return quote_text(v.get<std::string>());
  return to_text(v);
}

std::string shown_value(const Json& v) {
  if (v.is_null()) return "null";
  std::string form = literal_form(v);
  if (cp_len(form) > 60) form = cp_prefix(form, 57) + "...";
  const char* kind = v.is_string()    ? "a text "
                     : v.is_array()   ? "a list "
                     : v.is_object()  ? "a mapping "
                     : v.is_boolean() ? "a truth value "
                                      : "a number ";
  return kind + form;
}

std::string type_name(const Json& v) {
  switch (v.type()) {
    case Json::value_t::null: return "NoneType";
    case Json::value_t::boolean: return "bool";
    case Json::value_t::number_integer:
    case Json::value_t::number_unsigned: return "int";
    case Json::value_t::number_float: return "float";
    case Json::value_t::string: return "str";
    case Json::value_t::array: return "list";
    case Json::value_t::object: return "dict";
    default: return "object";
  }
}

static std::string strip(const std::string& s) {
  size_t b = s.find_first_not_of(" \t\n\r\f\v");
  if (b == std::string::npos) return "";
  size_t e = s.find_last_not_of(" \t\n\r\f\v");
  return s.substr(b, e - b + 1);
}

long long int_of(const Json& v) {
  if (v.is_number_unsigned()) {
    const unsigned long long u = v.get<unsigned long long>();
    if (u > (unsigned long long)std::numeric_limits<long long>::max())
      throw InputError("number out of range: " + to_text(v));
    return (long long)u;
  }
  if (v.is_number_integer()) return v.get<long long>();
  if (v.is_number_float()) {
    double d = v.get<double>();
    if (!std::isfinite(d)) throw InputError("cannot convert " + to_text(v) + " to an integer");
    return trunc_int(d);
  }
  if (v.is_string()) {
    std::string s = strip(v.get<std::string>());
    std::string digits;
    size_t i = 0;
    if (!s.empty() && (s[0] == '+' || s[0] == '-')) i = 1;
    for (size_t k = i; k < s.size(); ++k) {
      char c = s[k];
      if (c == '_' && k > i && k + 1 < s.size() && std::isdigit((unsigned char)s[k - 1]) &&
          std::isdigit((unsigned char)s[k + 1]))
        continue;
      digits += c;
    }
    bool ok = !digits.empty();
    for (char c : digits) ok = ok && std::isdigit((unsigned char)c);
    if (ok && digits.size() < 19) {
      long long n = std::stoll(digits);
      return (!s.empty() && s[0] == '-') ? -n : n;
    }
  }
  throw InputError("invalid integer value: " + literal_form(v) + " (" + type_name(v) + ")");
}

double float_of(const Json& v) {
  if (v.is_number()) return v.get<double>();
  if (v.is_string()) {
    std::string s = strip(v.get<std::string>());
    if (!s.empty()) {
      const char* b = s.data();
      const char* e = b + s.size();
      if (*b == '+') ++b;
      double d = 0;
      auto res = std::from_chars(b, e, d);
      if (res.ec == std::errc() && res.ptr == e) return d;
      std::string low;
      for (char c : s) low += (char)std::tolower((unsigned char)c);
      if (low == "inf" || low == "+inf" || low == "infinity") return INFINITY;
      if (low == "-inf" || low == "-infinity") return -INFINITY;
      if (low == "nan" || low == "+nan" || low == "-nan") return NAN;
    }
  }
  throw InputError("could not convert " + literal_form(v) + " to a floating-point number");
}

namespace {

// Every double strictly inside (-2^63, 2^63) converts to long long without overflow.
constexpr double kLongLongBound = 9223372036854775808.0;

long long checked_llong(double x) {
  if (!(x > -kLongLongBound && x < kLongLongBound)) throw InputError("number out of range: " + float_text(x));
  return (long long)x;
}

}  // namespace

long long half_even(double x) { return checked_llong(std::nearbyint(x)); }

long long trunc_int(double x) { return checked_llong(std::trunc(x)); }

long long floordiv(long long a, long long b) {
  if (b == 0) throw InputError("division by zero");
  if (b == -1) {
    if (a == std::numeric_limits<long long>::min()) throw InputError("number out of range: " + std::to_string(a));
    return -a;
  }
  long long q = a / b, r = a % b;
  if (r != 0 && ((r < 0) != (b < 0))) --q;
  return q;
}

int narrow_int(long long v) {
  if (v < std::numeric_limits<int>::min() || v > std::numeric_limits<int>::max())
    throw InputError("number out of range: " + std::to_string(v));
  return (int)v;
}

std::u32string utf8_decode(const std::string& s) {
  std::u32string out;
  size_t i = 0, n = s.size();
  while (i < n) {
    unsigned char c = s[i];
    char32_t cp;
    int len;
    if (c < 0x80) { cp = c; len = 1; }
    else if ((c >> 5) == 6) { cp = c & 0x1f; len = 2; }
    else if ((c >> 4) == 14) { cp = c & 0x0f; len = 3; }
    else if ((c >> 3) == 30) { cp = c & 0x07; len = 4; }
    else { cp = 0xfffd; len = 1; }
    if (i + len > n) { out += 0xfffd; break; }
    for (int k = 1; k < len; ++k) cp = (cp << 6) | (s[i + k] & 0x3f);
    out += cp;
    i += len;
  }
  return out;
}

std::string utf8_encode(const std::u32string& s) {
  std::string out;
  for (char32_t c : s) {
    if (c < 0x80) out += (char)c;
    else if (c < 0x800) { out += (char)(0xc0 | (c >> 6)); out += (char)(0x80 | (c & 0x3f)); }
    else if (c < 0x10000) {
      out += (char)(0xe0 | (c >> 12)); out += (char)(0x80 | ((c >> 6) & 0x3f));
      out += (char)(0x80 | (c & 0x3f));
    } else {
      out += (char)(0xf0 | (c >> 18)); out += (char)(0x80 | ((c >> 12) & 0x3f));
      out += (char)(0x80 | ((c >> 6) & 0x3f)); out += (char)(0x80 | (c & 0x3f));
    }
  }
  return out;
}

std::string title_case(const std::string& s) {
  std::u32string u = utf8_decode(s), out;
  bool prev_cased = false;
  for (char32_t c : u) {
    bool letter = u_isalpha((UChar32)c);
    if (letter) out += (char32_t)(prev_cased ? u_tolower((UChar32)c) : u_totitle((UChar32)c));
    else out += c;
    prev_cased = letter;
  }
  return utf8_encode(out);
}

size_t cp_len(const std::string& s) {
  size_t n = 0;
  for (unsigned char c : s)
    if ((c & 0xc0) != 0x80) ++n;
  return n;
}

std::string cp_prefix(const std::string& s, size_t n) {
  std::u32string u = utf8_decode(s);
  if (u.size() <= n) return s;
  return utf8_encode(u.substr(0, n));
}

std::string cp_suffix(const std::string& s, size_t n) {
  std::u32string u = utf8_decode(s);
  if (u.size() <= n) return s;
  return utf8_encode(u.substr(u.size() - n));
}

std::string pad_right(const std::string& s, size_t n) {
  size_t len = cp_len(s);
  return len >= n ? s : s + std::string(n - len, ' ');
}

std::string join(const std::vector<std::string>& parts, const std::string& sep) {
  std::string out;
  for (size_t i = 0; i < parts.size(); ++i) {
    if (i) out += sep;
    out += parts[i];
  }
  return out;
}

bool contains(const std::string& hay, const std::string& needle) {
  return hay.find(needle) != std::string::npos;
}

bool starts_with(const std::string& s, const std::string& prefix) {
  return s.compare(0, prefix.size(), prefix) == 0;
}

std::string dump_layout(const Json& doc) {
  return doc.dump(2, ' ', false, Json::error_handler_t::strict) + "\n";
}

std::string read_file(const std::string& path) {
  std::ifstream in(path, std::ios::binary);
  if (!in) throw InputError("cannot read " + path);
  // One read of the size the file has; then whatever a stream without a size, or a file that
  // grew meanwhile, still holds.
  std::string text;
  in.seekg(0, std::ios::end);
  const std::streamoff size = in.tellg();
  in.seekg(0, std::ios::beg);
  if (size > 0 && in) {
    text.resize(static_cast<size_t>(size));
    in.read(text.data(), size);
    text.resize(static_cast<size_t>(in.gcount()));
  }
  in.clear();
  std::ostringstream rest;
  rest << in.rdbuf();
  text += rest.str();
  return text;
}

void write_file_atomic(const std::string& path, const std::string& data) {
  std::string tmp = path + ".tmp." + std::to_string(::getpid());
  {
    std::ofstream out(tmp, std::ios::binary | std::ios::trunc);
    if (!out) throw std::runtime_error("cannot write " + path);
    out.write(data.data(), (std::streamsize)data.size());
    out.close();
    if (!out) {
      std::filesystem::remove(tmp);
      throw std::runtime_error("cannot write " + path);
    }
  }
  std::filesystem::rename(tmp, path);
}

}  // namespace ub
