#include "json2img/layout_reader.h"

#include <fcntl.h>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

#include <simdjson.h>

#include <algorithm>
#include <cerrno>
#include <cmath>
#include <cstring>
#include <deque>
#include <fstream>

#include "base/forbidden_chars.h"
#include "base/values.h"

namespace layout {

namespace {

namespace od = simdjson::ondemand;
using od::json_type;

// Nesting beyond kMaxJsonDepth, found where it starts.
struct TooDeep {
  const char* at;
};
// A document that is no mapping, so no layout.
struct NotObject {};

// The keys any record of the layout may hold that a reader looks at.
enum class Key : uint8_t {
  kOther, kId, kCaption, kPosition, kIconPosition, kTextPosition, kVisible, kTouchable, kText, kHintText,
  kPasswordChar, kBackgroundPic, kProgressPic, kSecondaryProgressPic, kPicTab, kColorTab, kBgColorTab,
  kBackgroundColor, kHintTextColor, kFontSize, kAlignment, kMax, kDefProgress, kRows, kRowSpacing, kBold,
  kChecked, kIsPassword, kThumb, kItem, kSubItem, kRadiobuttons, kResolution, kLeft, kTop, kWidth, kHeight,
  kPic0, kPic1, kPic2, kPic3, kPic4, kColor0, kColor2, kNormalPic, kPressedPic, kSize,
};

struct KeyName {
  std::string_view name;
  Key key;
};
const KeyName kKeys[] = {
    {"id", Key::kId}, {"caption", Key::kCaption}, {"position", Key::kPosition},
    {"iconPosition", Key::kIconPosition}, {"textPosition", Key::kTextPosition}, {"visible", Key::kVisible},
    {"touchable", Key::kTouchable}, {"text", Key::kText}, {"hintText", Key::kHintText},
    {"passwordChar", Key::kPasswordChar}, {"backgroundPic", Key::kBackgroundPic},
    {"progressPic", Key::kProgressPic}, {"secondaryProgressPic", Key::kSecondaryProgressPic},
    {"picTab", Key::kPicTab}, {"colorTab", Key::kColorTab}, {"bgColorTab", Key::kBgColorTab},
    {"backgroundColor", Key::kBackgroundColor}, {"hintTextColor", Key::kHintTextColor},
    {"fontSize", Key::kFontSize}, {"alignment", Key::kAlignment}, {"max", Key::kMax},
    {"defProgress", Key::kDefProgress}, {"rows", Key::kRows}, {"rowSpacing", Key::kRowSpacing},
    {"bold", Key::kBold}, {"checked", Key::kChecked}, {"isPassword", Key::kIsPassword}, {"thumb", Key::kThumb},
    {"item", Key::kItem}, {"subItem", Key::kSubItem}, {"radiobuttons", Key::kRadiobuttons},
    {"resolution", Key::kResolution}, {"left", Key::kLeft}, {"top", Key::kTop}, {"width", Key::kWidth},
    {"height", Key::kHeight}, {"pic0", Key::kPic0}, {"pic1", Key::kPic1}, {"pic2", Key::kPic2},
    {"pic3", Key::kPic3}, {"pic4", Key::kPic4}, {"color0", Key::kColor0}, {"color2", Key::kColor2},
    {"normalPic", Key::kNormalPic}, {"pressedPic", Key::kPressedPic}, {"size", Key::kSize},
};

// The known keys in a small table indexed by a digest of a name's length and three of its
// letters, so that a key is compared with at most a few names.
struct KeyTable {
  static constexpr size_t kSlots = 512;
  std::vector<KeyName> slots[kSlots];
  static size_t slot(std::string_view n) {
    if (n.empty()) return 0;
    const auto c = [&](size_t i) { return (size_t)(unsigned char)n[i]; };
    return (n.size() * 31 + c(0) * 7 + c(n.size() - 1) * 13 + c(n.size() / 2) * 3) % kSlots;
  }
  KeyTable() {
    for (const auto& k : kKeys) slots[slot(k.name)].push_back(k);
  }
  Key find(std::string_view name) const {
    for (const auto& k : slots[slot(name)])
      if (k.name.size() == name.size() && std::memcmp(k.name.data(), name.data(), name.size()) == 0) return k.key;
    return Key::kOther;
  }
};
const KeyTable kKeyTable;
const KeyTable& key_table() { return kKeyTable; }

// The three text keys of the character scan, in the order it reports them.
int text_slot(Key k) {
  return k == Key::kText ? 0 : k == Key::kHintText ? 1 : k == Key::kPasswordChar ? 2 : -1;
}
const char* const kTextKeyNames[] = {"text", "hintText", "passwordChar"};

uint64_t mix(uint64_t h, uint64_t v) { return (h ^ v) * 0x100000001b3ULL; }
uint64_t mix(uint64_t h, std::string_view s) {
  for (unsigned char c : s) h = (h ^ c) * 0x100000001b3ULL;
  return mix(h, s.size());
}

// A value shown in a message, as the JSON library writes it, long texts cut.
std::string shown(const Json& v) {
  std::string s = v.dump();
  if (s.size() > 60) s = s.substr(0, 57) + "...";
  return s;
}

// A number as read: the library's integer kinds, or a double for the rest.
struct Number {
  enum Kind { kSigned, kUnsigned, kDouble } kind;
  long long i = 0;
  unsigned long long u = 0;
  double d = 0;
  Json json() const { return kind == kSigned ? Json(i) : kind == kUnsigned ? Json(u) : Json(d); }
};

Number read_number(od::value& v) {
  od::number n;
  auto err = v.get_number().get(n);
  if (err == simdjson::NUMBER_ERROR) {
    // An integer beyond 64 bits: read as a double, as the JSON library does.
    double d = v.get_double();
    return {Number::kDouble, 0, 0, d};
  }
  if (err) throw simdjson::simdjson_error(err);
  switch (n.get_number_type()) {
    case od::number_type::signed_integer:
      return {Number::kSigned, n.get_int64(), 0, 0};
    case od::number_type::unsigned_integer:
      return {Number::kUnsigned, 0, n.get_uint64(), 0};
    default:
      return {Number::kDouble, 0, 0, n.get_double()};
  }
}

// A window of the text that the parser has gone past may be given back to the system:
// the iteration only moves forward, and everything a reader keeps is copied.
class Buffer {
 public:
  explicit Buffer(size_t size) : size_(size) {
    const size_t page = (size_t)::sysconf(_SC_PAGESIZE);
    cap_ = (size + simdjson::SIMDJSON_PADDING + page - 1) / page * page;
    void* p = ::mmap(nullptr, cap_, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_POPULATE, -1, 0);
    if (p == MAP_FAILED) throw LayoutError("cannot hold a layout of " + std::to_string(size) + " bytes");
    data_ = static_cast<char*>(p);
  }
  ~Buffer() { ::munmap(data_, cap_); }
  Buffer(const Buffer&) = delete;
  Buffer& operator=(const Buffer&) = delete;

