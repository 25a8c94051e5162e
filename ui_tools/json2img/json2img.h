// Preview renderer: draws a layout JSON to a PNG of the layout's resolution.
#pragma once
#include <string>
#include <vector>
namespace tools {
// json2img LAYOUT --page P --out PNG [--report] [--font TTF]; returns the exit status.
int json2img_main(const std::vector<std::string>& args);
}  // namespace tools
