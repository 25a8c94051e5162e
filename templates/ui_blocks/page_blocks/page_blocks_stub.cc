#include "compose.h"
#include "spec/todo.h"
namespace ub {
int Composer::build_dialog(const Json&, NodeList&) { UB_TODO("build_dialog"); }
int Composer::build_toast(const Json&, NodeList&) { UB_TODO("build_toast"); }
int Composer::build_tabs(const Json&, NodeList&, int, int) { UB_TODO("build_tabs"); }
int Composer::build_banner(const Json&, NodeList&, int, int) { UB_TODO("build_banner"); }
int Composer::build_pill(const Json&, NodeList&, int, int) { UB_TODO("build_pill"); }
int Composer::build_divider_label(const Json&, NodeList&, int, int) { UB_TODO("build_divider_label"); }
int Composer::build_empty(const Json&, NodeList&, int, int) { UB_TODO("build_empty"); }
int Composer::build_grid(const Json&, NodeList&, int, int) { UB_TODO("build_grid"); }
int Composer::build_gallery(const Json&, NodeList&, int, int) { UB_TODO("build_gallery"); }
int Composer::build_keypad(const Json&, NodeList&, int, int) { UB_TODO("build_keypad"); }
int Composer::build_chart_card(const Json&, NodeList&, int, int) { UB_TODO("build_chart_card"); }
int Composer::build_loading(const Json&, NodeList&, int, int) { UB_TODO("build_loading"); }
int Composer::build_toolbar(const Json&, NodeList&) { UB_TODO("build_toolbar"); }
int Composer::build_nav(const Json&, NodeList&) { UB_TODO("build_nav"); }
}  // namespace ub
