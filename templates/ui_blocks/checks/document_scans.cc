// Scans of the serialised layout: forbidden characters and duplicate captions.
#include <algorithm>
#include <unordered_map>

#include "base/forbidden_chars.h"
#include "compose.h"

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

void assert_caption_unique(const Json& doc, const std::string& page_name) {
  Json dups = duplicate_captions(doc);
  if (dups.empty()) return;
  std::vector<std::string> lines = {cat("[X] caption 重名 ", dups.size(), " 个（页面 ", page_name,
                                        "）：重名 ⇒ onButtonClick_<caption> 重定义 ⇒ C++ 编译必失败")};
  std::vector<std::string> caps;
  for (auto it = dups.begin(); it != dups.end(); ++it) caps.push_back(it.key());
  std::sort(caps.begin(), caps.end());
  for (const auto& cap : caps) {
    std::vector<std::string> keys;
    for (const Json& k : dups[cap]) keys.push_back(k.get<std::string>());
    lines.push_back(cat("    - ", cap, " 出现 ", keys.size(), " 次：", join(keys, ", ")));
  }
  stop(join(lines, "\n"));
}

}  // namespace ub
