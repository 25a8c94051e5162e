// The fixed head of every generated logic file.
#pragma once

namespace ub {
extern const char* const LOGIC_HEAD;
}
