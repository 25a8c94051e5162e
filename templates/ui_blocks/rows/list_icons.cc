#include "rows/list_icons.h"

namespace ub {

// Until the icon library is reachable every token counts as known.
bool list_icon_known(const std::string&) { return true; }

}  // namespace ub
