// A control's payload: its fields in the order they were set. The fields the factories set
// on most controls (numbers, flags, texts, colour tables under a few known keys) are held
// compactly, as pages hold hundreds of thousands of them; any other payload is a JSON mapping.
#pragma once

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "base/values.h"

namespace ub {

// The keys a payload holds compactly; a compact field names its key by index here.
inline constexpr std::string_view kCompactKeys[] = {"alignment", "backgroundPic", "bold", "colorTab",
                                                    "fontSize",  "text",          "touchable"};

// One field as the layout writer reads it.
struct PayloadField {
  enum Kind : unsigned char { Int, Bool, Str, Colors, Other };
  std::string_view key;
  Kind kind = Int;
  signed char compact = -1;    // the key's index in kCompactKeys, for a compact field
  long long a = 0, b = 0;      // Int, Bool: a; Colors: color0 and color1 (color2..4 are -1)
  std::string_view s;          // Str
  const Json* json = nullptr;  // Other: the value as it is
  bool truthy() const;
  Json to_json() const;
};

class Payload {
 public:
  Payload() = default;
  explicit Payload(Json object);  // a mapping, kept as it is; anything else gives an empty payload

  // Compact fields, each key set once. A key outside the compact set (or a colour no
  // 32-bit field holds) turns the payload into its JSON form, with the same fields.
  void add_int(std::string_view key, long long v);
  void add_flag(std::string_view key, bool v);
  void add_text(std::string_view key, std::string_view v);
  void add_colors(std::string_view key, long long color0, long long color1 = -1);
  // Room for `fields` fields, `texts` of them texts of `text_bytes` in all.
  void reserve(size_t fields, size_t texts, size_t text_bytes);

  bool empty() const { return json_.is_object() ? json_.empty() : slots_.empty(); }
  // Calls f(const PayloadField&) for each field in order.
  template <class F>
  void each(F f) const {
    if (json_.is_object()) {
      for (auto it = json_.begin(); it != json_.end(); ++it) f(other(it.key(), it.value()));
      return;
    }
    for (size_t i = 0; i < slots_.size(); i += 1 + filler(slots_[i])) f(field(i));
  }
  // The field under `key`; kind Other with a null json when there is none.
  PayloadField find(std::string_view key) const;
  Json to_json() const;

 private:
  // A field; a text's bytes follow it in the slots after it, so a payload is one allocation.
  struct Slot {
    unsigned char key;  // index into the compact keys
    PayloadField::Kind kind;
    unsigned char none;  // Colors: bit 0 / bit 1 when color0 / color1 is -1
    unsigned len;        // Str: length
    long long v;         // Int, Bool: the value; Colors: both, 32 bits each
  };
  static size_t filler(const Slot& s) { return s.kind == PayloadField::Str ? (s.len + sizeof(Slot) - 1) / sizeof(Slot) : 0; }
  static PayloadField other(std::string_view key, const Json& v);
  PayloadField field(size_t i) const;
  bool compact_key(std::string_view key, unsigned char& k);
  void as_json();

  std::vector<Slot> slots_;
  Json json_;         // the mapping, for a payload in JSON form; null otherwise
};

}  // namespace ub
