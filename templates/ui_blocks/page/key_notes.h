// Keys of the page's blocks that their type does not read: each gives a note, with the
// nearest known key when one is close, so that a misspelt key is never silently ignored.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "base/values.h"
#include "kinds/block_kind.h"

namespace ub {

// The notes in page order, through containers and page.footer. A block type reads the keys
// its library entry lists, `type` and `name`, and `blocks` when it is a container; blocks
// of unknown types are left to the flow, which refuses them.
std::vector<std::string> unknown_key_notes(const Json& page, const std::map<std::string, Json>& library,
                                           const KindTable& kinds);

}  // namespace ub
