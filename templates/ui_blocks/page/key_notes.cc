#include "page/key_notes.h"

#include <algorithm>

#include "base/closest_name.h"

namespace ub {

namespace {

class KeyNotes {
 public:
  KeyNotes(const std::map<std::string, Json>& library, const KindTable& kinds) : library_(library), kinds_(kinds) {}

  void blocks(const Json& list, const std::string& path) {
    if (!list.is_array()) return;
    for (size_t i = 0; i < list.size(); ++i) {
      const Json& b = list[i];
      const std::string at = cat(path, "[", i, "]");
      const BlockKind* k = kinds_.of(b);
      if (!k) continue;
      block(b, *k, at);
      if (k->holds_blocks) blocks(get(b, "blocks"), at + ".blocks");
    }
  }

  void block(const Json& b, const BlockKind& k, const std::string& path) {
    auto def = library_.find(k.type);
    if (def == library_.end() || !b.is_object()) return;
    std::vector<std::string> known = {"type", "name"};
    if (k.holds_blocks) known.push_back("blocks");
    const Json& keys = get(def->second, "keys");
    if (keys.is_object())
      for (const auto& [key, value] : keys.items()) known.push_back(key);
    unknown(b, known, path);
    // Entries of a list given as records: their keys are declared with the list.
    if (!keys.is_object()) return;
    for (const auto& [key, decl] : keys.items()) {
      const Json& props = get(get(decl, "items"), "properties");
      const Json& list = get(b, key);
      if (!props.is_object() || !list.is_array()) continue;
      std::vector<std::string> entry_keys;
      for (const auto& [name, d] : props.items()) entry_keys.push_back(name);
      for (size_t i = 0; i < list.size(); ++i)
        if (list[i].is_object()) unknown(list[i], entry_keys, cat(path, ".", key, "[", i, "]"));
    }
  }

  // A note for each key of `rec` that is not in `known`.
  void unknown(const Json& rec, const std::vector<std::string>& known, const std::string& path) {
    for (const auto& [key, value] : rec.items()) {
      if (std::find(known.begin(), known.end(), key) != known.end()) continue;
      const auto near = closest_name(key, known);
      notes.push_back(cat(path, ": unknown key ", Json(key).dump(),
                          near ? cat(" (did you mean ", Json(*near).dump(), "?)") : ""));
    }
  }

  std::vector<std::string> notes;

 private:
  const std::map<std::string, Json>& library_;
  const KindTable& kinds_;
};

}  // namespace

std::vector<std::string> unknown_key_notes(const Json& page, const std::map<std::string, Json>& library,
                                           const KindTable& kinds) {
  KeyNotes n(library, kinds);
  n.blocks(get(page, "blocks"), "page.blocks");
  const Json& footer = get(page, "footer");
  if (footer.is_object()) n.block(footer, kinds.with_flow(Flow::Footer), "page.footer");
  return std::move(n.notes);
}

}  // namespace ub
