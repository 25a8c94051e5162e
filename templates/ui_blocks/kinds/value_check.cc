#include "kinds/value_check.h"

#include <cmath>
#include <cstdio>

#include "base/closest_name.h"
#include "base/forbidden_chars.h"
#include "kinds/block_limits.h"

namespace ub {

namespace {

// The declared types, as a set of the few the check reads.
struct Types {
  bool string = false, number = false, object = false, other = false;
};

Types types_of(const Json& decl) {
  Types t;
  const Json& ty = get(decl, "type");
  auto one = [&t](const Json& e) {
    if (e == "string") t.string = true;
    else if (e == "number") t.number = true;
    else if (e == "object") t.object = true;
    else t.other = true;
  };
  if (ty.is_array())
    for (const Json& e : ty) one(e);
  else if (!ty.is_null()) one(ty);
  return t;
}

// A flag: true or false, or the numbers 1 and 0.
bool is_flag_value(const Json& v) {
  if (v.is_boolean()) return true;
  return v.is_number() && (v.get<double>() == 0.0 || v.get<double>() == 1.0);
}

// A text shown on the screen (a number is turned into one): the engine's font lacks the
// forbidden characters. font_checked says otherwise for one key.
bool font_checked(const Json& decl) {
  const Json& f = get(decl, "font_checked");
  if (f.is_boolean()) return f.get<bool>();
  return has_type(decl, "string") && has_type(decl, "number") && !decl.contains("enum");
}

bool is_path_char(char c) { return c == '/' || c == '\\' || c == '\0'; }

// The check of one value against its declaration, at `path` ("page.blocks[2].items[1].text").
class Checker {
 public:
  explicit Checker(std::string type) : type_(std::move(type)) {}

  // A key of a block or record: a false value stands for its absence, except for a flag.
  void key(const Json& decl, const Json& v, const std::string& path) {
    if (!decl.is_object()) return;
    if (get(decl, "type") == "boolean") {
      if (!is_flag_value(v)) fail(path, "expected true or false, got " + shown_value(v));
      return;
    }
    if (!truthy(v)) return;
    value(decl, v, path);
  }

  // A value that is given (or an entry of a list, which has no absent form).
  void value(const Json& decl, const Json& v, const std::string& path) {
    const Types t = types_of(decl);
    // A number alone may be numeric text: the builders read it, as they read whole numbers.
    if (t.other || (t.number && !t.string && !t.object)) {
      // Lists: their entries; whole numbers, numbers and mixed forms are read by the builders.
      if (has_type(decl, "array") && v.is_array() && decl.contains("items")) {
        const Json& items = decl["items"];
        for (size_t i = 0; i < v.size(); ++i) entry(items, v[i], cat(path, "[", i, "]"));
      }
      return;
    }
    if (v.is_string()) {
      if (!t.string) fail(path, "expected " + wanted(t) + ", got " + shown_value(v));
      text(decl, v.get_ref<const std::string&>(), path);
      return;
    }
    if (v.is_number() && t.number) return;
    if (v.is_object() && t.object) {
      record(decl, v, path);
      return;
    }
    if (t.string || t.number || t.object) fail(path, "expected " + wanted(t) + ", got " + shown_value(v));
  }

 private:
  void entry(const Json& decl, const Json& v, const std::string& path) {
    if (!decl.is_object()) return;
    value(decl, v, path);
  }

  // A record of a list: its declared keys, read with defaults; no others but comments.
  void record(const Json& decl, const Json& v, const std::string& path) {
    const Json& props = get(decl, "properties");
    if (!props.is_object()) return;
    // Keys it does not declare are refused with the block's (unknown_keys).
    for (const auto& [k, x] : v.get_ref<const Json::object_t&>()) {
      auto d = props.find(k);
      if (d != props.end()) key(*d, x, path + "." + k);
    }
  }

  void text(const Json& decl, const std::string& s, const std::string& path) {
    if (truthy(get(decl, "icon_name"))) {
      for (char c : s)
        if (is_path_char(c)) fail_icon_path(s, path);
      return;
    }
    if (!font_checked(decl)) return;
    const std::u32string bad = forbidden_in(s);
    if (!bad.empty()) fail_forbidden(path, s, bad[0]);
  }

  static std::string wanted(const Types& t) {
    if (t.string && t.number) return t.object ? "a text, a number or a mapping" : "a text or a number";
    if (t.string) return t.object ? "a text or a mapping" : "a text";
    if (t.number) return "a number";
    return "a mapping";
  }

  [[noreturn]] void fail(const std::string& path, const std::string& what) const {
    throw InputError(input_at(path, type_, what));
  }

  std::string type_;
};

}  // namespace

std::string unknown_key_text(const std::string& key, const std::vector<std::string>& known) {
  const auto near = closest_name(key, known);
  return cat("unknown key ", Json(key).dump(), near ? cat(" (did you mean ", Json(*near).dump(), "?)") : "");
}

void fail_icon_path(const std::string& name, const std::string& path) {
  std::string shown;
  for (char c : name) shown += c == '\0' ? std::string("\\x00") : std::string(1, c);
  stop("[X] 图片名不能含路径分隔符：" + shown + "（图标语义名请用库里的名字）" +
                   (path.empty() ? std::string() : "\n    " + path));
}

std::string code_point(char32_t c) {
  char buf[16];
  std::snprintf(buf, sizeof buf, "U+%04X", (unsigned)c);
  return buf;
}

void fail_forbidden(const std::string& path, const std::string& s, char32_t c) {
  stop("[X] 文本含引擎字库黑名单字符 " + utf8_encode(std::u32string(1, c)) + " " + code_point(c) +
                   "（check_all 会 FAIL）——请改用 ASCII 等价写法（如 … → ...；℃ → 摄氏度）：\n    " + path + ": " +
                   literal_form(Json(s)));
}

void check_shown_text(const Json& v, const std::string& path) {
  Checker("").key({{"type", {"string", "number"}}}, v, path);
}

void check_values(const BlockRecord& b) {
  if (!b.keys || !b.raw || !b.raw->is_object()) return;
  Checker c(type_text(b));
  const Json& decls = *b.raw;
  for (const KeyDecl& d : *b.keys) {
    const Json& v = given_value(b, d.name);
    if (!d.decl) continue;
    const bool given = decls.contains(d.name);
    if (!given) continue;
    c.key(*d.decl, v, b.path + "." + std::string(d.name));
    // An index names one entry of its list.
    const Json& list_key = get(*d.decl, "index_of");
    if (list_key.is_string() && truthy(v) && (v.is_number() || v.is_string())) {
      long long i;
      try {
        i = int_of(v);
      } catch (const InputError&) {
        continue;  // not a whole number: the builder's reading refuses it
      }
      const Json& lst = given_value(b, list_key.get_ref<const std::string&>());
      const long long n = lst.is_array() ? (long long)lst.size() : 0;
      // Index 0, the default, always stands.
      if (i < 0 || (i > 0 && i >= n))
        fail_at(b, std::string(d.name),
                cat(literal_form(v), " names no entry of ", list_key.get<std::string>(), ": ",
                    n == 0 ? std::string("it has none") : cat("0 to ", n - 1)));
    }
  }
}

}  // namespace ub
