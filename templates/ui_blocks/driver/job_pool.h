// Child processes run side by side: at most `jobs` at a time, each with its output
// captured, the results in the order of the commands whatever order they end in.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "driver/toolchain.h"

namespace ub {

// Called as a command starts (done = false) and as it ends (done = true), one call at a time.
using JobEvent = std::function<void(size_t index, bool done)>;

// A command that cannot be started gives status -1000 and the reason in `err`.
std::vector<ChildResult> run_jobs(const std::vector<std::vector<std::string>>& commands, int jobs,
                                  const JobEvent& event = {});

// The cores this process may run on (at least 1).
int available_cores();

}  // namespace ub
