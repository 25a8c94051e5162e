// Token colour lookups, the semantic state table and the text box width.
#include "spec/page_context.h"

#include <algorithm>

namespace ub {

void PageContext::index_colours() {
  colours.clear();
  const Json& table = get(tok, "color");
  if (!table.is_object()) return;
  for (auto it = table.begin(); it != table.end(); ++it) {
    if (!it.value().is_string()) continue;  // refused by col_int(); looked up, it fails as missing
    ColourToken t{it.value().get<std::string>(), {}, {}};
    try {
      auto c = colour_channels(t.text);
      const size_t digits = t.text.size() - std::min(t.text.find_first_not_of('#'), t.text.size());
      if (digits < 8) c[3] = -1;
      t.channels = c;
    } catch (const std::exception&) {
      // Not a colour: tcol() reads it again when asked and fails as it always did.
    }
    if (starts_with(t.text, "#")) t.value = hex2int(t.text);
    colours.emplace(it.key(), std::move(t));
  }
}

const std::string& PageContext::tok_color(std::string_view name) const {
  auto it = colours.find(name);
  if (it != colours.end()) return it->second.text;
  // Not indexed (a context built by hand): read the tokens.
  const Json& v = get(get(tok, "color"), name);
  if (!v.is_string()) throw InputError(cat("_tokens.json: colour token '", std::string(name), "' is missing or not a text"));
  return v.get_ref<const std::string&>();
}

Rgba PageContext::tcol(std::string_view name, int default_a) const {
  auto it = colours.find(name);
  if (it != colours.end() && it->second.channels) {
    const auto& c = *it->second.channels;
    return Rgba{c[0], c[1], c[2], c[3] < 0 ? default_a : c[3]};
  }
  return rgba(tok_color(name), default_a);
}

long long PageContext::col(std::string_view name) const {
  auto it = colours.find(name);
  if (it == colours.end() || !it->second.value)
    throw InputError(cat("_tokens.json: no colour token '", std::string(name), "'"));
  return *it->second.value;
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