  char* data() { return data_; }
  size_t size() const { return size_; }
  size_t capacity() const { return cap_; }

  // Gives back the whole pages below `at`, less a margin, once there are enough of them.
  void release_before(const char* at) {
    constexpr size_t kMargin = 1 << 20, kStep = 8 << 20;
    if (at < data_ || at > data_ + size_) return;
    const size_t page = (size_t)::sysconf(_SC_PAGESIZE);
    const size_t done = (size_t)(at - data_);
    if (done < released_ + kMargin + kStep) return;
    const size_t upto = (done - kMargin) / page * page;
    if (::madvise(data_ + released_, upto - released_, MADV_DONTNEED) == 0) released_ = upto;
  }

 private:
  char* data_ = nullptr;
  size_t size_ = 0, cap_ = 0, released_ = 0;
};

class Reader {
 public:
  Reader(Layout& lay, const ReadOptions& o, Buffer* buffer) : lay_(lay), findings_(o.text_findings), buffer_(buffer) {}

  // Walks the document; throws the parser's error, TooDeep, or LayoutError for a
  // document that is no mapping (after the whole text was found valid).
  void attach(od::document& doc) { doc_ = &doc; }
  void attach_none() { doc_ = nullptr; }

  // Walks a document that is a mapping; throws the parser's error, TooDeep, or NotObject
  // for any other document (which is then read by the JSON library alone).
  void read(od::document& doc) {
    if (doc.type().value() != json_type::object) throw NotObject{};
    read_root(doc.get_object().value());
    const char* rest = nullptr;  // a token after the document
    if (!doc.current_location().get(rest)) throw simdjson::simdjson_error(simdjson::TRAILING_CONTENT);
  }

  // After a walk that stopped at text the parser could not take: the checks of what was
  // read up to there, as far as they can tell, so that a fault found earlier in reading
  // order comes first.
  void finish_partial() {
    if (!resolution_.is_object() && !root_position_.is_object()) {
      lay_.W = lay_.H = 1;
    } else {
      finish_root();
    }
    for (auto& c : lay_.controls)
      if (c.end == 0) {  // a record still open where the walk stopped
        c.end = (int)lay_.controls.size();
        c.type = control_type(c.key, std::nullopt);
      }
    place_controls(lay_, positions_);
  }

  // After a successful walk: the boxes and the checks of every control.
  void finish() {
    finish_root();
    place_controls(lay_, positions_);
    std::vector<Box>().swap(positions_);
    std::stable_sort(pending_.begin(), pending_.end(),
                     [](const PendingFinding& a, const PendingFinding& b) { return a.order < b.order; });
    for (auto& f : pending_) lay_.text_findings.push_back(std::move(f.finding));
    pending_.clear();
  }

