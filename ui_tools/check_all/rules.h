// The numbered rules of the project check. Each writes its own section to the report;
// check_all_main runs them in rising order of their numbers.
#pragma once

#include <span>
#include <string>

#include "base/values.h"
#include "check_all/project.h"
#include "check_all/report.h"

namespace check {

void rule_touch_size(const Project& p, Report& r);        // #2, warnings only
void rule_text_contrast(const Project& p, Report& r);     // #3, warnings only
void rule_glyph_fill(const Project& p, Report& r);        // #4, warnings only
void rule_edit_callbacks(const Project& p, Report& r);    // #5
void rule_unique_captions(const Project& p, Report& r);   // #6
void rule_unique_ids(const Project& p, Report& r);        // #7
void rule_button_callbacks(const Project& p, Report& r);  // #8
void rule_flat_layouts(const Project& p, Report& r);      // #9
void rule_forbidden_chars(const Project& p, Report& r);   // #11
void rule_text_fit(const Project& p, Report& r);          // #13
void rule_touch_cover(const Project& p, Report& r);       // #15
void rule_picture_size(const Project& p, Report& r);      // #21
void rule_unused_pictures(const Project& p, Report& r);   // #22
void rule_row_family(const Project& p, Report& r);        // #27
void rule_decoration_cover(const Project& p, Report& r);  // #29
void rule_text_margin(const Project& p, Report& r);       // #36
void rule_list_item_height(const Project& p, Report& r);  // #37

// Every rule, in rising order of its number: what check_all runs. A new rule is one
// function (in a file of its own) added here and in rules.cc.
using Rule = void (*)(const Project&, Report&);
std::span<const Rule> all_rules();

// "ui/main.json textview__4「TextRow1Label」": where a finding lies.
std::string where(const LayoutFile& lf, const layout::Control& c);
// touchable as written, else the default of the control's type.
bool touchable(const layout::Control& c);
// Windows of all kinds: they hold controls and are no target of their own.
bool is_container(const std::string& type);
using layout::ancestor_or_self;

}  // namespace check
