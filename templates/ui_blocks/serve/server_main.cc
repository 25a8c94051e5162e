// compose-serve: the live preview server, started by "compose serve ..." with the words after
// "serve"; it finds the block library beside itself as compose does, and composes with the
// program whose name it carries plus "-serve".
#include <exception>
#include <iostream>
#include <string>
#include <vector>

#include "base/values.h"
#include "driver/paths.h"
#include "driver/toolchain.h"
#include "serve/serve_main.h"

int main(int argc, char** argv) {
  try {
    std::string compose = ub::self_exe();
    const std::string suffix = "-serve";
    if (compose.size() > suffix.size() && compose.ends_with(suffix)) compose.resize(compose.size() - suffix.size());
    return serve::serve_main(std::vector<std::string>(argv + 1, argv + argc), ub::blocks_dir(), compose, std::cout,
                             std::cerr);
  } catch (const ub::StopError& e) {
    std::cout.flush();
    std::cerr << e.what() << "\n";
    return 1;
  } catch (const std::exception& e) {
    std::cout.flush();
    std::cerr << "compose: error: " << e.what() << "\n";
    return 1;
  } catch (...) {
    std::cout.flush();
    std::cerr << "compose: error: unexpected failure\n";
    return 1;
  }
}
