// Control records written as text: each record's fields are gathered as light values
// (defaults, then the payload merged in, then the required keys), then written once.
#include "controls/serialize.h"

#include <algorithm>
#include <array>
#include <iostream>
#include <map>
#include <stdexcept>
#include <string_view>

#include "base/forbidden_chars.h"
#include "controls/control_types.h"
#include "controls/json_text.h"
#include "controls/layout_stream.h"

namespace ub {

using namespace std::string_view_literals;

namespace {

// A field's value, small as records hold a few dozen of them.
struct Value {
  enum Kind : unsigned char { Int, Bool, Str, Position, Colors, Thumb, EmptyObject, EmptyArray, Ref } kind = Int;
  union {
    long long n[2] = {0, 0};  // Int, Bool: n[0]; Colors: color0, color1
    struct {
      const char* data;
      size_t size;
    } text;
    int box[4];  // Position: left, top, width, height
    const Json* ref;
  };
  std::string_view s() const { return {text.data, text.size}; }
  Pos pos() const { return Pos{box[0], box[1], box[2], box[3]}; }
};

struct Field {
  std::string_view key;
  Value v;
  bool plain_key = true;  // a literal of this writer or a payload's compact key: nothing to escape
};

Value num(long long a) {
  Value v;
  v.n[0] = a;
  return v;
}
Value flag(bool a) {
  Value v = num(a);
  v.kind = Value::Bool;
  return v;
}
Value str(std::string_view s) {
  Value v;
  v.kind = Value::Str;
  v.text = {s.data(), s.size()};
  return v;
}
Value position(Pos p) {
  Value v;
  v.kind = Value::Position;
  v.box[0] = p.left, v.box[1] = p.top, v.box[2] = p.width, v.box[3] = p.height;
  return v;
}
Value colors(long long c0, long long c1 = -1) {
  Value v;
  v.kind = Value::Colors;
  v.n[0] = c0;
  v.n[1] = c1;
  return v;
}
Value kind(Value::Kind k) {
  Value v;
  v.kind = k;
  return v;
}
Value ref(const Json& j) {
  Value v;
  v.kind = Value::Ref;
  v.ref = &j;
  return v;
}

Value value_of(const PayloadField& p) {
  switch (p.kind) {
    case PayloadField::Int: return num(p.a);
    case PayloadField::Bool: return flag(p.a != 0);
    case PayloadField::Str: return str(p.s);
    case PayloadField::Colors: return colors(p.a, p.b);
    case PayloadField::Other: break;
  }
  return ref(*p.json);
}

void write_pos(std::string& out, const Pos& p, int level) {
  const std::pair<const char*, int> f[] = {{"left", p.left}, {"top", p.top}, {"width", p.width}, {"height", p.height}};
  out += "{\n"sv;
  for (int i = 0; i < 4; ++i) {
    append_indent(out, level + 1);
    out += '"';
    out += f[i].first;
    out += "\": "sv;
    append_json_int(out, f[i].second);
    out += i < 3 ? ",\n"sv : "\n"sv;
  }
  append_indent(out, level);
  out += '}';
}

void write_value(std::string& out, const Value& v, int level) {
  switch (v.kind) {
    case Value::Int: append_json_int(out, v.n[0]); break;
    case Value::Bool: out += v.n[0] ? "true"sv : "false"sv; break;
    case Value::Str: append_json_string(out, v.s()); break;
    case Value::Position: write_pos(out, v.pos(), level); break;
    case Value::Colors: {
      const long long c[] = {v.n[0], v.n[1], -1, -1, -1};
      out += "{\n"sv;
      for (int i = 0; i < 5; ++i) {
        append_indent(out, level + 1);
        out += "\"color"sv;
        out += char('0' + i);
        out += "\": "sv;
        append_json_int(out, c[i]);
        out += i < 4 ? ",\n"sv : "\n"sv;
      }
      append_indent(out, level);
      out += '}';
      break;
    }
    case Value::Thumb:
      out += "{\n"sv;
      append_indent(out, level + 1);
      out += "\"size\": {\n"sv;
      append_indent(out, level + 2);
      out += "\"width\": 0,\n"sv;
      append_indent(out, level + 2);
      out += "\"height\": 0\n"sv;
      append_indent(out, level + 1);
      out += "},\n"sv;
      append_indent(out, level + 1);
      out += "\"normalPic\": \"\",\n"sv;
      append_indent(out, level + 1);
      out += "\"pressedPic\": \"\"\n"sv;
      append_indent(out, level);
      out += '}';
      break;
    case Value::EmptyObject: out += "{}"sv; break;
    case Value::EmptyArray: out += "[]"sv; break;
    case Value::Ref: append_json(out, *v.ref, level); break;
  }
}

Value value_of(const DefaultValue& d) {
  switch (d.kind) {
    case DefaultValue::Int: return num(d.a);
    case DefaultValue::Bool: return flag(d.a != 0);
    case DefaultValue::Str: return str(d.s);
    case DefaultValue::Position: return position(Pos{});
    case DefaultValue::Colors: return colors(d.a, d.b);
    case DefaultValue::Thumb: return kind(Value::Thumb);
    case DefaultValue::EmptyObject: return kind(Value::EmptyObject);
    case DefaultValue::EmptyArray: return kind(Value::EmptyArray);
  }
  return num(0);
}

// The type's default fields; 0 for a type without defaults (its payload alone is written).
int defaults(const Node& node, const Payload& payload, std::vector<Field>& f, int n) {
  const ControlType* t = control_type(node.type);
  if (!t) {
    if (node.type == "separator") throw std::logic_error("separator 不应直接序列化");
    return 0;
  }
  const int id = t->ids.base + n;
  f.push_back({"id", num(id)});
  f.push_back({"caption", str(node.caption)});
  f.push_back({"position", position(node.pos)});
  for (const DefaultField& d : t->fields) f.push_back({d.key, value_of(d.v)});
  // Fields that depend on the payload.
  if (t->ids.base == kTextviewIds.base) {
    const PayloadField tp = payload.find("textPosition");
    if (tp.kind != PayloadField::Other || tp.json) f.push_back({"textPosition", value_of(tp)});
    else if (payload.find("backgroundPic").truthy()) f.push_back({"textPosition", position(node.pos)});
  } else if (t->ids.base == kButtonIds.base) {
    if (payload.find("backgroundPic").truthy() || payload.find("picTab").truthy()) {
      f.push_back({"iconPosition", position(node.pos)});
      f.push_back({"textPosition", position(node.pos)});
    }
  }
  return id;
}

// Records hold a few dozen fields and every required key is looked up: the length and the
// first and last letters settle most comparisons without a call to memcmp.
Field* find(std::vector<Field>& f, std::string_view key) {
  if (key.empty()) {
    for (Field& x : f)
      if (x.key.empty()) return &x;
    return nullptr;
  }
  const char first = key.front(), last = key.back();
  for (Field& x : f)
    if (x.key.size() == key.size() && x.key.front() == first && x.key.back() == last && x.key == key) return &x;
  return nullptr;
}

// Valid UTF-8 without a forbidden character. Most texts are ASCII and pass at once.
bool plain_text_piece(std::string_view s) {
  if (std::all_of(s.begin(), s.end(), [](char c) { return (unsigned char)c < 0x80; })) return true;
  if (!valid_utf8(s)) return false;
  static const std::vector<std::string> encoded = [] {
    std::vector<std::string> v;
    for (char32_t ch : kForbiddenChars) v.push_back(utf8_encode(std::u32string(1, ch)));
    return v;
  }();
  for (const std::string& e : encoded)
    if (s.find(e) != std::string_view::npos) return false;
  return true;
}

// Texts of a JSON value (keys too) are valid UTF-8 free of forbidden characters.
bool plain_value(const Json& v) {
  switch (v.type()) {
    case Json::value_t::string: return plain_text_piece(v.get_ref<const std::string&>());
    case Json::value_t::object:
      for (auto it = v.begin(); it != v.end(); ++it)
        if (!plain_text_piece(it.key()) || !plain_value(it.value())) return false;
      return true;
    case Json::value_t::array:
      for (const Json& e : v)
        if (!plain_value(e)) return false;
      return true;
    default: return true;
  }
}

bool plain_payload(const Payload& p) {
  bool plain = true;
  p.each([&](const PayloadField& f) {
    plain = plain && plain_text_piece(f.key) &&
            (f.kind == PayloadField::Str ? plain_text_piece(f.s) : f.kind != PayloadField::Other || plain_value(*f.json));
  });
  return plain;
}

// The node's own texts (type, caption, payload) are plain.
bool plain_node(const Node& n) {
  return plain_text_piece(n.type) && plain_text_piece(n.caption) && plain_payload(n.payload);
}

// Writes records into `text` and, when given, their index into `controls`. Without
// `write` only the index is made (with every refusal the text would meet); with `put`
// the text is handed over in pieces as it grows.
class Writer {
 public:
  Writer(const EmitLayer& layer, std::string& text, std::vector<ControlRef>* controls, bool write,
         const TextSink* put = nullptr, bool* plain = nullptr)
      : layer_(layer), t_(text), controls_(controls), write_(write), put_(put), plain_(plain) {}

