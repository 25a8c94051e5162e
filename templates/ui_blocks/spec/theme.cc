#include "spec/theme.h"

#include <algorithm>
#include <cctype>
#include <cmath>
#include <filesystem>

#include "base/closest_name.h"
#include "spec/spec_text.h"

namespace ub {

namespace {


std::string joined(const std::string& path, const std::string& key) { return path.empty() ? key : path + "." + key; }

// A whole number written with a fraction (4.0) is kept as the integer the library writes, so
// that it reaches the layout as the library's value would; lists entry by entry.
Json whole_as_integer(const Json& v) {
  if (v.is_number_float() && v.get<double>() == std::floor(v.get<double>())) return (long long)v.get<double>();
  if (!v.is_array()) return v;
  Json out = Json::array();
  for (const Json& e : v) out.push_back(whole_as_integer(e));
  return out;
}

struct Layer {
  const std::string& file;
  const Json& spacers;  // the library's spacer table: what a spacer name may name

  [[noreturn]] void fail(const std::string& path, const std::string& what) const {
    throw InputError(file + ": " + (path.empty() ? "" : path + ": ") + what);
  }

  bool is_colour(const Json& v) const {
    if (!v.is_string()) return false;
    const std::string& s = v.get_ref<const std::string&>();
    if (s.size() != 7 && s.size() != 9) return false;
    if (s[0] != '#') return false;
    for (size_t i = 1; i < s.size(); ++i)
      if (!std::isxdigit((unsigned char)s[i])) return false;
    return true;
  }

  void check_number(const std::string& path, const Json& v, bool whole, int minimum) const {
    const char* kind = whole ? "a whole number" : "a number";
    if (!v.is_number()) fail(path, cat("expected ", kind, ", got ", shown_value(v)));
    const double d = v.get<double>();
    if (whole && d != std::floor(d)) fail(path, cat("expected ", kind, ", got ", shown_value(v)));
    const int maximum = whole ? kMaxWholeToken : kMaxNumberToken;
    if (d < minimum || d > maximum)
      fail(path, cat("expected ", kind, " from ", minimum, " to ", maximum, ", got ", to_text(v)));
  }

  void check_value(const std::string& path, const Json& lib, const Json& v) const {
    switch (token_form(path, lib)) {
      case TokenForm::Group:
        break;  // merged by the caller
      case TokenForm::Colour:
        if (!is_colour(v)) fail(path, "expected a colour \"#RRGGBB\" or \"#RRGGBBAA\", got " + shown_value(v));
        break;
      case TokenForm::Whole:
        check_number(path, v, true, token_minimum(path));
        break;
      case TokenForm::Number:
        check_number(path, v, false, token_minimum(path));
        break;
      case TokenForm::SpacerName: {
        std::vector<std::string> names;
        for (auto it = spacers.begin(); it != spacers.end(); ++it) names.push_back(it.key());
        if (!v.is_string() || std::find(names.begin(), names.end(), v.get<std::string>()) == names.end())
          fail(path, "expected the name of a spacer token (" + join(names, ", ") + "), got " + shown_value(v));
        break;
      }
      case TokenForm::Ladder:
        if (!v.is_array() || v.empty()) fail(path, "expected a non-empty list of font sizes, got " + shown_value(v));
        for (size_t i = 0; i < v.size(); ++i) check_number(cat(path, "[", i, "]"), v[i], true, 1);
        break;
    }
  }

  // Lays `over` into `into` (a group of the library's tokens) key by key.
  void merge(Json& into, const Json& over, const std::string& path) const {
    if (!over.is_object())
      fail(path, (path.empty() ? "expected a mapping of design tokens, got " : "expected a mapping of tokens, got ") +
                     shown_value(over));
    for (auto it = over.begin(); it != over.end(); ++it) {
      const std::string& key = it.key();
      if (path.empty() && key == "$schema") {
        if (!it.value().is_string()) fail(key, "expected a text, got " + shown_value(it.value()));
        continue;
      }
      const std::string at = joined(path, key);
      auto lib = into.find(key);
      if (lib == into.end()) {
        std::vector<std::string> known;
        for (auto k = into.begin(); k != into.end(); ++k) known.push_back(k.key());
        std::string what = "unknown token " + literal_form(Json(key));
        if (auto near = closest_name(key, known)) what += " (did you mean \"" + *near + "\"?)";
        else what += " (known" + (path.empty() ? std::string() : " in " + path) + ": " + join(known, ", ") + ")";
        fail(path, what);
      }
      if (token_form(at, *lib) == TokenForm::Group) {
        merge(*lib, it.value(), at);
        continue;
      }
      check_value(at, *lib, it.value());
      *lib = whole_as_integer(it.value());
    }
  }
};

}  // namespace

TokenForm token_form(const std::string& path, const Json& lib) {
  if (lib.is_object()) return TokenForm::Group;
  if (starts_with(path, "color.") && lib.is_string()) return TokenForm::Colour;
  if (lib.is_array()) return TokenForm::Ladder;
  if (lib.is_string()) return TokenForm::SpacerName;
  if (lib.is_number_integer() || lib.is_number_unsigned()) return TokenForm::Whole;
  if (lib.is_number_float()) return TokenForm::Number;
  throw InputError("_tokens.json: " + path + ": a token of no known form: " + shown_value(lib));
}

int token_minimum(const std::string& path) { return starts_with(path, "base_screen.") ? 1 : 0; }

Json lay_theme(const Json& library, const Json& theme, const std::string& file) {
  if (!library.is_object()) throw InputError("_tokens.json must hold a mapping");
  const Json& spacers = get(library, "spacer");
  Json out = library;
  Layer{file, spacers.is_object() ? spacers : Json::object()}.merge(out, theme, "");
  return out;
}

Json read_tokens_file(const std::string& path) {
  std::error_code ec;
  if (!std::filesystem::exists(path, ec)) throw InputError("tokens file not found: " + path);
  if (!std::filesystem::is_regular_file(path, ec)) throw InputError("tokens file is not a file: " + path);
  return parse_spec_text(read_file(path), path);
}

}  // namespace ub