 private:
  void finish_root() {
    const Box& src = resolution_.is_object() ? resolution_ : root_position_;
    if (!src.is_object()) throw LayoutError("the layout has no resolution");
    lay_.W = (int)lay_.number(src.width, 0, "resolution");
    lay_.H = (int)lay_.number(src.height, 0, "resolution");
    if (lay_.W <= 0 || lay_.H <= 0 || lay_.W > 8192 || lay_.H > 8192)
      throw LayoutError("the layout's resolution " + std::to_string(lay_.W) + "x" + std::to_string(lay_.H) +
                        " is not usable");
  }

  // One mapping of the document while it is read, for the character scan.
  struct Scope {
    uint64_t seq = 0;
    size_t path_len = 0;
    std::string caption;
    bool pending[3] = {false, false, false};
    std::string text[3], chars[3];
  };
  struct PendingFinding {
    uint64_t order;  // the mapping's place in document order, then the key's
    TextFinding finding;
  };

  // ---- iteration helpers -------------------------------------------------------------

  void enter() {
    if (++depth_ > kMaxJsonDepth) {
      const char* where = nullptr;
      if (doc_ && doc_->current_location().get(where)) where = nullptr;
      throw TooDeep{where};
    }
  }

  // The key of a field: its text as written, unescaped only when it holds an escape.
  std::string_view key_of(od::field& f) {
    const char* raw = f.key().raw();
    const char* q = raw;
    bool escaped = false;
    while (*q != '"') {
      if (*q == '\\') {
        escaped = true;
        ++q;
      }
      ++q;
    }
    if (!escaped) return {raw, (size_t)(q - raw)};
    return f.unescaped_key().value();
  }

  // Calls on(key, name, value, text) for each field of a mapping; text is set when the
  // field is one of the character scan's keys (or the caption) and holds a text, which
  // has then been read already.
  template <class On>
  void each_field(od::object obj, On&& on) {
    enter();
    Scope* sc = open_scope();
    for (auto fr : obj) {
      od::field f;
      if (auto err = std::move(fr).get(f)) throw simdjson::simdjson_error(err);
      const std::string_view name = key_of(f);
      const Key k = key_table().find(name);
      od::value v = f.value();
      if (k == Key::kCaption || text_slot(k) >= 0) {
        if (v.type().value() == json_type::string) {
          const std::string_view s = v.get_string().value();
          if (sc) note(*sc, k, &s);
          on(k, name, v, &s);
          continue;
        }
        if (sc) note(*sc, k, nullptr);
      }
      if (!findings_) {
        on(k, name, v, nullptr);
        continue;
      }
      const size_t len = path_.size();
      if (!path_.empty()) path_ += '.';
      path_ += name;
      on(k, name, v, nullptr);
      path_.resize(len);
    }
    close_scope(sc);
    --depth_;
  }

  template <class On>
  void each_element(od::array arr, On&& on) {
    enter();
    size_t i = 0;
    for (auto er : arr) {
      od::value v = er.value();
      const size_t len = path_.size();
      if (findings_) path_ += "[" + std::to_string(i) + "]";
      on(v);
      path_.resize(len);
      ++i;
    }
    --depth_;
  }

  Scope* open_scope() {
    if (!findings_) return nullptr;
    if (scopes_.size() <= open_) scopes_.emplace_back();
    Scope& sc = scopes_[open_++];
    sc.seq = seq_++;
    sc.path_len = path_.size();
    sc.caption.clear();
    for (bool& p : sc.pending) p = false;
    return &sc;
  }

  void close_scope(Scope* sc) {
    if (!sc) return;
    for (int slot = 0; slot < 3; ++slot) {
      if (!sc->pending[slot]) continue;
      std::string what = path_.substr(0, sc->path_len) + "「" + sc->caption + "」." + kTextKeyNames[slot] + " = 「" +
                         sc->text[slot] + "」";
      pending_.push_back({sc->seq * 4 + (uint64_t)slot, {std::move(what), sc->chars[slot]}});
    }
    --open_;
  }

  // The last value of a key counts, as in a document where a later key replaces an earlier one.
  void note(Scope& sc, Key k, const std::string_view* s) {
    if (k == Key::kCaption) {
      sc.caption = s ? std::string(*s) : std::string();
      return;
    }
    const int slot = text_slot(k);
    sc.pending[slot] = false;
    if (!s) return;
    // Every character outside the engine's font lies above ASCII.
    if (std::none_of(s->begin(), s->end(), [](char c) { return (unsigned char)c >= 0x80; })) return;
    const std::u32string found = ub::forbidden_in(std::string(*s));
    if (found.empty()) return;
    sc.pending[slot] = true;
    sc.text[slot] = *s;
    sc.chars[slot] = ub::utf8_encode(found);
  }

  // ---- values --------------------------------------------------------------------------

