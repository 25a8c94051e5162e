// The JSON Schema (draft 2020-12) of spec.json, generated from the block kinds and the
// key declarations of the block library, for editors and validators.
#pragma once

#include <map>
#include <string>

#include "base/values.h"
#include "kinds/block_kind.h"

namespace ub {

// The schema document. library: the block definitions keyed by type, as
// load_block_library reads them; each `keys` entry is the schema of that key, and
// `"required": true` in it makes the key required. Only types that are both a kind and a
// library file are described (compose refuses the others), in the order of the kinds.
// A key declaration that is no mapping with a description throws InputError.
Json spec_schema(const KindTable& kinds, const std::map<std::string, Json>& library);

}  // namespace ub
