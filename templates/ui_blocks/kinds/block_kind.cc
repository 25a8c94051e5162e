#include "kinds/block_kind.h"

namespace ub {

bool is_kind(const Json& blk, const BlockKind& k) {
  const Json& t = get(blk, "type");
  return t.is_string() && t.get_ref<const std::string&>() == k.type;
}

KindTable::KindTable(std::vector<const BlockKind*> kinds) : kinds_(std::move(kinds)) {
  for (const BlockKind* k : kinds_) by_name_.emplace(k->type, k);
}

const BlockKind* KindTable::find(const std::string& type) const {
  auto it = by_name_.find(type);
  return it == by_name_.end() ? nullptr : it->second;
}

const BlockKind* KindTable::find(const Json& type) const {
  return type.is_string() ? find(type.get_ref<const std::string&>()) : nullptr;
}

const BlockKind* KindTable::of(const Json& blk) const {
  if (!blk.is_object()) return nullptr;
  // Asked for every block many times: the members are scanned directly (type mostly comes first).
  for (const auto& [key, value] : blk.get_ref<const Json::object_t&>())
    if (key.size() == 4 && key == "type") return find(value);
  return nullptr;
}

const BlockKind& KindTable::with_flow(Flow f) const {
  for (const BlockKind* k : kinds_)
    if (k->flow == f) return *k;
  throw std::logic_error("no block kind for a flow");
}

}  // namespace ub
