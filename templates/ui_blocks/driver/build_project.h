// compose build: every page of a project's compose.json at every size, composed by child
// compose processes side by side into a staging area of the tool folder .compose/, then
// committed into the project together; pages whose inputs did not change are skipped.
#pragma once

#include <ostream>

#include "driver/build_options.h"

namespace ub {

// Returns the exit status: 0 for a written project, 1 when a page refused the build (the
// messages go to err, nothing is written). A bad project file or a failed commit throws.
// `tty`: standard output is a terminal, so a progress line is shown while pages compose.
int build_project(const BuildOptions& o, std::ostream& out, std::ostream& err, bool tty);

}  // namespace ub
