// Control records written as text: each record's fields are gathered as light values
// (defaults, then the payload merged in, then the required keys), then written once.
#include "controls/serialize.h"

#include <algorithm>
#include <array>
#include <cstdint>
#include <cstring>
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

constexpr size_t kPiece = 1 << 20;  // the text handed to a sink at a time, about

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
  // A fixed field of the type (its default i, or its required key number i after the
  // defaults) still holding that value: its text is the same in every record at a level.
  int fixed = -1;
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

// The text of position records and colour tables around their numbers, at a level: every
// record holds a position, and most a colour table or two.
constexpr int kPartLevels = 32;
struct LevelParts {
  std::string pos[5];     // before left, top, width and height, and the closing line
  std::string colors[3];  // before color0 and color1, and color2..color4 (all -1) with the close
};
const LevelParts* level_parts(int level) {
  static const auto parts = [] {
    std::array<LevelParts, kPartLevels> p;
    for (int l = 0; l < kPartLevels; ++l) {
      const std::string in = ",\n" + std::string(2 * (l + 1), ' ') + "\"", end = "\n" + std::string(2 * l, ' ') + "}";
      p[l].pos[0] = "{" + in.substr(1) + "left\": ";
      p[l].pos[1] = in + "top\": ";
      p[l].pos[2] = in + "width\": ";
      p[l].pos[3] = in + "height\": ";
      p[l].pos[4] = end;
      p[l].colors[0] = "{" + in.substr(1) + "color0\": ";
      p[l].colors[1] = in + "color1\": ";
      p[l].colors[2] = in + "color2\": -1" + in + "color3\": -1" + in + "color4\": -1" + end;
    }
    return p;
  }();
  return level >= 0 && level < kPartLevels ? &parts[level] : nullptr;
}

void write_pos(TextOut& out, const Pos& p, int level) {
  if (const LevelParts* t = level_parts(level)) {
    out.put(t->pos[0]);
    out.integer(p.left);
    out.put(t->pos[1]);
    out.integer(p.top);
    out.put(t->pos[2]);
    out.integer(p.width);
    out.put(t->pos[3]);
    out.integer(p.height);
    out.put(t->pos[4]);
    return;
  }
  const std::pair<const char*, int> f[] = {{"left", p.left}, {"top", p.top}, {"width", p.width}, {"height", p.height}};
  out.put("{\n"sv);
  for (int i = 0; i < 4; ++i) {
    append_indent(out, level + 1);
    out.put('"');
    out.put(f[i].first);
    out.put("\": "sv);
    append_json_int(out, f[i].second);
    out.put(i < 3 ? ",\n"sv : "\n"sv);
  }
  append_indent(out, level);
  out.put('}');
}