  // Validates a value nobody reads; folds it into *hash when given.
  void skim(od::value& v, uint64_t* hash = nullptr) {
    switch (v.type().value()) {
      case json_type::object:
        each_field(v.get_object().value(), [&](Key, std::string_view name, od::value& x, const std::string_view* s) {
          if (hash) *hash = mix(*hash, name);
          if (s) {
            if (hash) *hash = mix(*hash, *s);
          } else {
            skim(x, hash);
          }
        });
        if (hash) *hash = mix(*hash, 'o');
        break;
      case json_type::array:
        each_element(v.get_array().value(), [&](od::value& x) { skim(x, hash); });
        if (hash) *hash = mix(*hash, 'a');
        break;
      case json_type::string: {
        const std::string_view s = v.get_string().value();
        if (hash) *hash = mix(*hash, s);
        break;
      }
      case json_type::boolean: {
        const bool b = v.get_bool().value();
        if (hash) *hash = mix(*hash, b ? 't' : 'f');
        break;
      }
      case json_type::null:
        if (!v.is_null().value()) throw simdjson::simdjson_error(simdjson::N_ATOM_ERROR);
        if (hash) *hash = mix(*hash, 'n');
        break;
      default: {
        const Number n = read_number(v);
        double d = n.kind == Number::kSigned ? (double)n.i : n.kind == Number::kUnsigned ? (double)n.u : n.d;
        if (d == 0) d = 0;  // -0.0 equals 0
        uint64_t bits;
        std::memcpy(&bits, &d, sizeof bits);
        if (hash) *hash = mix(*hash, bits);
      }
    }
  }

  std::string_view keep(std::string_view s) { return lay_.keep(s); }

  // A text field: the text when it is one, else "" (and the value validated).
  std::string_view text_of(od::value& v, const std::string_view* s) {
    if (s) return keep(*s);
    if (v.type().value() == json_type::string) return keep(v.get_string().value());
    skim(v);
    return {};
  }

  Num problem(std::string text) {
    lay_.problems.push_back(std::move(text));
    return {(int32_t)(lay_.problems.size() - 1), Num::kBad};
  }

  // An integer field: usable when a number within kMaxInt (a fraction is cut).
  Num num_of(od::value& v, std::string_view key, uint64_t* hash = nullptr) {
    const auto k = [&] { return std::string(key); };
    switch (v.type().value()) {
      case json_type::null:
        if (!v.is_null().value()) throw simdjson::simdjson_error(simdjson::N_ATOM_ERROR);
        if (hash) *hash = mix(*hash, 'n');
        return {0, Num::kNull};
      case json_type::number: {
        const Number n = read_number(v);
        Num out;
        if (n.kind == Number::kSigned && n.i >= -kMaxInt && n.i <= kMaxInt) out = {(int32_t)n.i, Num::kInt};
        else if (n.kind == Number::kUnsigned && n.u <= (unsigned long long)kMaxInt) out = {(int32_t)n.u, Num::kInt};
        else if (n.kind == Number::kDouble && std::isfinite(n.d) && std::fabs(n.d) <= (double)kMaxInt)
          out = {(int32_t)std::trunc(n.d), Num::kInt};
        else out = problem(k() + " is out of range (" + n.json().dump() + ")");
        if (hash) {
          double d = n.kind == Number::kSigned ? (double)n.i : n.kind == Number::kUnsigned ? (double)n.u : n.d;
          if (d == 0) d = 0;
          uint64_t bits;
          std::memcpy(&bits, &d, sizeof bits);
          *hash = mix(*hash, bits);
        }
        return out;
      }
      case json_type::string: {
        const std::string_view s = v.get_string().value();
        if (hash) *hash = mix(*hash, s);
        return problem(k() + " is not a number (" + shown(Json(std::string(s))) + ")");
      }
      case json_type::boolean: {
        const bool b = v.get_bool().value();
        if (hash) *hash = mix(*hash, b ? 't' : 'f');
        return problem(k() + " is not a number (" + (b ? "true" : "false") + ")");
      }
      default: {
        // Structured values are named by type only: they may be large or deeply nested.
        const bool object = v.type().value() == json_type::object;
        skim(v, hash);
        return problem(k() + " is not a number (" + (object ? "a mapping" : "a list") + ")");
      }
    }
  }

  Color color_of(od::value& v) {
    if (v.type().value() != json_type::number) {
      skim(v);
      return {};
    }
    const Number n = read_number(v);
    long long c;
    if (n.kind == Number::kDouble) {
      if (!(std::fabs(n.d) < 9e18)) return {};
      c = (long long)n.d;
    } else {
      c = n.kind == Number::kSigned ? n.i : (long long)n.u;
    }
    if (c == -1) return {};
    return {(uint32_t)((unsigned long long)c & 0xFFFFFFFFULL), true};
  }

  // A truth value: nullopt when the value is none.
  std::optional<bool> truth_of(od::value& v) {
    if (v.type().value() != json_type::boolean) {
      skim(v);
      return std::nullopt;
    }
    return v.get_bool().value();
  }

