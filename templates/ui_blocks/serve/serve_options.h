// The command line of "compose serve": spec, project, sizes, port.
#pragma once

#include <string>
#include <vector>

#include "driver/screen_sizes.h"

namespace serve {

using Size = ub::ScreenSize;

struct ServeOptions {
  std::string spec;
  std::string project;
  std::string page = "main";
  std::vector<Size> sizes;  // empty: the spec's own size
  int port = 8765;          // 0: any free port
  bool no_logic = false;    // passed on: the logic file and its base are left alone
  std::string tokens;       // passed on: a theme laid over the library's tokens
};

// args after "serve". Throws ub::UsageError.
ServeOptions parse_serve_args(const std::vector<std::string>& args);

std::string serve_usage();  // with a final LF

}  // namespace serve
