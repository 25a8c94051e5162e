// The logic file of a run: read with its base, merged with the page's callbacks, added to
// the run's files, and what became of it for the report.
#pragma once

#include <optional>
#include <string>

#include "base/output_files.h"
#include "logic/merge.h"

namespace ub {

// The merge, and the two files it was made from as they were read: the commit refuses to
// write over them if they change meanwhile.
struct LogicPlan {
  LogicMerge merge;
  std::optional<std::string> file_was, base_was;
};

// Reads src/logic/<page>Logic.cc and its base in the project and merges. A conflict stops
// the run (before anything is written) unless `write_conflicts`.
LogicPlan plan_logic(const std::string& project, const std::string& page, const PageCallbacks& callbacks,
                     bool write_conflicts);

// The logic file and its new base, each required to be as it was read.
void add_logic(base::OutputSet& files, const std::string& page, const LogicPlan& plan);

// What follows the report's logic line: empty for a file written afresh.
std::string logic_status(const LogicPlan& plan, const std::string& page);

}  // namespace ub
