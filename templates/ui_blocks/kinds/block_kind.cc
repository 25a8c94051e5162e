#include "kinds/block_kind.h"

namespace ub {

namespace {

// A block's `type` value; null when it has none. Asked for every block many times: the
// members are scanned directly (type mostly comes first).
const Json* type_of(const Json& blk) {
  if (!blk.is_object()) return nullptr;
  for (const auto& [key, value] : blk.get_ref<const Json::object_t&>())
    if (key.size() == 4 && key == "type") return &value;
  return nullptr;
}

size_t mix(std::string_view s) {
  if (s.empty()) return 0;
  return s.size() * 131 + (unsigned char)s[0] * 31 + (unsigned char)s[s.size() / 2] * 7 + (unsigned char)s.back();
}

}  // namespace

bool is_kind(const Json& blk, const BlockKind& k) {
  const Json* t = type_of(blk);
  return t && t->is_string() && t->get_ref<const std::string&>() == k.type;
}

KindTable::KindTable(std::vector<const BlockKind*> kinds) : kinds_(std::move(kinds)) {
  size_t n = 16;
  while (n < 4 * kinds_.size()) n *= 2;
  slots_.assign(n, Slot{});
  mask_ = n - 1;
  for (const BlockKind* k : kinds_) {
    if (find_name(k->type)) continue;  // the first kind of a name is found
    size_t i = mix(k->type) & mask_;
    while (slots_[i].kind) i = (i + 1) & mask_;
    slots_[i] = Slot{k->type, k};
  }
}

const BlockKind* KindTable::find_name(std::string_view type) const {
  for (size_t i = mix(type) & mask_; slots_[i].kind; i = (i + 1) & mask_)
    if (slots_[i].name == type) return slots_[i].kind;
  return nullptr;
}

const BlockKind* KindTable::find(const std::string& type) const { return find_name(type); }

const BlockKind* KindTable::find(const Json& type) const {
  return type.is_string() ? find(type.get_ref<const std::string&>()) : nullptr;
}

const BlockKind* KindTable::of(const Json& blk) const {
  const Json* t = type_of(blk);
  return t ? find(*t) : nullptr;
}

const BlockKind& KindTable::with_flow(Flow f) const {
  for (const BlockKind* k : kinds_)
    if (k->flow == f) return *k;
  throw std::logic_error("no block kind for a flow");
}

}  // namespace ub
