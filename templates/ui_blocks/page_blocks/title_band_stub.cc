#include "compose.h"
#include "spec/todo.h"
namespace ub {
int Composer::build_title(const Json&, NodeList&, int, int) { UB_TODO("build_title"); }
int Composer::build_actions(const Json&, NodeList&, int, int) { UB_TODO("build_actions"); }
}  // namespace ub
