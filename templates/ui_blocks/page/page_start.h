// The start of a page run: the page taken out of the spec and checked, and the page
// context built from it and the installation before any block is composed.
#pragma once

#include <string>

#include "base/values.h"
#include "controls/emit_layer.h"
#include "spec/notes.h"
#include "spec/page_context.h"

namespace ub {

// What the driver found for a run: the block library directory and the table of
// the keys every control record must carry.
struct Installation {
  std::string blocks_dir;
  EmitLayer required_keys;
};

// Moves the page out of the spec (its key is left null), so the blocks are held once;
// refuses a spec or page of the wrong type and blocks that are no mappings.
Json take_page(Json& spec);

// Tokens, screen, metrics, block library and colours of the page, after the page-wide
// checks. The fixed bands' changes to bar_top and viewport are made here, so the metrics
// never change afterwards. Unknown block keys and the band changes are noted in `notes`.
PageContext build_page_context(const Json& spec, const Json& page, std::string page_name,
                               const Installation& inst, Notes& notes);

}  // namespace ub
