// Checks of a whole page that run once, before any block is composed: names that become
// identifiers, the counts and numbers the builders turn into pixels, and the texts that
// become parts of picture names. A page that fails one is bad input (InputError naming
// the block by its JSON path and type); nothing has been written yet.
#pragma once

#include <string>

#include "base/values.h"
#include "page/page_records.h"
#include "spec/metrics.h"

namespace ub {

// The page name and every block (page.footer too, when it is a mapping); throws
// InputError on the first failure.
void check_page_limits(const PageRecords& page, const std::string& page_name, const Metrics& m);

}  // namespace ub
