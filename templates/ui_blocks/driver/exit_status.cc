#include "driver/exit_status.h"

#include <exception>
#include <iostream>

#include "base/values.h"

namespace ub {

int exit_status_of(const std::function<int()>& run) {
  try {
    return run();
  } catch (const StopError& e) {
    std::cout.flush();
    std::cerr << e.what() << "\n";
  } catch (const std::exception& e) {
    std::cout.flush();
    std::cerr << "compose: error: " << e.what() << "\n";
  } catch (...) {
    std::cout.flush();
    std::cerr << "compose: error: unexpected failure\n";
  }
  return 1;
}

}  // namespace ub
