// Shared test set-up: paths point at the source tree, so the block library and the
// icon library of the checkout are used whatever the build directory.
#pragma once

#include <string>

#include "page/page_start.h"

namespace ubtest {

// Source root of the checkout.
std::string source_dir();
// The built executable.
std::string compose_exe();
// The checkout's icon library, block library and required-keys table.
std::string icon_dir();
std::string blocks_dir();
const ub::Installation& installation();
// The installation of another block library directory, with its own _tokens.json unless
// tokens are given.
ub::Installation installation_of(const std::string& blocks_dir, Json tokens = Json());
const ub::EmitLayer& required_keys();
// Compares a produced file with its reviewed copy at path. A layout that differs is
// reported by its first differing control (its key path) and the keys that differ; other
// files by their first differing line. With UB_UPDATE_EXPECTED set (not empty) the
// reviewed copy is rewritten instead: review the diff before committing.
void expect_golden(const std::string& got, const std::string& path);
// Pins an output too large to review by the 64-bit FNV-1a hash of its text, kept in the
// file at path (one hex line); the same update switch rewrites it.
void expect_pinned(const std::string& got, const std::string& path);
// A fresh temporary directory, removed by the caller if wanted.
std::string temp_dir(const std::string& tag);
// A minimal spec with a resolution, a title and a footer; blocks go into page.blocks.
Json page_spec(int w, int h, Json blocks = Json::array());
// The keys of a mapping, in order.
std::vector<std::string> keys_of(const Json& o);

}  // namespace ubtest
