#include "driver/picture_claims.h"

#include "base/values.h"

namespace ub {

std::string numbered_name(const std::string& name, int n) {
  const size_t dot = name.rfind('.');
  if (dot == std::string::npos || dot == 0) return cat(name, "_", n);
  return cat(name.substr(0, dot), "_", n, name.substr(dot));
}

std::vector<Clash> assign_picture_names(std::vector<PagePictures>& pages) {
  struct Claim {
    std::string digest, page;
  };
  std::map<std::string, Claim> claims;
  std::vector<Clash> clashes;
  for (PagePictures& p : pages) {
    p.renamed.clear();
    // The page's names that are free or hold its own picture first, so that a renamed
    // picture never takes a name the page itself draws.
    std::vector<std::string> taken;
    for (const auto& [name, digest] : p.pictures) {
      auto [it, fresh] = claims.try_emplace(name, Claim{digest, p.page});
      if (!fresh && it->second.digest != digest) taken.push_back(name);
    }
    for (const std::string& name : taken) {
      const std::string& digest = p.pictures.at(name);
      for (int n = 2;; ++n) {
        const std::string cand = numbered_name(name, n);
        auto it = claims.find(cand);
        if (it == claims.end() ? p.pictures.count(cand) == 0 : it->second.digest == digest) {
          if (it == claims.end()) claims.emplace(cand, Claim{digest, p.page});
          p.renamed[name] = cand;
          clashes.push_back({name, claims.at(name).page, p.page, cand});
          break;
        }
      }
    }
  }
  return clashes;
}

std::string renamed_layout(const std::string& text, const std::map<std::string, std::string>& renamed) {
  Json doc = Json::parse(text);
  auto walk = [&](auto&& self, Json& v) -> void {
    if (v.is_string()) {
      const std::string& s = v.get_ref<const std::string&>();
      if (starts_with(s, "images/"))
        if (auto it = renamed.find(s.substr(7)); it != renamed.end()) v = "images/" + it->second;
    } else if (v.is_structured()) {
      for (Json& c : v) self(self, c);
    }
  };
  walk(walk, doc);
  return dump_layout(doc);
}

}  // namespace ub
