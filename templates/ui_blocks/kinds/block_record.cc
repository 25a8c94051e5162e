#include "kinds/block_record.h"

#include "kinds/block_kind.h"

namespace ub {

bool has_type(const Json& decl, const char* type) {
  const Json& t = get(decl, "type");
  if (t.is_string()) return t == type;
  if (t.is_array())
    for (const Json& e : t)
      if (e == type) return true;
  return false;
}

namespace {

bool is_truth_type(const Json& type) {
  if (type.is_string()) return type == "boolean";
  if (!type.is_array() || type.empty()) return false;
  bool boolean = false;
  for (const Json& t : type) {
    if (t == "boolean") boolean = true;
    else if (t != "integer") return false;
  }
  return boolean;
}

const Json& null_json() {
  static const Json none;
  return none;
}

const Json* member(const Json& obj, std::string_view key) {
  if (!obj.is_object()) return nullptr;
  for (const auto& [k, v] : obj.get_ref<const Json::object_t&>())
    if (k == key) return &v;
  return nullptr;
}

// A declared value: the given one when it counts, else the default.
const Json* filled(const KeyDecl& d, const Json* given) {
  if (given && (d.truth || truthy(*given))) return given;
  return d.def;
}

const Json* default_of(const Entry& e, std::string_view key) {
  const Json* decl = e.keys ? member(*e.keys, key) : nullptr;
  return decl ? member(*decl, "default") : nullptr;
}

}  // namespace

KindKeys kind_keys(const Json& library_entry) {
  KindKeys keys;
  const Json& decls = get(library_entry, "keys");
  if (!decls.is_object()) return keys;
  for (const auto& [name, decl] : decls.get_ref<const Json::object_t&>()) {
    KeyDecl d;
    d.name = name;
    d.def = member(decl, "default");
    d.decl = &decl;
    d.truth = is_truth_type(get(decl, "type"));
    const Json* props = member(get(decl, "items"), "properties");
    if (props && props->is_object()) d.entry_keys = props;
    keys.push_back(d);
  }
  return keys;
}

BlockRecord read_record(const Json& raw, const BlockKind* kind, const KindKeys* keys) {
  BlockRecord b;
  b.kind = kind;
  b.raw = &raw;
  b.keys = keys;
  if (!keys) return b;
  b.values.reserve(keys->size());
  for (const KeyDecl& d : *keys) b.values.emplace_back(d.name, nullptr);
  // One pass over the block's members; the declared keys are few.
  std::vector<const Json*> given(keys->size(), nullptr);
  if (raw.is_object())
    for (const auto& [k, v] : raw.get_ref<const Json::object_t&>())
      for (size_t i = 0; i < keys->size(); ++i)
        if ((*keys)[i].name == k) {
          given[i] = &v;
          break;
        }
  for (size_t i = 0; i < keys->size(); ++i) b.values[i].second = filled((*keys)[i], given[i]);
  return b;
}

const Json& value(const BlockRecord& b, std::string_view key) {
  for (const auto& [k, v] : b.values)
    if (k == key) return v ? *v : null_json();
  // The library is what a type reads: a key it leaves out is a library that does not fit
  // this program. A type the library lacks has its keys read as given.
  if (b.keys)
    throw InputError(cat("block library: ", type_text(b), " does not declare the key \"", std::string(key),
                         "\" that its builder reads"));
  return given_value(b, key);
}

const Json& given_value(const BlockRecord& b, std::string_view key) {
  const Json* v = b.raw ? member(*b.raw, key) : nullptr;
  return v ? *v : null_json();
}

void set_value(BlockRecord& b, std::string_view key, const Json* v) {
  for (auto& [k, slot] : b.values)
    if (k == key) {
      slot = v;
      return;
    }
  b.values.emplace_back(key, v);
}

bool is_set(const BlockRecord& b, std::string_view key) { return truthy(value(b, key)); }

std::string text(const BlockRecord& b, std::string_view key) {
  const Json& v = value(b, key);
  return truthy(v) ? to_text(v) : std::string();
}

bool flag(const BlockRecord& b, std::string_view key) { return truthy(value(b, key)); }

long long integer(const BlockRecord& b, std::string_view key) {
  const Json& v = value(b, key);
  return truthy(v) ? int_of(v) : 0;
}

double number(const BlockRecord& b, std::string_view key) {
  const Json& v = value(b, key);
  return truthy(v) ? float_of(v) : 0.0;
}

const Json& list(const BlockRecord& b, std::string_view key) {
  static const Json empty = Json::array();
  const Json& v = value(b, key);
  if (!truthy(v)) return empty;
  if (!v.is_array()) throw KeyError(std::string(key), "expected a list, got " + shown_value(v));
  return v;
}

std::string caption_id(const BlockRecord& b) { return b.named ? b.name : std::to_string(b.seq); }

std::string type_text(const BlockRecord& b) {
  if (b.kind) return b.kind->type;
  return b.raw ? text_or(*b.raw, "type", "?") : "?";
}

std::vector<Entry> entries(const BlockRecord& b, std::string_view key, std::string_view plain_key) {
  const Json& items = list(b, key);
  const Json* keys = nullptr;
  if (b.keys)
    for (const KeyDecl& d : *b.keys)
      if (d.name == key) keys = d.entry_keys;
  std::vector<Entry> out;
  out.reserve(items.size());
  for (const Json& e : items) out.push_back(Entry{&e, plain_key, keys});
  return out;
}

const Json& given_value(const Entry& e, std::string_view key) {
  if (e.value->is_object()) {
    const Json* v = member(*e.value, key);
    return v ? *v : null_json();
  }
  return key == e.plain_key ? *e.value : null_json();
}

std::string text(const Entry& e, std::string_view key) {
  const Json& v = given_value(e, key);
  if (!e.value->is_object() && key == e.plain_key) {
    // A plain entry is its key's text, whatever it is.
    std::string s = to_text(v);
    if (!s.empty()) return s;
  } else if (truthy(v)) {
    return to_text(v);
  }
  const Json* def = default_of(e, key);
  return def && truthy(*def) ? to_text(*def) : std::string();
}

bool is_set(const Entry& e, std::string_view key) { return !text(e, key).empty(); }

std::optional<std::string> optional_text(const Entry& e, std::string_view key) {
  const Json& v = given_value(e, key);
  if (!v.is_null()) return to_text(v);
  if (const Json* def = default_of(e, key)) return to_text(*def);
  return std::nullopt;
}

}  // namespace ub
