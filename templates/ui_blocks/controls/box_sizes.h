// A screen too small for a page gives controls of negative width or height: such a page
// is refused, never written.
#pragma once

#include <string>

#include "controls/node.h"

namespace ub {

// The first control of the forest (pre-order) whose box is negative.
struct ScreenTooSmall : InputError {
  ScreenTooSmall(const std::string& what, std::string caption, Pos pos)
      : InputError(what), caption(std::move(caption)), pos(pos) {}
  std::string caption;
  Pos pos;
};

// Throws ScreenTooSmall for the first control with a negative width or height.
void check_box_sizes(const NodeList& nodes, int W, int H);

}  // namespace ub
