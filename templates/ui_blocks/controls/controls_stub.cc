#include "compose.h"
#include "spec/todo.h"
namespace ub {
const std::vector<std::string> ROW_TYPES = {"setting_row", "icon_row", "toggle_row", "device_card", "time_row"};
const std::vector<std::string> FIELD_TYPES = {"slider_row", "progress_row", "input_row", "checkbox_row",
                                              "radio_row"};
const std::vector<std::string> FAMILY_TYPES = {"setting_row", "icon_row",     "toggle_row", "device_card",
                                               "time_row",    "slider_row",   "progress_row", "input_row",
                                               "checkbox_row", "radio_row"};
const std::vector<std::string> WIDGET_TYPES = {"list_item", "wheel_picker"};
const std::vector<std::string> ROW_CONTAINERS = {"card", "form_section"};
const std::vector<std::string> STRUCT3_TYPES = {"tabs", "banner", "divider_label", "grid_icons", "status_pill"};
const std::vector<std::string> STRUCT4_TYPES = {"chart_card", "image_gallery", "keypad", "loading",
                                                "form_section"};
bool in(const std::vector<std::string>& list, const std::string& s) {
  for (const auto& e : list)
    if (e == s) return true;
  return false;
}
Pos Composer::box(double, double, double, double) const { UB_TODO("box"); }
std::pair<int, int> Composer::xy(double, double) const { UB_TODO("xy"); }
NodeList Composer::collect_controls(const NodeList&) { UB_TODO("collect_controls"); }
NodePtr Composer::text(const std::string&, Pos, int, long long, const std::string&, const std::string&, int, bool,
                       bool) { UB_TODO("text"); }
NodePtr Composer::button(const std::string&, Pos, const std::string&, std::optional<int>, std::optional<long long>,
                         int, const std::string&, bool) { UB_TODO("button"); }
NodePtr Composer::deco(const std::string&, Pos, long long, const std::string&, int) { UB_TODO("deco"); }
Json Composer::subitem(const std::string&, Pos, int, long long, const std::string&, const std::string&, int, bool) {
  UB_TODO("subitem");
}
NodePtr Composer::sep_node(int, int, int, int) { UB_TODO("sep_node"); }
NodePtr Composer::make_seekbar(const std::string&, Pos, const Json&, bool) { UB_TODO("make_seekbar"); }
NodePtr Composer::make_edittext(const std::string&, Pos, const Json&) { UB_TODO("make_edittext"); }
NodePtr Composer::make_checkbox(const std::string&, Pos, bool) { UB_TODO("make_checkbox"); }
NodePtr Composer::make_radiogroup(const std::string&, Pos, const Json&, const Json&, const std::string&) {
  UB_TODO("make_radiogroup");
}
Json Composer::document() { UB_TODO("document"); }
}  // namespace ub
