// Scans of the serialised layout: forbidden characters and duplicate captions.
#include <algorithm>
#include <cstring>
#include <string_view>
#include <unordered_map>

#include "base/forbidden_chars.h"
#include "checks/document_scans.h"

namespace ub {

// Characters outside the engine's font library.
const std::u32string BLACKLIST_CHARS{kForbiddenChars};

namespace {

const char* const TEXT_KEYS[] = {"text", "hintText", "passwordChar"};

// Walks mappings only: texts inside sequences (radiobuttons, subItem) are not reached.
void scan_chars(const Json& obj, std::vector<std::pair<std::optional<std::string>, std::string>>& out) {
  for (auto it = obj.begin(); it != obj.end(); ++it) {
    const Json& v = it.value();
    if (!v.is_object()) continue;
    for (const char* tk : TEXT_KEYS) {
      const Json& s = get(v, tk);
      if (s.is_string() && has_forbidden(s.get<std::string>())) {
        const Json& cap = get(v, "caption");
        out.emplace_back(cap.is_null() ? std::nullopt : std::optional<std::string>(to_text(cap)), s.get<std::string>());
      }
    }
    scan_chars(v, out);
  }
}

// Captions in order of first appearance, each with the control keys that carry it;
// the index finds a caption's entry in constant time.
struct CaptionUses {
  std::unordered_map<std::string, size_t> index;
  std::vector<std::pair<std::string, std::vector<std::string>>> uses;
  std::vector<std::vector<const Node*>> nodes;  // beside `uses` when the nodes are known
};

void scan_captions(const Json& obj, CaptionUses& seen) {
  for (auto it = obj.begin(); it != obj.end(); ++it) {
    const Json& v = it.value();
    if (!v.is_object() || !contains(it.key(), "__")) continue;
    const Json& cap = get(v, "caption");
    if (truthy(cap)) {
      auto [at, fresh] = seen.index.try_emplace(to_text(cap), seen.uses.size());
      if (fresh) seen.uses.emplace_back(at->first, std::vector<std::string>{});
      seen.uses[at->second].second.push_back(it.key());
    }
    scan_captions(v, seen);
  }
}

}  // namespace

std::vector<std::pair<std::optional<std::string>, std::string>> find_forbidden_chars(const Json& doc) {
  std::vector<std::pair<std::optional<std::string>, std::string>> out;
  if (doc.is_object()) scan_chars(doc, out);
  return out;
}

Json duplicate_captions(const Json& doc) {
  CaptionUses seen;
  if (doc.is_object()) scan_captions(doc, seen);
  Json dups = Json::object();
  for (const auto& [caption, keys] : seen.uses)
    if (keys.size() >= 2) dups[caption] = keys;
  return dups;
}

namespace {

void stop_on_duplicates(const CaptionUses& seen, const std::string& page_name,
                        const std::vector<std::string>& places = {}) {
  std::vector<const std::pair<std::string, std::vector<std::string>>*> dups;
  for (const auto& use : seen.uses)
    if (use.second.size() >= 2) dups.push_back(&use);
  if (dups.empty()) return;
  std::vector<std::string> lines = {cat("[X] caption 重名 ", dups.size(), " 个（页面 ", page_name,
                                        "）：重名 ⇒ onButtonClick_<caption> 重定义 ⇒ C++ 编译必失败")};
  std::sort(dups.begin(), dups.end(), [](auto* a, auto* b) { return a->first < b->first; });
  std::vector<const Node*> makers;  // the nodes of every duplicate, in the order listed
  for (const auto* d : dups) {
    lines.push_back(cat("    - ", d->first, " 出现 ", d->second.size(), " 次：", join(d->second, ", ")));
    const size_t i = d - seen.uses.data();
    if (i < seen.nodes.size()) makers.insert(makers.end(), seen.nodes[i].begin(), seen.nodes[i].end());
  }
  stop(with_places(join(lines, "\n"), makers, places));
}

}  // namespace

void assert_caption_unique(const Json& doc, const std::string& page_name) {
  CaptionUses seen;
  if (doc.is_object()) scan_captions(doc, seen);
  stop_on_duplicates(seen, page_name);
}

void assert_caption_unique(const std::vector<ControlRef>& controls, const std::string& page_name,
                           const std::vector<std::string>& places) {
  // Captions point into the nodes, which outlive this check: an open-addressing table of
  // pointers to them, so the usual page of unique captions costs no text copies and no
  // allocation per record.
  size_t cap = 16;
  while (cap < controls.size() + controls.size() / 2) cap *= 2;  // at most two thirds full
  std::vector<const std::string*> table(cap, nullptr);
  bool again = false;
  for (const ControlRef& c : controls) {
    if (!c.caption || c.caption->empty()) continue;
    size_t at = std::hash<std::string_view>{}(*c.caption) & (cap - 1);
    while (table[at] && *table[at] != *c.caption) at = (at + 1) & (cap - 1);
    if (table[at]) {
      again = true;
      break;
    }
    table[at] = c.caption;
  }
  if (!again) return;
  CaptionUses seen;
  for (size_t i = 0; i < controls.size(); ++i) {
    const ControlRef& c = controls[i];
    if (!c.caption || c.caption->empty()) continue;
    auto [at, fresh] = seen.index.try_emplace(*c.caption, seen.uses.size());
    if (fresh) {
      seen.uses.emplace_back(at->first, std::vector<std::string>{});
      seen.nodes.emplace_back();
    }
    seen.uses[at->second].second.push_back(c.key());
    seen.nodes[at->second].push_back(c.node);
  }
  stop_on_duplicates(seen, page_name, places);
}

bool may_hold_forbidden(std::string_view text) {
  // A character's first byte never occurs inside another character in UTF-8, so a search
  // for each encoding's first byte (memchr) finds every candidate.
  static const std::vector<std::string> encoded = [] {
    std::vector<std::string> v;
    for (char32_t ch : BLACKLIST_CHARS) v.push_back(utf8_encode(std::u32string(1, ch)));
    return v;
  }();
  std::string leads;
  for (const std::string& e : encoded)
    if (leads.find(e[0]) == std::string::npos) leads += e[0];
  for (char lead : leads) {
    for (const char* p = text.data(), *end = p + text.size();
         (p = static_cast<const char*>(std::memchr(p, lead, end - p))) != nullptr; ++p) {
      const std::string_view rest(p, end - p);
      for (const std::string& e : encoded)
        if (rest.substr(0, e.size()) == e) return true;
    }
  }
  return false;
}

}  // namespace ub
