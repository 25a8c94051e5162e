// Whether the icon library knows a list row's icon token.
#pragma once

#include <string>

namespace ub {

// False only when the library is available and lacks the token.
bool list_icon_known(const std::string& token);

}  // namespace ub
