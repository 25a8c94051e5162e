// Project-wide static checks of a Moraine project (layouts, pictures, logic files).
#pragma once
#include <string>
#include <vector>
namespace tools {
// check_all PROJECT; prints findings line by line, returns nonzero on any failure.
int check_all_main(const std::vector<std::string>& args);
}  // namespace tools
