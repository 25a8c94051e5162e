// The logic skeleton: one callback per button and edit field of the layout.
#pragma once

#include <string>
#include <vector>

#include "base/values.h"
#include "controls/serialize.h"

namespace ub {

std::vector<std::string> collect_button_caps(const Json& node);
std::vector<std::string> collect_edittext_caps(const Json& node);
std::vector<std::string> collect_button_caps(const std::vector<ControlRef>& controls);
std::vector<std::string> collect_edittext_caps(const std::vector<ControlRef>& controls);

// The captions a skeleton is made of, each list in page order.
struct PageCallbacks {
  std::vector<std::string> buttons, edits;
};
PageCallbacks page_callbacks(const std::vector<ControlRef>& controls);

// The pieces of the skeleton: the section heads and one callback each.
extern const char* const kButtonSectionHead;  // "\n// ---- 按钮回调 ----\n"
extern const char* const kEditSectionHead;    // "\n// ---- 输入框回调（...）----\n"
std::string button_callback(const std::string& caption);
std::string edit_callback(const std::string& caption);
std::string button_callback_name(const std::string& caption);  // "onButtonClick_<caption>"
std::string edit_callback_name(const std::string& caption);    // "onEditTextChanged_<caption>"

// The skeleton's text (refuses duplicate button captions) and its path relative to the project.
std::string logic_text(const PageCallbacks& page);
std::string logic_text(const Json& doc);
std::string logic_text(const std::vector<ControlRef>& controls);
std::string logic_path(const std::string& page);

// Where the project keeps the last skeleton written for a page, relative to the project:
// the base that the author's edits are merged against on the next run.
std::string logic_base_path(const std::string& page);

}  // namespace ub
