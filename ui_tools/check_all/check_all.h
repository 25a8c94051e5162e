// Project-wide static checks of a Moraine project (layouts, pictures, logic files).
#pragma once
#include <string>
#include <vector>

#include "design_lint/design_lint.h"
namespace tools {
// check_all PROJECT; args are what follows the tool's name. Prints findings line by
// line and returns the exit status: 0 all passed, 1 any failure, 2 usage.
// `lint`: the design lint's settings from the design tokens (no touch_min: not checked).
int check_all_main(const std::vector<std::string>& args, const lint::Settings& lint = {});
}  // namespace tools
