// Wire-frame glyphs: simple line drawings on a 24-unit grid with a stroke of 2 units,
// used where an icon has no picture in the icon library. Tokens without a drawing of
// their own get a generic glyph (a framed box with a diagonal), never an empty picture.
#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "gen_res/image.h"

namespace gen_res {

// The glyph of `token` drawn in a size x size square, centred on a transparent picture
// of the canvas size when one is given (else size x size).
Image glyph_image(const std::string& token, int size, Rgba color,
                  std::optional<std::pair<int, int>> canvas = {});

// glyph_image written as out_dir/name; returns the path.
std::string glyph_icon(const std::string& out_dir, const std::string& name, const std::string& token, int size,
                       Rgba color, std::optional<std::pair<int, int>> canvas = {});

// True when the token has a drawing of its own rather than the generic glyph.
bool has_wireframe(const std::string& token);
std::vector<std::string> wireframe_tokens();

}  // namespace gen_res
