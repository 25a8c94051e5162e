#include "check_all/rules.h"

namespace check {

std::span<const Rule> all_rules() {
  static const Rule kRules[] = {
      rule_touch_size,       rule_text_contrast,   rule_glyph_fill,
      rule_edit_callbacks,   rule_unique_captions, rule_unique_ids,    rule_button_callbacks,
      rule_flat_layouts,     rule_forbidden_chars, rule_text_fit,      rule_touch_cover,
      rule_picture_size,     rule_unused_pictures, rule_row_family,      rule_decoration_cover, rule_text_margin,
      rule_list_item_height,
  };
  return kRules;
}

}  // namespace check
