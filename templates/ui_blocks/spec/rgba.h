// Colour texts of the tokens as the picture library's colour type.
#pragma once

#include <string>

#include "base/primitives.h"
#include "gen_res/image.h"

namespace ub {

using Rgba = gen_res::Rgba;

inline Rgba rgba(const std::string& s, int default_a = 255) {
  const auto c = colour_channels(s, default_a);
  return Rgba{c[0], c[1], c[2], c[3]};
}

}  // namespace ub
