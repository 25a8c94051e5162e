// The table of every block kind the composer builds.
#pragma once

#include "kinds/block_kind.h"

namespace ub {

const KindTable& block_kinds();

}  // namespace ub
