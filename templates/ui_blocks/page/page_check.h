// Checks of a whole page that run once, before any block is composed: names that become
// identifiers, the counts and numbers the builders turn into pixels, and the texts that
// become parts of picture names. A page that fails one is bad input (InputError naming
// the block by its JSON path and type); nothing has been written yet.
#pragma once

#include <string>

#include "base/values.h"
#include "kinds/block_kind.h"
#include "spec/metrics.h"

namespace ub {

// The page name and every block; throws InputError on the first failure.
void check_page_limits(const Json& page, const std::string& page_name, const Metrics& m, const KindTable& kinds);

}  // namespace ub
