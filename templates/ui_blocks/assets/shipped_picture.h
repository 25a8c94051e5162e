// Pictures a page ships in its project (resources/<src>): the path checked to stay in
// resources/, the PNG read, and the picture brought to the exact size of its box.
// Every failure is a stop naming the file, raised before anything is written.
#pragma once

#include <string>
#include <utility>

#include "gen_res/image.h"

namespace ub {

// Largest picture side read.
constexpr int kMostShippedSide = 8192;

// The file of `src` under project_root/resources. Refuses an empty path, a path that is
// absolute, holds ".." or a backslash, or (symbolic links followed) leads out of
// resources/, and a file that does not exist. `key` names the block key in messages.
std::string shipped_path(const std::string& project_root, const std::string& src, const std::string& key);

// The pixel size of the file from its PNG header; refuses a file that is no PNG or has a
// side over kMostShippedSide.
std::pair<int, int> shipped_size(const std::string& path, const std::string& shown);

// The decoded picture; refuses one that cannot be decoded.
gen_res::Image read_shipped(const std::string& path, const std::string& shown);

// The size a pw x ph picture takes in a w x h box: contain scales it down, keeping its
// aspect, until it fits (never up); otherwise it keeps its size, cut to the box.
std::pair<int, int> fitted_size(int pw, int ph, int w, int h, bool contain);

// The picture drawn centred into a transparent w x h picture at its fitted size.
gen_res::Image fit_into_box(const gen_res::Image& src, int w, int h, bool contain);

// Eight hex digits of FNV-1a over the size and pixels, folded to 32 bits.
std::string pixels_digest(const gen_res::Image& img);

}  // namespace ub
