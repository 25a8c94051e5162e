// Page-wide block numbering: every block gets _seq and _name in reading order, through
// containers, so captions derived from names never repeat between cards.
#include <map>

#include "compose.h"

namespace ub {

namespace {

const std::map<std::string, std::string>& block_prefix() {
  static const std::map<std::string, std::string> table = {
      {"page_title", "Title"},         {"section_header", "SectionHeader"}, {"card", "Card"},
      {"setting_row", "SettingRow"},   {"icon_row", "IconRow"},             {"toggle_row", "ToggleRow"},
      {"device_card", "DeviceCard"},   {"empty_state", "EmptyState"},       {"bottom_actions", "Action"},
      {"dialog", "Dialog"},            {"slider_row", "SliderRow"},         {"progress_row", "ProgressRow"},
      {"input_row", "InputRow"},       {"checkbox_row", "CheckboxRow"},     {"radio_row", "RadioRow"},
      {"list_item", "ListItem"},       {"wheel_picker", "WheelPicker"},     {"tabs", "Tabs"},
      {"bottom_nav", "BottomNav"},     {"banner", "Banner"},                {"toast", "Toast"},
      {"status_pill", "StatusPill"},   {"divider_label", "DividerLabel"},   {"grid_icons", "GridIcons"},
      {"chart_card", "ChartCard"},     {"image_gallery", "ImageGallery"},   {"keypad", "Keypad"},
      {"time_row", "TimeRow"},         {"loading", "Loading"},              {"form_section", "FormSection"},
      {"toolbar", "Toolbar"},
  };
  return table;
}

std::string prefix_of(const Json& type) {
  if (!type.is_string()) return "Block";
  auto it = block_prefix().find(type.get<std::string>());
  return it == block_prefix().end() ? "Block" : it->second;
}

}  // namespace

int Composer::next_seq() { return ++seq_; }

Json& Composer::name_block(Json& blk) {
  if (!blk.is_object())
    throw InputError(cat("a block must be a JSON object, got ", type_name(blk), ": ", blk.dump()));
  int seq = next_seq();
  blk["_seq"] = seq;
  // An explicit name wins; the number is consumed either way.
  const Json& own = get(blk, "name");
  blk["_name"] = truthy(own) ? to_text(own) : cat(prefix_of(get(blk, "type")), seq);
  return blk;
}

void Composer::name_tree(Json& blocks) {
  if (!truthy(blocks)) return;
  if (!blocks.is_array())
    throw InputError(cat("\"blocks\" must be a list of blocks, got ", type_name(blocks), ": ", blocks.dump()));
  for (Json& blk : blocks) {
    name_block(blk);
    const Json& type = get(blk, "type");
    if (type.is_string() && in(ROW_CONTAINERS, type.get<std::string>())) {
      auto it = blk.find("blocks");
      if (it != blk.end()) name_tree(*it);
    }
  }
}

}  // namespace ub
