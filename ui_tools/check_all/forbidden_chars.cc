// #11: texts use only characters the engine's font library has.
#include "base/forbidden_chars.h"
#include "check_all/rules.h"

namespace check {

namespace {

const char* const kTextKeys[] = {"text", "hintText", "passwordChar"};

// Walks every mapping and sequence below doc in document order, radio buttons and list
// subitems included. An explicit stack: a hostile layout may nest without limit.
std::vector<std::pair<std::string, std::string>> scan(const Json& doc) {
  std::vector<std::pair<std::string, std::string>> out;
  std::vector<std::pair<const Json*, std::string>> todo{{&doc, ""}};
  while (!todo.empty()) {
    auto [v, path] = std::move(todo.back());
    todo.pop_back();
    std::vector<std::pair<const Json*, std::string>> next;
    if (v->is_array()) {
      for (size_t i = 0; i < v->size(); ++i) next.push_back({&(*v)[i], path + "[" + std::to_string(i) + "]"});
    } else if (v->is_object()) {
      for (const char* k : kTextKeys) {
        const Json& s = ub::get(*v, k);
        if (!s.is_string()) continue;
        std::u32string found = ub::forbidden_in(s.get<std::string>());
        if (!found.empty())
          out.push_back({path + "「" + str_field(*v, "caption") + "」." + k + " = 「" + s.get<std::string>() + "」",
                         ub::utf8_encode(found)});
      }
      for (auto it = v->begin(); it != v->end(); ++it)
        if (it.value().is_structured())
          next.push_back({&it.value(), path.empty() ? it.key() : path + "." + it.key()});
    }
    todo.insert(todo.end(), std::make_move_iterator(next.rbegin()), std::make_move_iterator(next.rend()));
  }
  return out;
}

}  // namespace

void rule_forbidden_chars(const Project& p, Report& r) {
  r.section(11, "引擎字库黑名单字符");
  for (const auto& lf : p.layouts) {
    if (!lf.ok()) continue;
    for (const auto& [what, chars] : scan(lf.doc))
      r.fail(lf.rel + " " + what + " 含字库外字符 " + chars + " → 改用 ASCII 写法");
  }
  r.pass("没有字库外字符");
}

}  // namespace check