  // The record of `node` as the value of its key at nesting level `level`.
  void record(const Node& node, int level) {
    if (put_ && t_.size() >= kPiece) {
      (*put_)(t_);
      t_.clear();
    }
    if (plain_ && *plain_) *plain_ = plain_node(node);
    TypeState& ts = type_state(node.type);
    const int n = ++ts.count;
    std::string& t = t_;
    if (write_) {
      append_indent(t, level);
      t += '"';
      t += node.type;
      t += "__"sv;
      append_json_int(t, n);
      t += "\": "sv;
    }

    const Payload& payload = node.payload;
    const bool is_textview = node.type == "textview";
    auto check_key = [&](std::string_view k) {
      if (k == "id" || k == "caption" || k.find("__") != std::string_view::npos)
        throw std::logic_error("控件载荷不可改写 id、caption 或带 __ 的键：" + node.caption + " 的 " + std::string(k));
    };
    if (!write_ && ts.index_only) {  // the index alone: the fields would meet no refusal but the key's
      ControlRef rec{&node, n, ts.id_base ? ts.id_base + n : 0, nullptr};
      if (rec.id != 0) rec.caption = &node.caption;
      payload.each([&](const PayloadField& p) {
        if (!(is_textview && p.key == "textPosition")) check_key(p.key);
      });
      if (controls_) controls_->push_back(rec);
      for (const NodePtr& child : node.children) record(*child, level + 1);
      return;
    }

    std::vector<Field>& f = fields_;
    f.clear();
    ControlRef rec{&node, n, defaults(node, payload, f, n), nullptr};
    if (rec.id != 0) rec.caption = &node.caption;
    payload.each([&](const PayloadField& p) {
      const std::string_view k = p.key;
      if (is_textview && k == "textPosition") return;
      check_key(k);
      if (Field* x = find(f, k)) x->v = value_of(p);
      else f.push_back({k, value_of(p), p.kind != PayloadField::Other});
    });
    fill_required(node.type, ts, f);
    // Once a type's required keys all have values, its later records can only be refused
    // for their payload keys, and its ids run on from one base.
    if (layer_.ok && !ts.index_only) {
      ts.index_only = std::none_of(ts.open_keys.begin(), ts.open_keys.end(),
                                   [](const auto& k) { return k.second->is_null(); });
      ts.id_base = rec.id != 0 ? rec.id - n : 0;
    }
    if (controls_) controls_->push_back(rec);
    if (!write_) {
      for (const NodePtr& child : node.children) record(*child, level + 1);
      return;
    }

    if (f.empty() && node.children.empty()) {
      t += "{}"sv;
      return;
    }
    t += "{\n"sv;
    bool first = true;
    for (const Field& x : f) {
      if (!first) t += ",\n"sv;
      first = false;
      append_indent(t, level + 1);
      if (x.plain_key) {
        t += '"';
        t += x.key;
        t += "\": "sv;
      } else {
        append_json_string(t, x.key);
        t += ": "sv;
      }
      write_value(t, x.v, level + 1);
    }
    for (const NodePtr& child : node.children) {
      if (!first) t += ",\n"sv;
      first = false;
      record(*child, level + 1);  // uses fields_ afresh: this record is written already
    }
    t += '\n';
    append_indent(t, level);
    t += '}';
  }

