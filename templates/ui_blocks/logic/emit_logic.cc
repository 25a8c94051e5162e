// The logic skeleton src/logic/<page>Logic.cc: the fixed head, one empty callback per
// button, and one per edit field when the page has any.
#include <map>

#include "logic/logic.h"
#include "logic/logic_head.h"

namespace ub {

const char* const kButtonSectionHead = "\n// ---- 按钮回调 ----\n";
const char* const kEditSectionHead =
    "\n// ---- 输入框回调（check_all #5 核对：edittext 必须有 onEditTextChanged_<caption>）----\n";

std::string button_callback_name(const std::string& caption) { return "onButtonClick_" + caption; }
std::string edit_callback_name(const std::string& caption) { return "onEditTextChanged_" + caption; }

std::string button_callback(const std::string& cap) {
  return cat("static bool ", button_callback_name(cap), "(TVButton *pButton) {\n    // TODO: ", cap,
             "\n    return false;\n}\n");
}

std::string edit_callback(const std::string& c) {
  return cat("static void ", edit_callback_name(c), "(const std::string &text) {\n    // TODO: ", c,
             " 输入内容 = text\n}\n");
}

PageCallbacks page_callbacks(const std::vector<ControlRef>& controls) {
  return {collect_button_caps(controls), collect_edittext_caps(controls)};
}

std::string logic_text(const PageCallbacks& page) {
  std::map<std::string, int> seen;
  for (const auto& c : page.buttons) ++seen[c];
  std::vector<std::string> dups;
  for (const auto& [cap, n] : seen)
    if (n > 1) dups.push_back(cap);
  if (!dups.empty())
    stop(cat("[X] button caption 重名（", join(dups, "、"),
             "）→ onButtonClick_<caption> 会重复定义，拒绝生成 logic 骨架"));

  std::string body = LOGIC_HEAD;
  body += kButtonSectionHead;
  for (const auto& cap : page.buttons) body += button_callback(cap);
  if (!page.edits.empty()) body += kEditSectionHead;
  for (const auto& c : page.edits) body += edit_callback(c);
  return body;
}

std::string logic_text(const Json& doc) { return logic_text(PageCallbacks{collect_button_caps(doc), collect_edittext_caps(doc)}); }

std::string logic_text(const std::vector<ControlRef>& controls) { return logic_text(page_callbacks(controls)); }

std::string logic_path(const std::string& page) { return "src/logic/" + page + "Logic.cc"; }

std::string logic_base_path(const std::string& page) { return ".compose/logic/" + page + "Logic.cc"; }

}  // namespace ub
