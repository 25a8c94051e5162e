// The design lint in compose's report: one line per lint rule that found something, so an
// author sees it without running the project checks.
#pragma once

#include <string>
#include <vector>

#include "assets/registry.h"
#include "base/values.h"

namespace ub {

// The lines for one composed size. The layout is read from layout_text, or from
// layout_path when the text was streamed to its file; pictures come from the run's own
// (by file name), else from images_dir. Empty when nothing was found or the layout
// cannot be read.
std::string design_lint_lines(const std::string& layout_text, const std::string& layout_path,
                              const std::vector<Picture>& pictures, const std::string& images_dir,
                              const Json& tokens);

}  // namespace ub
