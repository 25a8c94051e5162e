// Reading JSON files of the installation: the tokens, the block library, data tables.
#pragma once

#include <map>
#include <string>

#include "base/values.h"

namespace ub {

// Parses the UTF-8 file at path; an unreadable file or malformed JSON throws
// InputError naming the file.
Json load_json(const std::string& path);

// The block definitions of the library directory: one <type>.json per block type
// (files starting with "_" are not blocks), keyed by their "type".
std::map<std::string, Json> load_block_library(const std::string& dir);

}  // namespace ub
