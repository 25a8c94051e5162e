#include "controls/payload.h"

#include <algorithm>
#include <cstring>

namespace ub {

namespace {

constexpr auto& kKeys = kCompactKeys;

bool fits32(long long c) { return c >= -1 && c <= 0xFFFFFFFFLL; }

Json colour_table(long long c0, long long c1) {
  Json t = Json::object();
  auto& o = t.get_ref<Json::object_t&>();
  o.reserve(5);
  o.emplace_back("color0", c0);
  o.emplace_back("color1", c1);
  for (const char* k : {"color2", "color3", "color4"}) o.emplace_back(k, -1);
  return t;
}

}  // namespace

bool PayloadField::truthy() const {
  switch (kind) {
    case Int:
    case Bool: return a != 0;
    case Str: return !s.empty();
    case Colors: return true;
    case Other: return json && ub::truthy(*json);
  }
  return false;
}

Json PayloadField::to_json() const {
  switch (kind) {
    case Int: return a;
    case Bool: return a != 0;
    case Str: return std::string(s);
    case Colors: return colour_table(a, b);
    case Other: return json ? *json : Json();
  }
  return Json();
}

Payload::Payload(Json object) {
  if (object.is_object() && !object.empty()) json_ = std::move(object);
}

bool Payload::compact_key(std::string_view key, unsigned char& k) {
  if (json_.is_object()) return false;
  for (k = 0; k < std::size(kKeys); ++k)
    if (kKeys[k] == key) {
      for (size_t i = 0; i < slots_.size(); i += 1 + filler(slots_[i]))
        if (slots_[i].key == k) return false;  // set again: replaced in place, as a mapping does
      return true;
    }
  return false;
}

void Payload::as_json() {
  if (json_.is_object()) return;
  Json j = to_json();
  slots_ = {};
  json_ = std::move(j);
}

void Payload::add_int(std::string_view key, long long v) {
  unsigned char k;
  if (!compact_key(key, k)) {
    as_json();
    json_[std::string(key)] = v;
    return;
  }
  slots_.push_back({k, PayloadField::Int, 0, 0, v});
}

void Payload::add_flag(std::string_view key, bool v) {
  unsigned char k;
  if (!compact_key(key, k)) {
    as_json();
    json_[std::string(key)] = v;
    return;
  }
  slots_.push_back({k, PayloadField::Bool, 0, 0, v});
}

void Payload::add_text(std::string_view key, std::string_view v) {
  unsigned char k;
  if (!compact_key(key, k) || v.size() > 0xFFFFFFFFu) {
    as_json();
    json_[std::string(key)] = std::string(v);
    return;
  }
  slots_.push_back({k, PayloadField::Str, 0, (unsigned)v.size(), 0});
  const size_t at = slots_.size();
  slots_.resize(at + filler(slots_.back()));
  if (!v.empty()) std::memcpy(static_cast<void*>(slots_.data() + at), v.data(), v.size());
}

void Payload::add_colors(std::string_view key, long long color0, long long color1) {
  unsigned char k;
  if (!compact_key(key, k) || !fits32(color0) || !fits32(color1)) {
    as_json();
    json_[std::string(key)] = colour_table(color0, color1);
    return;
  }
  const unsigned char none = (color0 == -1 ? 1 : 0) | (color1 == -1 ? 2 : 0);
  const long long v = (long long)(((unsigned long long)(color0 & 0xFFFFFFFF) << 32) | (unsigned long long)(color1 & 0xFFFFFFFF));
  slots_.push_back({k, PayloadField::Colors, none, 0, v});
}

void Payload::reserve(size_t fields, size_t texts, size_t text_bytes) {
  slots_.reserve(fields + texts + text_bytes / sizeof(Slot));
}

PayloadField Payload::other(std::string_view key, const Json& v) {
  PayloadField f;
  f.key = key;
  f.kind = PayloadField::Other;
  f.json = &v;
  return f;
}

PayloadField Payload::field(size_t i) const {
  const Slot& s = slots_[i];
  PayloadField f;
  f.key = kKeys[s.key];
  f.compact = (signed char)s.key;
  f.kind = s.kind;
  switch (s.kind) {
    case PayloadField::Str: f.s = std::string_view(reinterpret_cast<const char*>(slots_.data() + i + 1), s.len); break;
    case PayloadField::Colors: {
      const auto v = (unsigned long long)s.v;
      f.a = s.none & 1 ? -1 : (long long)(v >> 32);
      f.b = s.none & 2 ? -1 : (long long)(v & 0xFFFFFFFF);
      break;
    }
    default: f.a = s.v;
  }
  return f;
}

PayloadField Payload::find(std::string_view key) const {
  PayloadField found;
  found.key = key;
  found.kind = PayloadField::Other;
  if (json_.is_object()) {
    auto it = json_.find(key);
    if (it != json_.end()) found = other(it.key(), *it);
    return found;
  }
  // Compact fields hold compact keys only.
  const auto k = std::find(std::begin(kKeys), std::end(kKeys), key) - std::begin(kKeys);
  if (k == (long)std::size(kKeys)) return found;
  for (size_t i = 0; i < slots_.size(); i += 1 + filler(slots_[i]))
    if (slots_[i].key == k) return field(i);
  return found;
}

Json Payload::to_json() const {
  if (json_.is_object()) return json_;
  Json j = Json::object();
  each([&](const PayloadField& f) { j[std::string(f.key)] = f.to_json(); });
  return j;
}

}  // namespace ub
