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
// The skeleton's text (refuses duplicate button captions), its path relative to the project,
// and both written into a project.
std::string logic_text(const Json& doc);
std::string logic_text(const std::vector<ControlRef>& controls);
std::string logic_path(const std::string& page);
std::string emit_logic(const std::string& project_root, const std::string& page, const Json& doc);

}  // namespace ub
