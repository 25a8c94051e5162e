// Token colour lookups, the semantic state table and the text box width.
#include "spec/page_context.h"

#include <algorithm>

namespace ub {

std::string PageContext::tok_color(const std::string& name) const {
  const Json& v = get(get(tok, "color"), name);
  if (!v.is_string()) throw InputError("_tokens.json: colour token '" + name + "' is missing or not a text");
  return v.get<std::string>();
}

Rgba PageContext::tcol(const std::string& name, int default_a) const { return rgba(tok_color(name), default_a); }

long long PageContext::col(const std::string& name) const {
  auto it = col_map.find(name);
  if (it == col_map.end()) throw InputError("_tokens.json: no colour token '" + name + "'");
  return it->second;
}

Json PageContext::col_int() const {
  Json out = Json::object();
  const Json& table = get(tok, "color");
  if (!table.is_object()) throw InputError("_tokens.json: 'color' must be a mapping");
  for (auto it = table.begin(); it != table.end(); ++it) {
    if (!it.value().is_string()) throw InputError("_tokens.json: colour token '" + it.key() + "' is not a text");
    const std::string& s = it.value().get_ref<const std::string&>();
    if (starts_with(s, "#")) out[it.key()] = hex2int(s);
  }
  return out;
}

int PageContext::text_box_w(const std::string& txt, double fs, int align, double slack) const {
  int mw = text_min_size(txt, fs, align).first;
  if (mw < 4) mw = 4;
  return r4up(mw * slack);
}

std::pair<std::string, std::string> PageContext::sem_color(const std::string& state) const {
  static const std::vector<std::pair<std::string, std::pair<std::string, std::string>>> table = {
      {"info", {"info", "info1"}},       {"success", {"success", "success1"}}, {"warn", {"warn", "warn1"}},
      {"danger", {"danger", "danger1"}}, {"ok", {"success", "success1"}},      {"off", {"fg2", "page"}},
  };
  std::vector<std::string> names;
  for (const auto& [k, pair] : table) {
    if (k == state) return pair;
    names.push_back(k);
  }
  std::sort(names.begin(), names.end());
  stop(cat("[X] 未知语义状态：", state, "（可用：", join(names, "、"), "）"));
}

}  // namespace ub