  // A position mapping; *shape gets a digest of all its members, so that two positions
  // can be compared as written.
  Box box_of(od::value& v, uint64_t* shape = nullptr) {
    Box b;
    uint64_t h = 0xcbf29ce484222325ULL;
    switch (v.type().value()) {
      case json_type::object: {
        b.kind = Box::kObject;
        size_t members = 0;
        each_field(v.get_object().value(), [&](Key k, std::string_view name, od::value& x, const std::string_view* s) {
          ++members;
          h = mix(h, name);
          switch (k) {
            case Key::kLeft: b.left = num_of(x, name, &h); break;
            case Key::kTop: b.top = num_of(x, name, &h); break;
            case Key::kWidth: b.width = num_of(x, name, &h); break;
            case Key::kHeight: b.height = num_of(x, name, &h); break;
            default:
              if (s) h = mix(h, *s);
              else skim(x, &h);
          }
        });
        h = mix(h, members);
        break;
      }
      case json_type::null:
        b.kind = Box::kNull;
        skim(v, &h);
        break;
      default:
        b.kind = Box::kOther;
        skim(v, &h);
    }
    if (shape) *shape = h;
    return b;
  }

  // picTab, colorTab, bgColorTab: the entries read from a mapping; anything else has none.
  template <class On>
  void table(od::value& v, On&& on) {
    if (v.type().value() != json_type::object) {
      skim(v);
      return;
    }
    each_field(v.get_object().value(), [&](Key k, std::string_view, od::value& x, const std::string_view* s) {
      if (!on(k, x, s)) {
        if (!s) skim(x);
      }
    });
  }

  void pic_table(od::value& v, std::string_view* pics) {
    for (int i = 0; i < 5; ++i) pics[i] = {};
    table(v, [&](Key k, od::value& x, const std::string_view* s) {
      const int i = (int)k - (int)Key::kPic0;
      if (i < 0 || i > 4) return false;
      pics[i] = text_of(x, s);
      return true;
    });
  }

  void color_table(od::value& v, Color* color0, Color* color2) {
    if (color0) *color0 = {};
    if (color2) *color2 = {};
    table(v, [&](Key k, od::value& x, const std::string_view*) {
      Color* to = k == Key::kColor0 ? color0 : k == Key::kColor2 ? color2 : nullptr;
      if (!to) return false;
      *to = color_of(x);
      return true;
    });
  }

  // A list item, subitem or radio button.
  Element element_of(od::value& v, bool list_item, Extra* extra) {
    Element e;
    if (v.type().value() != json_type::object) {
      skim(v);
      return e;
    }
    e.is_object = true;
    each_field(v.get_object().value(), [&](Key k, std::string_view, od::value& x, const std::string_view* s) {
      switch (k) {
        case Key::kCaption: e.caption = text_of(x, s); break;
        case Key::kText: e.text = text_of(x, s); break;
        case Key::kBackgroundPic: e.background_pic = text_of(x, s); break;
        case Key::kPicTab: pic_table(x, e.pics); break;
        case Key::kPosition: e.position = box_of(x); break;
        case Key::kIconPosition: e.icon_position = box_of(x); break;
        case Key::kTextPosition: e.text_position = box_of(x); break;
        case Key::kBackgroundColor: e.background = color_of(x); break;
        case Key::kBgColorTab: color_table(x, &e.ground_tab, nullptr); break;
        case Key::kColorTab: color_table(x, &e.text_color, &e.checked_color); break;
        case Key::kFontSize: e.font_size = num_of(x, "fontSize"); break;
        case Key::kAlignment: e.alignment = num_of(x, "alignment"); break;
        case Key::kBold: e.bold = truth_of(x).value_or(false); break;
        case Key::kChecked: e.checked = truth_of(x).value_or(false); break;
        case Key::kVisible: e.hidden = !truth_of(x).value_or(true); break;
        case Key::kSubItem:
          if (list_item && x.type().value() == json_type::array) {
            std::vector<Element> subs;
            each_element(x.get_array().value(), [&](od::value& y) { subs.push_back(element_of(y, false, nullptr)); });
            extra->sub_begin = (int)lay_.elements.size();
            for (auto& sub : subs) lay_.elements.push_back(std::move(sub));
            extra->sub_end = (int)lay_.elements.size();
            extra->has_subs = true;
          } else {
            if (list_item) extra->has_subs = false;
            if (!s) skim(x);
          }
          break;
        default:
          if (!s) skim(x);
      }
    });
    return e;
  }

  // ---- records -----------------------------------------------------------------------

  static bool control_key(std::string_view name, od::value& v) {
    return name.find("__") != std::string_view::npos && v.type().value() == json_type::object;
  }

  void read_root(od::object root) {
    each_field(root, [&](Key k, std::string_view name, od::value& v, const std::string_view* s) {
      if (s) return;
      if (control_key(name, v)) {
        read_control(v, name, 0, -1);
        return;
      }
      switch (k) {
        case Key::kResolution: resolution_ = box_of(v); break;
        case Key::kPosition: root_position_ = box_of(v); break;
        case Key::kBackgroundColor: lay_.ground = color_of(v).rgba(); break;
        default: skim(v);
      }
    });
  }

