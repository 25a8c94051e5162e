// Preview renderer: draws a layout JSON to a PNG of the layout's resolution.
#pragma once
#include <string>
#include <vector>
namespace tools {
// json2img LAYOUT --page P --out PNG [--report] [--font TTF] [--images DIR]; args are
// what follows the tool's name. Returns the exit status: 0 done, 1 bad input, 2 usage.
int json2img_main(const std::vector<std::string>& args);
}  // namespace tools
