// #7: the engine finds a control by its id, so no id stands on two controls of a layout.
// A layout that repeats one (a page whose controls outnumber a type's id range, a
// hand-made copy) fails, naming the id and the keys of its controls.
#include <unordered_map>

#include "check_all/rules.h"

namespace check {

namespace {

std::string id_text(const layout::Control& c) {
  return c.id_unsigned ? std::to_string((unsigned long long)c.id) : std::to_string(c.id);
}

}  // namespace

void rule_unique_ids(const Project& p, Report& r) {
  r.section(7, "控件 id 唯一");
  for (const auto& lf : p.layouts) {
    if (!lf.ok()) continue;
    const auto& cs = lf.lay.controls;
    // Each id's first and last control, and for each control the next one of its id.
    struct IdKey {
      long long id;
      bool is_unsigned;
      bool operator==(const IdKey&) const = default;
    };
    struct IdHash {
      size_t operator()(const IdKey& k) const { return std::hash<long long>{}(k.id) ^ (size_t)k.is_unsigned; }
    };
    std::unordered_map<IdKey, std::pair<int, int>, IdHash> at;
    at.reserve(cs.size());
    std::vector<int> next(cs.size(), -1), count(cs.size(), 0);
    for (size_t i = 0; i < cs.size(); ++i) {
      if (!cs[i].has_id) continue;
      auto [it, fresh] = at.try_emplace({cs[i].id, cs[i].id_unsigned}, (int)i, (int)i);
      if (!fresh) next[(size_t)it->second.second] = (int)i, it->second.second = (int)i;
      ++count[(size_t)it->second.first];
    }
    for (size_t i = 0; i < cs.size(); ++i) {  // in order of first use
      if (count[i] < 2) continue;
      if (!r.listing()) {
        r.count_fail();
        continue;
      }
      std::vector<std::string> keys;
      for (int j = (int)i; j >= 0 && keys.size() < 20; j = next[(size_t)j]) keys.push_back(cs[(size_t)j].key);
      const std::string more = count[i] > 20 ? " …" : "";
      r.fail(lf.rel + " id " + id_text(cs[i]) + " 出现 " + std::to_string(count[i]) + " 次：" + ub::join(keys, ", ") + more);
    }
  }
  r.pass("每页控件 id 都不重复");
}

}  // namespace check
