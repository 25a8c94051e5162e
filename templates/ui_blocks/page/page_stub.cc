#include "compose.h"
#include "spec/todo.h"
namespace ub {
NodeList Composer::run() { UB_TODO("run"); }
int Composer::next_seq() { UB_TODO("next_seq"); }
Json& Composer::name_block(Json&) { UB_TODO("name_block"); }
void Composer::name_tree(Json&) { UB_TODO("name_tree"); }
}  // namespace ub
