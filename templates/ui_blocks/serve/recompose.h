// The compositions of the page, a child run of the compose executable itself: the spec's own
// size, or every size asked for in one run with --sizes (all written or none).
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
  std::string label;                // "spec" for the spec's own size, else the sizes joined by ","
  std::vector<std::string> argv;    // the child's command line
  std::vector<std::string> sizes;   // "800x480"...; empty for the spec's own size
};

// The outcome of one run.
struct RunOutcome {
  bool ok = false;                 // exit 0 and the layout was read
  std::string stop;                // refused: the message on stderr (or why nothing was read)
  std::vector<std::string> notes;  // the "[NOTE]" lines of stdout, marker removed
  nlohmann::ordered_json layout;           // ok: the layout JSON
  std::string png;                 // ok: the preview's bytes, once drawn (preview_render.h)
  std::string layout_path;         // ok: where the layout was read from
  std::string layout_text;         // ok: the layout file's text, until the preview is drawn
};

// One plan: the spec's own size, or all of `o.sizes` at once.
std::vector<RunPlan> plan_runs(const std::string& exe, const ServeOptions& o);

// What each plan shows, in order: its sizes, or "spec".
std::vector<std::string> view_labels(const std::vector<RunPlan>& plans);

// The "[NOTE]" lines of a report.
std::vector<std::string> note_lines(const std::string& report);

// The layout path compose reports ("  → /x/ui/main.json"), or "" when none.
std::string reported_layout(const std::string& report, const std::string& page);

using Runner = std::function<ub::ChildResult(const std::vector<std::string>&)>;

// Runs a plan of the spec's own size and reads what it produced.
RunOutcome run_plan(const RunPlan& plan, const std::string& page, const Runner& run = ub::run_captured);

// Runs a plan and reads what it produced for each view: one outcome per size, each read from
// its section of the report ("==== 800x480 ===="); a refused run refuses every size.
std::vector<RunOutcome> run_views(const RunPlan& plan, const std::string& page,
                                  const Runner& run = ub::run_captured);

}  // namespace serve
