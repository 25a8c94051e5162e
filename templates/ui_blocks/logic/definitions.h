// Function definitions in hand-written C++ source, found well enough to merge into it: a
// name followed by its parameter list and a body, outside comments and literals.
#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace ub {

struct FunctionDef {
  std::string name;
  int line = 0;      // 0-based line of the name
  int end_line = 0;  // 0-based line of the body's closing brace
};

// In the order of the source. Bodies are not searched (a call inside one is no definition);
// namespace and class bodies are. A declaration without a body is no definition.
std::vector<FunctionDef> function_definitions(std::string_view code);

}  // namespace ub
