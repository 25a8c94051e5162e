// #5 and #8: every edit field and every button has its callback in the page's logic
// file, under the name the framework's code generation expects.
#include <unordered_map>

#include "check_all/rules.h"

namespace check {

namespace {

void check_callbacks(const Project& p, Report& r, const std::string& type, const std::string& prefix,
                     const std::string& noun) {
  int total = 0;
  for (const auto& lf : p.layouts) {
    if (!lf.ok()) continue;
    for (const auto& c : lf.lay.controls) {
      if (c.type != type) continue;
      ++total;
      if (c.caption.empty()) {
        r.fail(where(lf, c) + " 没有 caption，回调无从命名");
        continue;
      }
      const auto& calls = p.logic_calls(lf.page);
      if (!calls) {
        r.fail(where(lf, c) + " 缺 " + prefix + c.caption + "：没有 " + p.logic_rel(lf.page));
      } else if (!calls->count(prefix + c.caption)) {
        r.fail(where(lf, c) + " 缺 " + prefix + c.caption + "（" + p.logic_rel(lf.page) + "）");
      }
    }
  }
  r.pass(total == 0 ? "没有" + noun : std::to_string(total) + " 个" + noun + "都有 " + prefix + " 回调");
}

}  // namespace

void rule_edit_callbacks(const Project& p, Report& r) {
  r.section(5, "输入框回调");
  check_callbacks(p, r, "edittext", "onEditTextChanged_", "输入框");
}

void rule_button_callbacks(const Project& p, Report& r) {
  r.section(8, "按钮回调");
  check_callbacks(p, r, "button", "onButtonClick_", "按钮");
}

// #6: a caption names callbacks and is how code finds a control, so it is unique per page.
void rule_unique_captions(const Project& p, Report& r) {
  r.section(6, "caption 唯一");
  for (const auto& lf : p.layouts) {
    if (!lf.ok()) continue;
    const auto& cs = lf.lay.controls;
    // Each caption's first and last control, and for each control the next one of its caption.
    std::unordered_map<std::string_view, std::pair<int, int>> at;
    at.reserve(cs.size());
    std::vector<int> next(cs.size(), -1), count(cs.size(), 0);
    for (size_t i = 0; i < cs.size(); ++i) {
      if (cs[i].caption.empty()) continue;
      auto [it, fresh] = at.try_emplace(cs[i].caption, (int)i, (int)i);
      if (!fresh) next[(size_t)it->second.second] = (int)i, it->second.second = (int)i;
      ++count[(size_t)it->second.first];
    }
    for (size_t i = 0; i < cs.size(); ++i) {  // in order of first use
      if (count[i] < 2) continue;
      std::vector<std::string> keys;
      for (int j = (int)i; j >= 0; j = next[(size_t)j]) keys.push_back(cs[(size_t)j].key);
      r.fail(lf.rel + " caption「" + cs[i].caption + "」出现 " + std::to_string(keys.size()) + " 次：" + ub::join(keys, ", "));
    }
  }
  r.pass("每页 caption 都不重名");
}

}  // namespace check
