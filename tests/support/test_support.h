// Shared test set-up: paths point at the source tree, so the block library and the
// icon library of the checkout are used whatever the build directory.
#pragma once

#include <string>

#include "compose.h"

namespace ubtest {

// Source root of the checkout.
std::string source_dir();
// A fresh temporary directory, removed by the caller if wanted.
std::string temp_dir(const std::string& tag);
// A minimal spec with a resolution, a title and a footer; blocks go into page.blocks.
Json page_spec(int w, int h, Json blocks = Json::array());
// The keys of a mapping, in order.
std::vector<std::string> keys_of(const Json& o);

}  // namespace ubtest
