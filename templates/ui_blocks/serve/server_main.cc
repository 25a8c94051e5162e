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
  // Layouts, pictures and states come and go with every save. Those of a page of common size
  // stay with the process for the next composition, as fresh memory is dear to touch; blocks
  // larger than that (the text of a large layout or state) are mapped on their own and go
  // back to the system when freed (serve_main.cc trims what the layout of a large page took).
  ::mallopt(M_MMAP_THRESHOLD, 8 << 20);
  ::mallopt(M_TRIM_THRESHOLD, 64 << 20);
  return ub::exit_status_of([&] {
    std::string compose = ub::self_exe();
    const std::string suffix = "-serve";
    if (compose.size() > suffix.size() && compose.ends_with(suffix)) compose.resize(compose.size() - suffix.size());
    return serve::serve_main(std::vector<std::string>(argv + 1, argv + argc), ub::blocks_dir(), compose, std::cout,
                             std::cerr);
  });
}
