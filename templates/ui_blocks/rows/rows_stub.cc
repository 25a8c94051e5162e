#include "compose.h"
#include "spec/todo.h"
namespace ub {
void Composer::scan_row_family() { UB_TODO("scan_row_family"); }
int Composer::plan_row_reserve(const std::vector<const Json*>&) const { UB_TODO("plan_row_reserve"); }
void Composer::assert_icon_uniform() const { UB_TODO("assert_icon_uniform"); }
RowBoxes Composer::row_boxes(int, int, int) const { UB_TODO("row_boxes"); }
int Composer::row_height(const Json&) const { UB_TODO("row_height"); }
void Composer::note_row_gaps(const std::string&, int, std::optional<int>) { UB_TODO("note_row_gaps"); }
void Composer::assert_row_gaps() const { UB_TODO("assert_row_gaps"); }
int Composer::build_row(const Json&, NodeList&, int, int, int, int, bool) { UB_TODO("build_row"); }
int Composer::build_field_row(const Json&, NodeList&, int, int, int) { UB_TODO("build_field_row"); }
int Composer::build_section(const Json&, NodeList&, int, int) { UB_TODO("build_section"); }
int Composer::build_card(const Json&, NodeList&, int, int) { UB_TODO("build_card"); }
int Composer::build_form_section(const Json&, NodeList&, int, int) { UB_TODO("build_form_section"); }
ListRowBoxes Composer::list_row_boxes(int, int, const Json&, bool) const { UB_TODO("list_row_boxes"); }
ListRowBoxes Composer::list_row_check(const std::string&, int, int, const Json&, bool) { UB_TODO("list_row_check"); }
Json Composer::list_row_subitems(const std::string&, int, int, const Json&, bool) { UB_TODO("list_row_subitems"); }
Json Composer::list_item_template(const std::string&, int, int, bool, const Json&) { UB_TODO("list_item_template"); }
int Composer::build_list(const Json&, NodeList&, int, int, int) { UB_TODO("build_list"); }
int Composer::build_wheel(const Json&, NodeList&, int, int, int) { UB_TODO("build_wheel"); }
}  // namespace ub
