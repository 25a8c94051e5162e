// One composition of the page per size, each a child run of the compose executable itself.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include <nlohmann/json.hpp>

#include "driver/toolchain.h"
#include "serve/serve_options.h"

namespace serve {

// What one child run is asked to make.
struct RunPlan {
  std::string label;              // "800x480", or "spec" for the spec's own size
  std::vector<std::string> argv;  // the child's command line
};

// The outcome of one run.
struct RunOutcome {
  bool ok = false;                 // exit 0 and the layout and preview were read
  std::string stop;                // refused: the message on stderr (or why nothing was read)
  std::vector<std::string> notes;  // the "[NOTE]" lines of stdout, marker removed
  nlohmann::ordered_json layout;           // ok: the layout JSON
  std::string png;                 // ok: the preview's bytes
  std::string layout_path;         // ok: where the layout was read from
};

// One plan per size. compose does not take a size override yet, so for now this is one run of
// the spec's own size whatever `sizes` holds.
std::vector<RunPlan> plan_runs(const std::string& exe, const ServeOptions& o);

// The "[NOTE]" lines of a report.
std::vector<std::string> note_lines(const std::string& report);

// The layout path compose reports ("  → /x/ui/main.json"), or "" when none.
std::string reported_layout(const std::string& report, const std::string& page);

using Runner = std::function<ub::ChildResult(const std::vector<std::string>&)>;

// Runs a plan and reads what it produced.
RunOutcome run_plan(const RunPlan& plan, const std::string& page, const Runner& run = ub::run_captured);

}  // namespace serve
