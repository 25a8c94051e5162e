// Value conventions shared by every builder: truth of spec values, text forms of
// values, integer readings and the rounding rules. One helper each, used everywhere.
#pragma once

#include <cstdint>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include <nlohmann/json.hpp>

using Json = nlohmann::ordered_json;

namespace detail {
inline void put_members(Json::object_t&) {}
template <class V, class... Rest>
void put_members(Json::object_t& o, std::string_view key, V&& value, Rest&&... rest) {
  o.emplace_back(std::string(key), Json(std::forward<V>(value)));
  put_members(o, std::forward<Rest>(rest)...);
}
}  // namespace detail

// A mapping of the given keys and values (key, value, key, value...; the keys distinct),
// in that order. Unlike Json{{k, v}, ...} it neither copies the values nor searches the
// mapping for each key: pages make hundreds of thousands of small records.
template <class... KeysAndValues>
Json object_of(KeysAndValues&&... kv) {
  static_assert(sizeof...(KeysAndValues) % 2 == 0, "a value for every key");
  Json j = Json::object();
  auto& o = j.get_ref<Json::object_t&>();
  o.reserve(sizeof...(KeysAndValues) / 2);
  detail::put_members(o, std::forward<KeysAndValues>(kv)...);
  return j;
}

namespace ub {

// A user-level stop: the message (starting with "[X]") goes to stderr alone, exit 1.
struct StopError : std::runtime_error {
  using std::runtime_error::runtime_error;
};

// Any other failure of bad input (wrong type, unreadable number...): exit 1 with a diagnostic.
struct InputError : std::runtime_error {
  using std::runtime_error::runtime_error;
};

// Bad input in one key of a block found while building it: the page flow puts the
// block's place in front of the key.
struct KeyError : InputError {
  KeyError(const std::string& key, const std::string& problem)
      : InputError(key + ": " + problem), key(key), problem(problem) {}
  std::string key, problem;
};

[[noreturn]] void stop(const std::string& msg);

// False values: null, false, 0, 0.0, "", [], {}.
bool truthy(const Json& v);

// obj[key], or a shared null when obj is no mapping or lacks the key.
const Json& get(const Json& obj, std::string_view key);
bool has(const Json& obj, std::string_view key);

// "obj.get(key) or def": the value when it is true, else def.
Json value_or(const Json& obj, std::string_view key, const Json& def);
// Text of a value read with a default: to_text(value) when true, else def.
std::string text_or(const Json& obj, std::string_view key, const std::string& def = "");
// Truth value with its own default: absent key gives def, a present key its truth.
bool flag(const Json& obj, std::string_view key, bool def);
// The integer of a value read with a default: a false value gives def.
long long int_or(const Json& obj, std::string_view key, long long def);

// Value "turned into text": ints in decimal, floats in shortest round-trip form
// (2.0, 0.1, 1e+16), True/False, None, texts as they are, containers in plain form.
std::string to_text(const Json& v);
// Shortest round-trip form of a double that always shows a fraction or exponent.
std::string float_text(double d);
// Plain text form of mappings and sequences: {'h1': 28} and ['a', 'b'].
std::string plain_text(const Json& v);
// Literal form (%r): texts in single quotes, everything else as to_text.
std::string literal_form(const Json& v);
// Name of the value's type: dict, list, str, int, float, bool, NoneType.
std::string type_name(const Json& v);
// The value for an error message: its kind in words and its literal form, cut after
// 60 code points ("a list ['a', '/b']", "a number 1.5", "null").
std::string shown_value(const Json& v);

// "The integer of": numbers truncated towards zero, decimal texts (blanks allowed)
// read; anything else (bool, null, "1.5", containers) and numbers beyond the range of
// long long throw InputError.
long long int_of(const Json& v);
// Converted to a floating-point number: numbers as they are, numeric texts read.
double float_of(const Json& v);

// Rounding rules. A value that is not finite or lies beyond the range of long long,
// and a division by zero, throw InputError instead of converting.
long long half_even(double x);        // halves to the even neighbour
long long trunc_int(double x);        // towards zero
long long floordiv(long long a, long long b);  // towards minus infinity
// The int of a long long; a value outside the range of int throws InputError.
int narrow_int(long long v);

// Title case of a page name: each run of letters starts upper, continues lower.
std::string title_case(const std::string& s);

// Unicode code points of UTF-8 text.
std::u32string utf8_decode(const std::string& s);
std::string utf8_encode(const std::u32string& s);
size_t cp_len(const std::string& s);
std::string cp_prefix(const std::string& s, size_t n);
std::string cp_suffix(const std::string& s, size_t n);
// Pad on the right with blanks to n code points; never cuts.
std::string pad_right(const std::string& s, size_t n);

std::string join(const std::vector<std::string>& parts, const std::string& sep);
bool contains(const std::string& hay, const std::string& needle);
bool starts_with(const std::string& s, const std::string& prefix);

// Concatenate texts and numbers: ints in decimal, doubles by float_text.
inline void cat_one(std::string& out, const std::string& s) { out += s; }
inline void cat_one(std::string& out, const char* s) { out += s; }
inline void cat_one(std::string& out, char c) { out += c; }
inline void cat_one(std::string& out, double d) { out += float_text(d); }
inline void cat_one(std::string& out, const Json& v) { out += to_text(v); }
template <class T>
  requires std::is_integral_v<T>
inline void cat_one(std::string& out, T v) {
  out += std::to_string(v);
}
template <class... A>
std::string cat(const A&... a) {
  std::string out;
  (cat_one(out, a), ...);
  return out;
}

// The layout file text: two-space indent, keys in order, non-ASCII literal, final LF.
std::string dump_layout(const Json& doc);

// Read a whole file / write a file atomically (temporary file, then rename).
std::string read_file(const std::string& path);
void write_file_atomic(const std::string& path, const std::string& data);

}  // namespace ub