void write_value(TextOut& out, const Value& v, int level) {
  switch (v.kind) {
    case Value::Int: append_json_int(out, v.n[0]); break;
    case Value::Bool: out.put(v.n[0] ? "true"sv : "false"sv); break;
    case Value::Str: append_json_string(out, v.s()); break;
    case Value::Position: write_pos(out, v.pos(), level); break;
    case Value::Colors: {
      if (const LevelParts* t = level_parts(level)) {
        out.put(t->colors[0]);
        out.integer(v.n[0]);
        out.put(t->colors[1]);
        out.integer(v.n[1]);
        out.put(t->colors[2]);
        break;
      }
      const long long c[] = {v.n[0], v.n[1], -1, -1, -1};
      out.put("{\n"sv);
      for (int i = 0; i < 5; ++i) {
        append_indent(out, level + 1);
        out.put("\"color"sv);
        out.put(char('0' + i));
        out.put("\": "sv);
        append_json_int(out, c[i]);
        out.put(i < 4 ? ",\n"sv : "\n"sv);
      }
      append_indent(out, level);
      out.put('}');
      break;
    }
    case Value::Thumb:
      out.put("{\n"sv);
      append_indent(out, level + 1);
      out.put("\"size\": {\n"sv);
      append_indent(out, level + 2);
      out.put("\"width\": 0,\n"sv);
      append_indent(out, level + 2);
      out.put("\"height\": 0\n"sv);
      append_indent(out, level + 1);
      out.put("},\n"sv);
      append_indent(out, level + 1);
      out.put("\"normalPic\": \"\",\n"sv);
      append_indent(out, level + 1);
      out.put("\"pressedPic\": \"\"\n"sv);
      append_indent(out, level);
      out.put('}');
      break;
    case Value::EmptyObject: out.put("{}"sv); break;
    case Value::EmptyArray: out.put("[]"sv); break;
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

// The record's fields before the payload's: id, caption, position and the defaults of
// type `t` (null for a type whose payload alone is written). Returns the id, or 0.
constexpr size_t kHeadFields = 3;
std::vector<Field> head_fields(const ControlType* t) {
  std::vector<Field> f;
  if (!t) return f;
  f.push_back({"id", num(0)});
  f.push_back({"caption", str("")});
  f.push_back({"position", position(Pos{})});
  for (size_t i = 0; i < t->fields.size(); ++i) f.push_back({t->fields[i].key, value_of(t->fields[i].v), true, (int)i});
  return f;
}

// `head` is head_fields(t), made once a type.
int defaults(const Node& node, const ControlType* t, const std::vector<Field>& head, const Payload& payload,
             std::vector<Field>& f, int n) {
  if (!t) {
    if (node.type == "separator") throw std::logic_error("separator 不应直接序列化");
    return 0;
  }
  const int id = t->ids.base + n;
  f.assign(head.begin(), head.end());
  f[0].v = num(id);
  f[1].v = str(node.caption);
  f[2].v = position(node.pos);
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
  uint64_t high = 0;  // the bytes' high bits, eight at a time
  size_t i = 0;
  for (; i + 8 <= s.size(); i += 8) {
    uint64_t w;
    std::memcpy(&w, s.data() + i, 8);
    high |= w;
  }
  for (; i < s.size(); ++i) high |= (unsigned char)s[i];
  if (!(high & 0x8080808080808080ULL)) return true;
  if (!valid_utf8(s)) return false;
  // Valid: each character decoded once and looked up among the forbidden ones.
  for (size_t i = 0; i < s.size();) {
    const unsigned b = (unsigned char)s[i];
    const size_t n = b < 0x80 ? 1 : b < 0xE0 ? 2 : b < 0xF0 ? 3 : 4;
    char32_t ch = n == 1 ? b : b & (0x7F >> n);
    for (size_t k = 1; k < n; ++k) ch = (ch << 6) | ((unsigned char)s[i + k] & 0x3F);
    if (n > 1 && kForbiddenChars.find(ch) != std::u32string_view::npos) return false;
    i += n;
  }
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
  Writer(const EmitLayer& layer, TextOut& text, std::vector<ControlRef>* controls, bool write,
         const TextSink* put = nullptr, bool* plain = nullptr)
      : layer_(layer), t_(text), controls_(controls), write_(write), put_(put), plain_(plain) {}

  // The record of `node` as the value of its key at nesting level `level`.
  void record(const Node& node, int level) {
    if (put_ && t_.size() >= kPiece) {
      (*put_)(t_.view());
      t_.clear();
    }
    if (plain_ && *plain_) *plain_ = plain_node(node);
    TypeState& ts = type_state(node.type);
    if (!ts.typed) type_fields(node.type, ts);
    const int n = ++ts.count;
    TextOut& t = t_;
    if (write_) {
      append_indent(t, level);
      t.put('"');
      t.put(node.type);
      t.put("__"sv);
      append_json_int(t, n);
      t.put("\": "sv);
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
        if (p.compact < 0 && !(is_textview && p.key == "textPosition")) check_key(p.key);
      });
      if (controls_) controls_->push_back(rec);
      for (const NodePtr& child : node.children) record(*child, level + 1);
      return;
    }

    std::vector<Field>& f = fields_;
    f.clear();
    ControlRef rec{&node, n, defaults(node, ts.type, ts.head, payload, f, n), nullptr};
    if (rec.id != 0) rec.caption = &node.caption;
    payload.each([&](const PayloadField& p) {
      if (p.compact >= 0) {  // a compact key: one of the writer's own, never refused
        if (const int at = ts.at_compact[p.compact]; at >= 0) {
          f[at].v = value_of(p);
          f[at].fixed = -1;
        } else {
          f.push_back({p.key, value_of(p)});
        }
        return;
      }
      const std::string_view k = p.key;
      if (is_textview && k == "textPosition") return;
      check_key(k);
      if (Field* x = find(f, k)) {
        x->v = value_of(p);
        x->fixed = -1;
      } else f.push_back({k, value_of(p), p.kind != PayloadField::Other});
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
      t.put("{}"sv);
      return;
    }
    t.put("{\n"sv);
    const FixedText* fixed = nullptr;
    for (size_t i = 0; i < f.size();) {
      if (f[i].fixed >= 0 && i > 0) {  // a run of fixed fields in a row: copied as one
        if (!fixed) fixed = &fixed_text(ts, level + 1);
        size_t j = i + 1;
        while (j < f.size() && f[j].fixed == f[j - 1].fixed + 1) ++j;
        const size_t from = fixed->start[f[i].fixed], to = fixed->start[f[j - 1].fixed + 1];
        t.put(std::string_view(fixed->text).substr(from, to - from));
        i = j;
        continue;
      }
      if (i > 0) t.put(",\n"sv);
      write_field(t, f[i], level + 1);
      ++i;
    }
    const bool first = f.empty();
    for (size_t c = 0; c < node.children.size(); ++c) {
      if (!first || c > 0) t.put(",\n"sv);
      record(*node.children[c], level + 1);  // uses fields_ afresh: this record is written already
    }
    t.put('\n');
    append_indent(t, level);
    t.put('}');
  }

 private:
  // The fixed fields of a type at one level, each with the ",\n" before it: field i is
  // text[start[i], start[i + 1]).
  struct FixedText {
    std::string text;
    std::vector<size_t> start;
  };
  // Per control type: the records counted so far, and the required keys of the table that
  // the type's defaults do not always hold (the others are present in every record).
  struct TypeState {
    int count = 0;
    bool planned = false;
    bool index_only = false;  // set when an index record needs no fields (see record)
    long long id_base = 0;
    std::vector<std::pair<std::string_view, const Json*>> open_keys;
    bool typed = false;
    const ControlType* type = nullptr;
    std::vector<Field> head;  // the fields every record of the type starts from
    // Where each compact payload key's default stands among a record's fields; -1: none.
    std::array<signed char, std::size(kCompactKeys)> at_compact{};
    int defaults = 0;  // the number of the type's default fields
    std::vector<FixedText> fixed;  // by level
  };

  static void write_field(TextOut& t, const Field& x, int level) {
    append_indent(t, level);
    if (x.plain_key) {
      t.put('"');
      t.put(x.key);
      t.put("\": "sv);
    } else {
      append_json_string(t, x.key);
      t.put(": "sv);
    }
    write_value(t, x.v, level);
  }

  // The fixed fields' text of a type at `level`, made on first use.
  const FixedText& fixed_text(TypeState& ts, int level) {
    if (ts.fixed.size() <= (size_t)level) ts.fixed.resize(level + 1);
    FixedText& out = ts.fixed[level];
    if (!out.start.empty()) return out;
    TextOut text(1024);
    auto add = [&](const Field& x) {
      out.start.push_back(text.size());
      text.put(",\n"sv);
      write_field(text, x, level);
    };
    if (ts.type)
      for (const DefaultField& d : ts.type->fields) add({d.key, value_of(d.v)});
    for (const auto& [key, value] : ts.open_keys) add({key, ref(*value), false});
    out.start.push_back(text.size());
    out.text = text.take();
    return out;
  }
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

  static void type_fields(const std::string& name, TypeState& ts) {
    ts.typed = true;
    ts.type = control_type(name);
    ts.head = head_fields(ts.type);
    ts.at_compact.fill(-1);
    if (!ts.type) return;
    ts.defaults = (int)ts.type->fields.size();
    for (size_t k = 0; k < std::size(kCompactKeys); ++k)
      for (size_t i = 0; i < ts.type->fields.size(); ++i)
        if (ts.type->fields[i].key == kCompactKeys[k]) ts.at_compact[k] = (signed char)(kHeadFields + i);
  }

  void plan(const std::string& type, TypeState& ts) {
    ts.planned = true;
    const Json& req = get(layer_.table, type);
    if (!req.is_object()) return;
    std::vector<Field> always;
    Node bare;
    bare.type = type;
    defaults(bare, ts.type, ts.head, Payload(), always, 0);  // conditional defaults only add to these
    for (auto it = req.begin(); it != req.end(); ++it)
      if (!find(always, it.key())) ts.open_keys.emplace_back(it.key(), &it.value());
  }

  void fill_required(const std::string& type, TypeState& ts, std::vector<Field>& f) {
    if (!layer_.ok) return;  // the records keep their own fields; the driver reports the layer once
    if (!ts.planned) plan(type, ts);
    Json unfilled;  // null until a key is missing: most records need no array
    for (size_t i = 0; i < ts.open_keys.size(); ++i) {
      const auto& [key, value] = ts.open_keys[i];
      if (find(f, key)) continue;
      if (value->is_null()) unfilled.push_back(std::string(key));
      else f.push_back({key, ref(*value), false, ts.defaults + (int)i});
    }
    if (!unfilled.is_null())
      throw std::logic_error("发射层默认表缺 " + type + " 的必填键取值：" + plain_text(unfilled));
  }

  const EmitLayer& layer_;
  TextOut& t_;
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
void write_head(TextOut& t, const LayoutRoot& root) {
  t.put("{\n  \"id\": 0,\n  \"position\": "sv);
  write_pos(t, Pos{0, 0, root.width, root.height}, 1);
  t.put(",\n  \"resolution\": {\n    \"width\": "sv);
  append_json_int(t, root.width);
  t.put(",\n    \"height\": "sv);
  append_json_int(t, root.height);
  t.put("\n  },\n  \"backgroundColor\": "sv);
  append_json_int(t, root.background);
  t.put(",\n  \"touchable\": false,\n  \"topmost\": false"sv);
}

void write_records(Writer& w, TextOut& t, const NodeList& nodes) {
  for (const NodePtr& n : nodes) {
    t.put(",\n"sv);
    w.record(*n, 1);
  }
  t.put("\n}\n"sv);
}

}  // namespace

LayoutText write_layout(const LayoutRoot& root, const NodeList& nodes, const EmitLayer& required_keys) {
  LayoutText out = index_layout(nodes, required_keys);
  std::string& t = out.text;
  // Room for the usual record size up front: the text is not copied while it grows, and
  // pages of the room that stay unused are never touched.
  t.reserve(4096 + out.controls.size() * 2048);
  stream_layout(root, nodes, required_keys, [&t](std::string_view piece) { t.append(piece); });
  return out;
}

LayoutText index_layout(const NodeList& nodes, const EmitLayer& required_keys, bool* plain) {
  LayoutText out;
  out.nodes = nodes;
  out.top_level = nodes.size();
  out.controls.reserve(count_nodes(nodes));
  TextOut unused(0);
  if (plain) *plain = required_keys.ok && plain_value(required_keys.table);
  Writer w(required_keys, unused, &out.controls, false, nullptr, plain);
  for (const NodePtr& n : nodes) w.record(*n, 1);
  return out;
}

void stream_layout(const LayoutRoot& root, const NodeList& nodes, const EmitLayer& required_keys,
                   const TextSink& put) {
  TextOut t(kPiece + kPiece / 4);
  write_head(t, root);
  Writer w(required_keys, t, nullptr, true, &put);
  write_records(w, t, nodes);
  put(t.view());
}

}  // namespace ub