  // One control record: its fields, and its children in place, depth first.
  void read_control(od::value& v, std::string_view key, int depth, int parent) {
    if (depth > kMaxDepth) {  // the layout is refused at the control above: only validated
      skim(v);
      return;
    }
    const int me = (int)lay_.controls.size();
    {
      Control& place = lay_.controls.emplace_back();  // its place in pre-order; completed (end set) when the record closes
      place.key = std::string(key);
      place.depth = depth;
      place.parent = parent;
    }
    positions_.emplace_back();
    Control c;
    c.key = std::string(key);
    c.depth = depth;
    c.parent = parent;
    Extra x;
    bool has_extra = false;
    Box position;
    uint64_t pos_shape = 0, icon_shape = 0, text_shape = 0;
    Box icon, text;
    std::optional<long long> id;
    auto extra = [&]() -> Extra& {
      has_extra = true;
      return x;
    };
    each_field(v.get_object().value(), [&](Key k, std::string_view name, od::value& f, const std::string_view* s) {
      if (!s && control_key(name, f)) {
        read_control(f, name, depth + 1, me);
        return;
      }
      switch (k) {
        case Key::kId:
          id.reset();
          c.has_id = c.id_unsigned = false;
          if (f.type().value() == json_type::number) {
            const Number n = read_number(f);
            if (n.kind != Number::kDouble) {
              c.has_id = true;
              c.id_unsigned = n.kind == Number::kUnsigned;
              c.id = c.id_unsigned ? (long long)n.u : n.i;
              id = c.id;
            }
          } else {
            skim(f);
          }
          break;
        case Key::kCaption: c.caption = s ? std::string(*s) : (skim(f), std::string()); break;
        case Key::kPosition:
          position = box_of(f, &pos_shape);
          positions_[(size_t)me] = position;
          break;
        case Key::kIconPosition: icon = box_of(f, &icon_shape); break;
        case Key::kTextPosition: text = box_of(f, &text_shape); break;
        case Key::kVisible: c.hidden = !truth_of(f).value_or(true); break;
        case Key::kTouchable: {
          const auto t = truth_of(f);
          c.touchable = t ? (int8_t)*t : (int8_t)-1;
          break;
        }
        case Key::kText: c.text = text_of(f, s); break;
        case Key::kHintText: extra().hint_text = text_of(f, s); break;
        case Key::kPasswordChar: extra().password_char = text_of(f, s); break;
        case Key::kBackgroundPic: c.background_pic = text_of(f, s); break;
        case Key::kProgressPic: extra().progress_pic = text_of(f, s); break;
        case Key::kSecondaryProgressPic: extra().secondary_progress_pic = text_of(f, s); break;
        case Key::kPicTab: pic_table(f, c.pics); break;
        case Key::kColorTab: color_table(f, &c.text_color, &c.checked_color); break;
        case Key::kBgColorTab: color_table(f, &c.ground_tab, nullptr); break;
        case Key::kBackgroundColor: c.background = color_of(f); break;
        case Key::kHintTextColor: extra().hint_color = color_of(f); break;
        case Key::kFontSize: c.font_size = num_of(f, name); break;
        case Key::kAlignment: c.alignment = num_of(f, name); break;
        case Key::kMax: extra().max = num_of(f, name); break;
        case Key::kDefProgress: extra().def_progress = num_of(f, name); break;
        case Key::kRows: extra().rows = num_of(f, name); break;
        case Key::kRowSpacing: extra().row_spacing = num_of(f, name); break;
        case Key::kBold: c.bold = truth_of(f).value_or(false); break;
        case Key::kChecked: c.checked = truth_of(f).value_or(false); break;
        case Key::kIsPassword: extra().is_password = truth_of(f).value_or(false); break;
        case Key::kThumb: read_thumb(f, extra()); break;
        case Key::kItem: {
          Extra& e = extra();
          e.item = -1;
          e.has_subs = false;
          if (f.type().value() == json_type::object) {
            Element item = element_of(f, true, &e);
            e.item = (int)lay_.elements.size();
            lay_.elements.push_back(std::move(item));
          } else {
            skim(f);
          }
          break;
        }
        case Key::kRadiobuttons: {
          Extra& e = extra();
          e.has_radios = false;
          if (f.type().value() == json_type::array) {
            std::vector<Element> radios;
            each_element(f.get_array().value(), [&](od::value& y) { radios.push_back(element_of(y, false, nullptr)); });
            e.radio_begin = (int)lay_.elements.size();
            for (auto& r : radios) lay_.elements.push_back(std::move(r));
            e.radio_end = (int)lay_.elements.size();
            e.has_radios = true;
          } else {
            skim(f);
          }
          break;
        }
        default:
          if (!s) skim(f);
      }
    });
    c.type = control_type(c.key, id);
    // An iconPosition or textPosition that is a copy of the position means the control box.
    auto inner = [&](const Box& b, uint64_t shape) {
      if (!b.is_object() || (position.is_object() && shape == pos_shape)) return -1;
      lay_.boxes.push_back(b);
      return (int)lay_.boxes.size() - 1;
    };
    c.icon_box = inner(icon, icon_shape);
    c.text_box = inner(text, text_shape);
    if (has_extra) {
      c.extra = (int)lay_.extras.size();
      lay_.extras.push_back(x);
    }
    c.end = (int)lay_.controls.size();
    lay_.controls[(size_t)me] = std::move(c);
    if (buffer_) {
      const char* at = nullptr;
      if (!doc_->current_location().get(at)) buffer_->release_before(at);
    }
  }

