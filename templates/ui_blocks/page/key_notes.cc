#include "page/key_notes.h"

#include <algorithm>
#include <unordered_map>

#include "kinds/value_check.h"

namespace ub {

namespace {

// A place in spec.json, spelt out only for a note: "page.blocks[3].blocks[1]".
struct Where {
  const Where* up;       // the place holding this one, or none
  std::string_view key;  // "page.blocks", "blocks", "items", "page.footer"
  size_t index;          // the entry of the list under key; npos: the key's value itself

  std::string text() const {
    std::string s = up ? up->text() + "." : std::string();
    s += key;
    if (index != std::string::npos) s += cat("[", index, "]");
    return s;
  }
};

// What a block type reads, gathered once per type from its library entry.
struct KindKeys {
  bool listed = false;              // the library defines the type
  std::vector<std::string> known;   // type, name, blocks (containers), then the entry's keys
  // Lists given as records, with the keys their entries may carry, in the entry's order.
  std::vector<std::pair<std::string, std::vector<std::string>>> records;
  // Keys that take one record (a dialog's input), with the keys it may carry.
  std::vector<std::pair<std::string, std::vector<std::string>>> singles;
};

class KeyNotes {
 public:
  KeyNotes(const std::map<std::string, Json>& library, const KindTable& kinds) : library_(library), kinds_(kinds) {}

  void blocks(const Json& list, const Where* up, std::string_view key) {
    if (!list.is_array()) return;
    for (size_t i = 0; i < list.size(); ++i) {
      const Json& b = list[i];
      const BlockKind* k = kinds_.of(b);
      if (!k) continue;
      const Where at{up, key, i};
      block(b, *k, at);
      if (k->holds_blocks) blocks(get(b, "blocks"), &at, "blocks");
    }
  }

  void block(const Json& b, const BlockKind& k, const Where& at) {
    const KindKeys& kk = keys_of(k);
    if (!kk.listed || !b.is_object()) return;
    unknown(b, kk.known, at);
    // Entries of a list given as records: their keys are declared with the list.
    for (const auto& [key, entry_keys] : kk.records) {
      const Json& list = get(b, key);
      if (!list.is_array()) continue;
      for (size_t i = 0; i < list.size(); ++i)
        if (list[i].is_object()) unknown(list[i], entry_keys, Where{&at, key, i});
    }
    for (const auto& [key, rec_keys] : kk.singles) {
      const Json& rec = get(b, key);
      if (rec.is_object()) unknown(rec, rec_keys, Where{&at, key, std::string::npos});
    }
  }

  std::vector<std::string> notes;

 private:
  const KindKeys& keys_of(const BlockKind& k) {
    auto [it, fresh] = by_kind_.try_emplace(&k);
    if (!fresh) return it->second;
    KindKeys& kk = it->second;
    auto def = library_.find(k.type);
    if (def == library_.end()) return kk;
    kk.listed = true;
    kk.known = {"type", "name"};
    if (k.holds_blocks) kk.known.push_back("blocks");
    const Json& keys = get(def->second, "keys");
    if (!keys.is_object()) return kk;
    for (const auto& [key, decl] : keys.items()) {
      kk.known.push_back(key);
      const Json& own = get(decl, "properties");
      if (own.is_object()) {
        std::vector<std::string> rec_keys;
        for (const auto& [name, d] : own.items()) rec_keys.push_back(name);
        kk.singles.emplace_back(key, std::move(rec_keys));
      }
      const Json& props = get(get(decl, "items"), "properties");
      if (!props.is_object()) continue;
      std::vector<std::string> entry_keys;
      for (const auto& [name, d] : props.items()) entry_keys.push_back(name);
      kk.records.emplace_back(key, std::move(entry_keys));
    }
    return kk;
  }

  // A line for each key of `rec` that is not in `known`.
  void unknown(const Json& rec, const std::vector<std::string>& known, const Where& at) {
    for (const auto& [key, value] : rec.get_ref<const Json::object_t&>()) {
      // Keys starting with an underscore are comments.
      if (!key.empty() && key[0] == '_') continue;
      if (std::find(known.begin(), known.end(), key) != known.end()) continue;
      notes.push_back(cat(at.text(), ": ", unknown_key_text(key, known)));
    }
  }

  const std::map<std::string, Json>& library_;
  const KindTable& kinds_;
  std::unordered_map<const BlockKind*, KindKeys> by_kind_;
};

}  // namespace

std::vector<std::string> unknown_keys(const Json& page, const std::map<std::string, Json>& library,
                                           const KindTable& kinds) {
  KeyNotes n(library, kinds);
  n.blocks(get(page, "blocks"), nullptr, "page.blocks");
  const Json& footer = get(page, "footer");
  if (footer.is_object())
    n.block(footer, kinds.with_flow(Flow::Footer), Where{nullptr, "page.footer", std::string::npos});
  return std::move(n.notes);
}

}  // namespace ub
