// One run of compose: compose the page, write the layout, report, emit, render, check.
#pragma once

#include <ostream>

#include "driver/cli.h"

namespace ub {

// Returns the exit status of a finished run (0); stops and bad input throw.
int compose_run(const Options& o, std::ostream& out);

// Where the layout goes: ui/, or ui/<W>x<H>/ for "res" ("auto" picks res when that folder exists).
std::string layout_dir(const std::string& project, const std::string& ui_layout, int W, int H);

}  // namespace ub
