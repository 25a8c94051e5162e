// Access to the icon library components/icons: monochrome pictures (white, alpha =
// coverage) at fixed size tiers, an outlined form (state "off") and, where the icon
// set has one, a filled form (state "on"); index.json maps semantic tokens to records.
#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include <nlohmann/json.hpp>

#include "gen_res/image.h"

namespace iconlib {

using Json = nlohmann::ordered_json;

// The size tiers of the library, largest first.
const std::vector<int>& tiers();

// The library directory, as the driver set it (normally <repo>/components/icons).
std::string root();
// Points the library at a directory and forgets what was loaded; "" means no library.
void set_root(const std::string& dir);

// True when the library's index loads.
bool available();

// The files of the library read since set_root: index.json when it loaded, then each
// picture in the order first read. For depfiles and build stamps.
std::vector<std::string> files_read();

// The record of a token (name, icon, category, style, states), or nothing when the
// library has no such semantic name or is unavailable.
std::optional<Json> lookup(const std::string& token);
// The same record in place (null for none), valid until set_root.
const Json* find(const std::string& token);

// The tier for a picture size: the largest tier not above the size, the smallest
// tier for sizes below it.
int tier_of(int size);

// The token's picture at the tier of `size`, recoloured to `color` (alpha scaled by
// the picture's coverage), with {name, tier, render}. A tier larger than the size is
// reduced to size x size by area averaging, so the picture never exceeds the box.
// state "on" takes the filled form where there is one. Throws std::runtime_error for
// an unknown token or a missing picture.
std::pair<gen_res::Image, Json> produce(const std::string& token, int size, gen_res::Rgba color,
                                        const std::optional<std::string>& state = {});

}  // namespace iconlib
