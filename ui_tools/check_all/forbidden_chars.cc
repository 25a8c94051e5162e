// #11: texts use only characters the engine's font library has.
#include "check_all/rules.h"
#include "compose.h"

namespace check {

namespace {

const char* const kTextKeys[] = {"text", "hintText", "passwordChar"};

// Walks every mapping and sequence below v, radio buttons and list subitems included.
void scan(const Json& v, const std::string& path, std::vector<std::pair<std::string, std::string>>& out) {
  if (v.is_array()) {
    for (size_t i = 0; i < v.size(); ++i) scan(v[i], path + "[" + std::to_string(i) + "]", out);
    return;
  }
  if (!v.is_object()) return;
  for (const char* k : kTextKeys) {
    const Json& s = ub::get(v, k);
    if (!s.is_string()) continue;
    std::u32string found;
    for (char32_t ch : ub::utf8_decode(s.get<std::string>()))
      if (ub::BLACKLIST_CHARS.find(ch) != std::u32string::npos && found.find(ch) == std::u32string::npos) found += ch;
    if (!found.empty())
      out.push_back({path + "「" + str_field(v, "caption") + "」." + k + " = 「" + s.get<std::string>() + "」",
                     ub::utf8_encode(found)});
  }
  for (auto it = v.begin(); it != v.end(); ++it)
    if (it.value().is_structured()) scan(it.value(), path.empty() ? it.key() : path + "." + it.key(), out);
}

}  // namespace

void rule_forbidden_chars(const Project& p, Report& r) {
  r.section(11, "引擎字库黑名单字符");
  for (const auto& lf : p.layouts) {
    if (!lf.ok()) continue;
    std::vector<std::pair<std::string, std::string>> bad;
    scan(lf.doc, "", bad);
    for (const auto& [what, chars] : bad) r.fail(lf.rel + " " + what + " 含字库外字符 " + chars + " → 改用 ASCII 写法");
  }
  r.pass("没有字库外字符");
}

}  // namespace check
