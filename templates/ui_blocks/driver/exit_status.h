// The exit status of a program run: what escapes the run is reported on stderr the one way
// every compose program does it.
#pragma once

#include <functional>

namespace ub {

// Returns run()'s status; a stop prints its message, any other failure
// "compose: error: ...", both after what was printed so far, and give 1.
int exit_status_of(const std::function<int()>& run);

}  // namespace ub
