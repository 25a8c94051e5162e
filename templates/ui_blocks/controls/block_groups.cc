// Block type groups that the dispatch and the naming walk share.
#include "compose.h"

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
}  // namespace ub
