// What `compose build` prints: the summary table, the lines of a page's report worth
// showing in a build, and the progress line on a terminal.
#pragma once

#include <string>
#include <vector>

namespace ub {

struct SummaryRow {
  std::string page, size;
  bool up_to_date = false;
  long long controls = 0, pictures = 0, notes = 0;
  double seconds = 0;
};

// A column each for page, size, controls, pictures, notes and time; "up to date" in place
// of the counts of a page that was not composed.
std::string summary_table(const std::vector<SummaryRow>& rows);

// The warnings of a page's report ("[X]", "[WARN]" and "[回退线框]" lines: icon fall-backs,
// texts that do not fit), each under the size head of its section when the report has
// several; empty when none. The notes are counted in the summary and shown with -v.
std::string notable_lines(const std::string& report);

// "[2/5] oven, main" cut to `width` columns.
std::string progress_line(size_t done, size_t total, const std::vector<std::string>& running, size_t width = 79);

}  // namespace ub
