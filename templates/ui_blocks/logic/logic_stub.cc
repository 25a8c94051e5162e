#include "compose.h"
#include "spec/todo.h"
namespace ub {
std::vector<std::string> collect_button_caps(const Json&) { UB_TODO("collect_button_caps"); }
std::vector<std::string> collect_edittext_caps(const Json&) { UB_TODO("collect_edittext_caps"); }
std::string emit_logic(const std::string&, const std::string&, const Json&) { UB_TODO("emit_logic"); }
}  // namespace ub
