// The printed report of a run: the summary of the composed page, and the sections of the
// render and check stages. Each function returns its text, every line ended by LF.
#pragma once

#include <string>
#include <vector>

#include "assets/asset.h"
#include "spec/page_context.h"
#include "driver/toolchain.h"

namespace ub {

std::string summary_head(const PageContext& c, int content_h);
std::string icon_stats(const IconTally& uses);  // empty when no icon was used
// The line of each icon that fell back to a wire-frame, one per token and picture, in
// the order met; then the summary line (always one line).
std::string fallback_icon_lines(const std::vector<IconFallback>& fallbacks);
std::string fallback_line(const std::vector<IconFallback>& fallbacks);
std::string notes_lines(const std::vector<std::string>& notes);
std::string too_long_lines(const std::vector<std::string>& notes);  // texts that do not fit, again; empty when none
std::string control_line(const Json& doc, int control_count);
std::string control_line(size_t top_level_records, int control_count);

// The render report shown whole up to 6000 characters, else head and tail around a cut mark.
std::string render_report_text(const std::string& rep);
// `full`: a long screenshot, as wide as the screen and at least as high.
std::string render_section(const ChildResult& r, const std::string& png, int W, int H, bool full = false);
// The line of a contact sheet of several sizes, or why it is missing.
std::string sheet_line(const ChildResult& r, const std::string& png);
// check_all's lines worth showing.
std::vector<std::string> check_tail(const std::string& out);
// What follows the "-- check_all --" head, which is printed before the tool runs.
std::string check_section(const ChildResult& r);

}  // namespace ub
