// Placeholder bodies for operations not built yet.
#pragma once
#include <stdexcept>
#define UB_TODO(name) throw std::logic_error(std::string("not built yet: ") + name)
