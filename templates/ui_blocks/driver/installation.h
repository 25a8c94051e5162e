// The installation a run composes with, found beside the program: the design tokens, the
// block library, the icon library and the required-keys table, each loaded once.
#pragma once

#include "base/values.h"
#include "page/page_start.h"

namespace ub {

// The block library's own tokens: blocks_dir()/_tokens.json, parsed.
Json library_tokens();

// The library's tokens with the theme at tokens_file laid over them (see spec/theme.h);
// the library's own when tokens_file is empty. A bad theme throws InputError naming it.
Json run_tokens(const std::string& tokens_file);

// The installation beside the program, with the tokens given (parsed; the library's own,
// or those with another file laid over them).
Installation installation(Json tokens);

// The line the report gives a run whose required-keys table is missing; "" when it is
// there. Its records then carry only their own fields.
std::string required_keys_warning(const EmitLayer& layer);

}  // namespace ub
