// compose-serve: the live preview server, started by "compose serve ..." with the words after
// "serve"; it finds the block library beside itself as compose does, and composes each size
// with that compose (its own path without "-serve").
#include <malloc.h>

#include <iostream>
#include <string>
#include <vector>

#include "driver/exit_status.h"
#include "driver/paths.h"
#include "driver/toolchain.h"
#include "serve/serve_main.h"

int main(int argc, char** argv) {
  // Layouts and pictures come and go in large blocks with every save: memory freed stays
  // with the process for the next composition (serve_main.cc hands back what large pages took).
  ::mallopt(M_MMAP_THRESHOLD, 64 << 20);
  ::mallopt(M_TRIM_THRESHOLD, 64 << 20);
  return ub::exit_status_of([&] {
    std::string compose = ub::self_exe();
    const std::string suffix = "-serve";
    if (compose.size() > suffix.size() && compose.ends_with(suffix)) compose.resize(compose.size() - suffix.size());
    return serve::serve_main(std::vector<std::string>(argv + 1, argv + argc), ub::blocks_dir(), compose, std::cout,
                             std::cerr);
  });
}
