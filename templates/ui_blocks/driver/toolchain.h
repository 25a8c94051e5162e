// The bridge to the sibling tools: the render font, the argument vector of a tool and
// running it as a child process with captured output.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace ub {

// The font for previews: the project's own font first, then the repository's.
std::optional<std::string> find_render_font(const std::string& project_root);

// We are one executable that offers each tool as a subcommand: [own executable, name, args...].
std::vector<std::string> tool_argv(const std::string& name, const std::vector<std::string>& args);

// The running executable's own path.
std::string self_exe();

struct ChildResult {
  int status = 0;   // exit status; minus the signal number when killed by a signal
  std::string out;  // stdout as text: UTF-8 with bad bytes replaced, line ends as \n
  std::string err;  // stderr, likewise
};

// Runs argv to completion with both outputs captured. A program that cannot be started throws.
ChildResult run_captured(const std::vector<std::string>& argv);

}  // namespace ub
