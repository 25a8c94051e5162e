// The payload of a listview control, shared by the list block and the wheel columns.
#pragma once

#include "base/values.h"

namespace ub {

// One column of `rows` visible items, vertical, with the one template row `item`.
Json listview_payload(int rows, int row_spacing, bool cycle, int drag_max, Json item);

}  // namespace ub