  void read_thumb(od::value& v, Extra& x) {
    x.thumb_normal = x.thumb_pressed = {};
    x.thumb_w = x.thumb_h = {};
    table(v, [&](Key k, od::value& f, const std::string_view* s) {
      switch (k) {
        case Key::kNormalPic: x.thumb_normal = text_of(f, s); return true;
        case Key::kPressedPic: x.thumb_pressed = text_of(f, s); return true;
        case Key::kSize: {
          x.thumb_w = x.thumb_h = {};
          table(f, [&](Key sk, od::value& g, const std::string_view*) {
            if (sk == Key::kWidth) x.thumb_w = num_of(g, "width");
            else if (sk == Key::kHeight) x.thumb_h = num_of(g, "height");
            else return false;
            return true;
          });
          return true;
        }
        default:
          return false;
      }
    });
  }

  Layout& lay_;
  const bool findings_;
  Buffer* buffer_;
  od::document* doc_ = nullptr;
  int depth_ = 0;
  Box resolution_, root_position_;
  std::vector<Box> positions_;  // each control's position, relative to its parent
  // The character scan: the mappings open, the path to the current one, what was found.
  std::deque<Scope> scopes_;  // a deque: an open scope stays where it is while inner ones are added
  size_t open_ = 0;
  uint64_t seq_ = 0;
  std::string path_;
  std::vector<PendingFinding> pending_;
};

// Counts lines and columns (1-based, columns in code points) over text given in pieces.
struct Place {
  size_t line = 1, column = 1;
  void over(std::string_view piece) {
    for (char c : piece) {
      if (c == '\n') ++line, column = 1;
      else if (((unsigned char)c & 0xC0) != 0x80) ++column;  // not a continuation byte
    }
  }
  std::string text() const { return "line " + std::to_string(line) + ", column " + std::to_string(column); }
};

// A JSON reader that only validates, to tell the fault of text the fast parser refused
// in the same words the composer's reader uses.
struct Validator {
  bool null() { return true; }
  bool boolean(bool) { return true; }
  bool number_integer(Json::number_integer_t) { return true; }
  bool number_unsigned(Json::number_unsigned_t) { return true; }
  bool number_float(Json::number_float_t, const std::string&) { return true; }
  bool string(std::string&) { return true; }
  bool binary(Json::binary_t&) { return true; }
  bool start_object(std::size_t) { return true; }
  bool end_object() { return true; }
  bool start_array(std::size_t) { return true; }
  bool end_array() { return true; }
  bool key(std::string&) { return true; }
  template <class Exception>
  bool parse_error(std::size_t, const std::string&, const Exception& ex) {
    throw ex;
  }
};

// The text again, read when the fast parser refused it: for the JSON library's verdict and
// for the line and column of a fault. The parser's copy may be partly given back by then.
struct Source {
  virtual ~Source() = default;
  // The JSON library's reading; throws its exception where the text is no JSON.
  virtual void validate() = 0;
  // Line and column of a byte offset.
  virtual std::string place(size_t offset) = 0;
  // Offset of the first NUL byte, npos when there is none. The JSON library takes one as the
  // end of the text; it is never part of JSON.
  virtual size_t first_nul() = 0;
};

struct TextSource : Source {
  std::string_view text;
  explicit TextSource(std::string_view t) : text(t) {}
  void validate() override {
    Validator v;
    Json::sax_parse(text, &v);
  }
  std::string place(size_t offset) override {
    Place p;
    p.over(text.substr(0, std::min(offset, text.size())));
    return p.text();
  }
  size_t first_nul() override { return text.find('\0'); }
};

// Read from the file a piece at a time, so it is never held whole a second time.
struct FileSource : Source {
  std::string path;
  explicit FileSource(std::string p) : path(std::move(p)) {}
  void validate() override {
    std::ifstream in(path, std::ios::binary);
    if (!in) throw LayoutError("cannot read " + path);
    Validator v;
    Json::sax_parse(in, &v);
  }
  std::string place(size_t offset) override {
    std::ifstream in(path, std::ios::binary);
    Place p;
    std::vector<char> buf(1 << 16);
    while (offset > 0 && in) {
      in.read(buf.data(), (std::streamsize)std::min(buf.size(), offset));
      const size_t got = (size_t)in.gcount();
      if (got == 0) break;
      p.over(std::string_view(buf.data(), got));
      offset -= got;
    }
    return p.text();
  }
  size_t first_nul() override {
    std::ifstream in(path, std::ios::binary);
    std::vector<char> buf(1 << 16);
    for (size_t at = 0; in;) {
      in.read(buf.data(), (std::streamsize)buf.size());
      const size_t got = (size_t)in.gcount();
      if (const void* nul = std::memchr(buf.data(), 0, got)) return at + (size_t)(static_cast<const char*>(nul) - buf.data());
      at += got;
      if (got == 0) break;
    }
    return std::string::npos;
  }
};

// Reads text (size bytes at data, padded as the parser needs); `release` gives the parser's
// copy back before the text is read again from `source`.
template <class Release>
Layout read(const char* data, size_t size, size_t capacity, const ReadOptions& o, Buffer* buffer, Source& source,
            Release&& release) {
  if (size > simdjson::SIMDJSON_MAXSIZE_BYTES)
    throw LayoutError("the layout is " + std::to_string(size) + " bytes, more than " +
                      std::to_string(simdjson::SIMDJSON_MAXSIZE_BYTES) + " can be read");
  Layout lay;
  Reader reader(lay, o, buffer);
  std::string fault;  // what the fast parser could not take
  size_t fault_at = std::string::npos;
  bool not_object = false;
  {
    od::parser parser;
    try {
      od::document doc = parser.iterate(data, size, capacity).value();
      reader.attach(doc);
      try {
        reader.read(doc);
      } catch (const simdjson::simdjson_error& e) {
        fault = e.what();
        const char* at = nullptr;
        if (!doc.current_location().get(at) && at >= data && at <= data + size) fault_at = (size_t)(at - data);
      }
    } catch (const simdjson::simdjson_error& e) {
      fault = e.what();
    } catch (const TooDeep& d) {
      fault = "nests deeper than " + std::to_string(kMaxJsonDepth) + " levels";
      if (d.at >= data && d.at <= data + size) fault_at = (size_t)(d.at - data);
    } catch (const NotObject&) {
      not_object = true;
    }
    reader.attach_none();
  }
  if (not_object) {
    release();
    try {
      source.validate();
    } catch (const Json::exception& e) {
      throw SyntaxError(e.what());
    }
    if (const size_t nul = source.first_nul(); nul != std::string::npos)
      throw SyntaxError("the layout holds a NUL byte at " + source.place(nul));
    throw LayoutError("the layout is not a JSON object");
  }
  if (!fault.empty()) {
    release();
    try {
      source.validate();
    } catch (const Json::exception& e) {
      throw SyntaxError(e.what());
    }
    if (const size_t nul = source.first_nul(); nul != std::string::npos)
      throw SyntaxError("the layout holds a NUL byte at " + source.place(nul));
    // Valid JSON the fast parser does not take (nesting beyond its bound): a fault of the
    // layout found before it comes first, as a reading of the whole document would find it.
    reader.finish_partial();
    throw SyntaxError(fault_at == std::string::npos ? "the layout " + fault
                                                    : "the layout " + fault + " at " + source.place(fault_at));
  }
  reader.finish();
  return lay;
}

}  // namespace

Layout read_layout_text(std::string_view text, const ReadOptions& options) {
  if (text.size() > simdjson::SIMDJSON_MAXSIZE_BYTES)
    throw LayoutError("the layout is " + std::to_string(text.size()) + " bytes, more than " +
                      std::to_string(simdjson::SIMDJSON_MAXSIZE_BYTES) + " can be read");
  std::string padded;
  padded.reserve(text.size() + simdjson::SIMDJSON_PADDING);
  padded.assign(text);
  padded.append(simdjson::SIMDJSON_PADDING, ' ');
  TextSource source(text);
  return read(padded.data(), text.size(), padded.size(), options, nullptr, source, [] {});
}

Layout read_layout_file(const std::string& path, const ReadOptions& options) {
  const int fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
  if (fd < 0) throw LayoutError("cannot read " + path + ": " + std::strerror(errno));
  struct stat st;
  if (::fstat(fd, &st) != 0 || !S_ISREG(st.st_mode)) {
    ::close(fd);
    throw LayoutError("cannot read " + path + ": not a regular file");
  }
  std::unique_ptr<Buffer> buffer;
  size_t got = 0;
  try {
    if ((unsigned long long)st.st_size > simdjson::SIMDJSON_MAXSIZE_BYTES)
      throw LayoutError("cannot read " + path + ": " + std::to_string(st.st_size) + " bytes, more than " +
                        std::to_string(simdjson::SIMDJSON_MAXSIZE_BYTES) + " can be read");
    buffer = std::make_unique<Buffer>((size_t)st.st_size);
    while (got < buffer->size()) {
      const ssize_t n = ::read(fd, buffer->data() + got, buffer->size() - got);
      if (n < 0 && errno == EINTR) continue;
      if (n < 0) throw LayoutError("cannot read " + path + ": " + std::strerror(errno));
      if (n == 0) break;  // the file shrank meanwhile: what is there is read
      got += (size_t)n;
    }
  } catch (...) {
    ::close(fd);
    throw;
  }
  ::close(fd);
  FileSource source(path);
  return read(buffer->data(), got, buffer->capacity(), options, buffer.get(), source, [&] { buffer.reset(); });
}

}  // namespace layout
