// Reading JSON files of the installation: the tokens, the block library, data tables.
#pragma once

#include <string>

#include "spec/values.h"

namespace ub {

// Parses the UTF-8 file at path; an unreadable file or malformed JSON throws
// InputError naming the file.
Json load_json(const std::string& path);

}  // namespace ub
