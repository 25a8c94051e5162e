// Keys of the page's blocks that their type does not read: each is named with its place and
// the nearest known key when one is close, and the page is refused, so that a misspelt key
// never ships a default in silence. Keys starting with an underscore are comments.
#pragma once

#include <map>
#include <string>
#include <vector>

#include "base/values.h"
#include "kinds/block_kind.h"

namespace ub {

// The unknown keys in page order, through containers and page.footer. A block type reads the keys
// its library entry lists, `type` and `name`, and `blocks` when it is a container; blocks
// of unknown types are left to the flow, which refuses them.
std::vector<std::string> unknown_keys(const Json& page, const std::map<std::string, Json>& library,
                                           const KindTable& kinds);

}  // namespace ub
