// The logic skeleton src/logic/<page>Logic.cc: the fixed head, one empty callback per
// button, and one per edit field when the page has any. Rewritten on every run.
#include <algorithm>
#include <filesystem>
#include <map>

#include "base/output_files.h"
#include "logic/logic.h"
#include "logic/logic_head.h"

namespace ub {

namespace {

std::string logic_text_of(const std::vector<std::string>& caps, const std::vector<std::string>& edit_caps) {
  std::map<std::string, int> seen;
  for (const auto& c : caps) ++seen[c];
  std::vector<std::string> dups;
  for (const auto& [cap, n] : seen)
    if (n > 1) dups.push_back(cap);
  if (!dups.empty())
    stop(cat("[X] button caption 重名（", join(dups, "、"),
             "）→ onButtonClick_<caption> 会重复定义，拒绝生成 logic 骨架"));

  std::string body = LOGIC_HEAD;
  body += "\n// ---- 按钮回调 ----\n";
  for (const auto& cap : caps)
    body += cat("static bool onButtonClick_", cap, "(TVButton *pButton) {\n    // TODO: ", cap,
                "\n    return false;\n}\n");
  if (!edit_caps.empty())
    body += "\n// ---- 输入框回调（check_all #5 核对：edittext 必须有 onEditTextChanged_<caption>）----\n";
  for (const auto& c : edit_caps)
    body += cat("static void onEditTextChanged_", c, "(const std::string &text) {\n    // TODO: ", c,
                " 输入内容 = text\n}\n");

  return body;
}

}  // namespace

std::string logic_text(const Json& doc) { return logic_text_of(collect_button_caps(doc), collect_edittext_caps(doc)); }

std::string logic_text(const std::vector<ControlRef>& controls) {
  return logic_text_of(collect_button_caps(controls), collect_edittext_caps(controls));
}

std::string logic_path(const std::string& page) { return "src/logic/" + page + "Logic.cc"; }

std::string emit_logic(const std::string& project_root, const std::string& page, const Json& doc) {
  base::OutputSet files;
  files.add(logic_path(page), logic_text(doc));
  files.commit(project_root);
  return (std::filesystem::path(project_root) / logic_path(page)).string();
}

}  // namespace ub