 private:
  // Per control type: the records counted so far and the required keys of the table.
  // Per control type: the records counted so far, and the required keys of the table that
  // the type's defaults do not always hold (the others are present in every record).
  struct TypeState {
    int count = 0;
    bool planned = false;
    bool index_only = false;  // set when an index record needs no fields (see record)
    long long id_base = 0;
    std::vector<std::pair<std::string_view, const Json*>> open_keys;
  };
  // The known types by their names' length and a letter, without a lookup by text.
  TypeState& type_state(const std::string& type) {
    static constexpr std::string_view kKnown[] = {"textview", "button",   "window",     "scrollwindow", "edittext",
                                                  "seekbar",  "checkbox", "radiogroup", "listview"};
    static_assert(std::size(kKnown) == kKnownTypes);
    for (size_t i = 0; i < kKnownTypes; ++i)
      if (kKnown[i].size() == type.size() && kKnown[i][0] == type[0] && kKnown[i].back() == type.back() &&
          kKnown[i] == type)
        return known_[i];
    return types_[type];
  }

  void plan(const std::string& type, TypeState& ts) {
    ts.planned = true;
    const Json& req = get(layer_.table, type);
    if (!req.is_object()) return;
    std::vector<Field> always;
    Node bare;
    bare.type = type;
    defaults(bare, Payload(), always, 0);  // conditional defaults only add to these
    for (auto it = req.begin(); it != req.end(); ++it)
      if (!find(always, it.key())) ts.open_keys.emplace_back(it.key(), &it.value());
  }

