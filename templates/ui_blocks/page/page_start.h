// The start of a page run: the page taken out of the spec and checked, and the page
// context built from it and the installation before any block is composed.
#pragma once

#include <map>
#include <string>

#include "base/values.h"
#include "controls/emit_layer.h"
#include "iconlib/iconlib.h"
#include "page/page_records.h"
#include "spec/notes.h"
#include "spec/page_context.h"

namespace ub {

// What a run composes with, loaded once by the driver and read by every page (every size)
// of the run: the design tokens, the block library, the icon library and the table of the
// keys every control record must carry.
struct Installation {
  Json tokens;                         // _tokens.json, parsed (a mapping)
  std::map<std::string, Json> blocks;  // the block library: type -> definition
  iconlib::Index icons;
  EmitLayer required_keys;
};

// The installation of the tokens given (already parsed, so that a caller may lay other
// tokens over the library's own), the block library in blocks_dir, the icon library in
// icons_dir and the required-keys table at required_keys_path. Tokens that are no mapping,
// or a library that cannot be read, are bad input; a missing icon library or table only
// makes those unavailable.
Installation load_installation(Json tokens, const std::string& blocks_dir, const std::string& icons_dir,
                               const std::string& required_keys_path);

// Moves the page out of the spec (its key is left null), so the blocks are held once;
// refuses a spec or page of the wrong type and blocks that are no mappings.
Json take_page(Json& spec);

// Screen, metrics and colours of the page over the installation's tokens and library,
// after the page-wide checks of its records. The fixed bands' changes to bar_top and
// viewport are made here, so the metrics never change afterwards. Unknown block keys and
// the band changes are noted in `notes`.
PageContext build_page_context(const Json& spec, const Json& page, const PageRecords& records, std::string page_name,
                               const Installation& inst, Notes& notes);

}  // namespace ub