  void fill_required(const std::string& type, TypeState& ts, std::vector<Field>& f) {
    if (!layer_.ok) {
      if (controls_)  // once per record: the index pass comes first
        std::cerr << "[warn] 未走共享发射层（ui_emit 不可用：" << layer_.reason << "）→ 必填键可能缺\n";
      return;
    }
    if (!ts.planned) plan(type, ts);
    Json unfilled;  // null until a key is missing: most records need no array
    for (const auto& [key, value] : ts.open_keys) {
      if (find(f, key)) continue;
      if (value->is_null()) unfilled.push_back(std::string(key));
      else f.push_back({key, ref(*value), false});
    }
    if (!unfilled.is_null())
      throw std::logic_error("发射层默认表缺 " + type + " 的必填键取值：" + plain_text(unfilled));
  }

  static constexpr size_t kPiece = 1 << 20;
  const EmitLayer& layer_;
  std::string& t_;
  std::vector<ControlRef>* controls_;
  bool write_;
  const TextSink* put_;
  bool* plain_;
  static constexpr size_t kKnownTypes = 9;
  std::array<TypeState, kKnownTypes> known_;
  std::map<std::string, TypeState> types_;
  std::vector<Field> fields_;
};

size_t count_nodes(const NodeList& nodes) {
  size_t n = nodes.size();
  for (const NodePtr& x : nodes) n += count_nodes(x->children);
  return n;
}

// The root record's head, up to its first child.
void write_head(std::string& t, const LayoutRoot& root) {
  t += "{\n  \"id\": 0,\n  \"position\": "sv;
  write_pos(t, Pos{0, 0, root.width, root.height}, 1);
  t += ",\n  \"resolution\": {\n    \"width\": "sv;
  append_json_int(t, root.width);
  t += ",\n    \"height\": "sv;
  append_json_int(t, root.height);
  t += "\n  },\n  \"backgroundColor\": "sv;
  append_json_int(t, root.background);
  t += ",\n  \"touchable\": false,\n  \"topmost\": false"sv;
}

void write_records(Writer& w, std::string& t, const NodeList& nodes) {
  for (const NodePtr& n : nodes) {
    t += ",\n"sv;
    w.record(*n, 1);
  }
  t += "\n}\n"sv;
}

}  // namespace

LayoutText write_layout(const LayoutRoot& root, const NodeList& nodes, const EmitLayer& required_keys) {
  LayoutText out = index_layout(nodes, required_keys);
  std::string& t = out.text;
  // Room for the usual record size up front: the text is not copied while it grows, and
  // pages of the room that stay unused are never touched.
  t.reserve(4096 + out.controls.size() * 2048);
  write_head(t, root);
  Writer w(required_keys, t, nullptr, true);
  write_records(w, t, nodes);
  return out;
}

LayoutText index_layout(const NodeList& nodes, const EmitLayer& required_keys, bool* plain) {
  LayoutText out;
  out.nodes = nodes;
  out.top_level = nodes.size();
  out.controls.reserve(count_nodes(nodes));
  std::string unused;
  if (plain) *plain = required_keys.ok && plain_value(required_keys.table);
  Writer w(required_keys, unused, &out.controls, false, nullptr, plain);
  for (const NodePtr& n : nodes) w.record(*n, 1);
  return out;
}

void stream_layout(const LayoutRoot& root, const NodeList& nodes, const EmitLayer& required_keys,
                   const TextSink& put) {
  std::string t;
  write_head(t, root);
  Writer w(required_keys, t, nullptr, true, &put);
  write_records(w, t, nodes);
  put(t);
}

}  // namespace ub
