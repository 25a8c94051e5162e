// Visible rectangles of one layout indexed by the screen cells they touch, so that an
// overlap query looks at neighbours only and a page's scan stays near linear.
#pragma once

#include <functional>
#include <vector>

#include "json2img/layout_model.h"

namespace check {

class OverlapGrid {
 public:
  OverlapGrid(int screen_w, int screen_h);
  // Adds control index i (in rising order) with its rectangle; empty ones are skipped.
  void add(int i, const layout::Rect& r);
  // The lowest index above `after` whose rectangle touches a cell of r and for which
  // accept(index) holds; -1 when there is none. Indices are tried in rising order and
  // the search stops at the first accepted one.
  int first(const layout::Rect& r, int after, const std::function<bool(int)>& accept) const;

 private:
  static constexpr int kCells = 16;  // per side
  // Cell range [c0, c1) x [r0, r1) of a rectangle.
  void span(const layout::Rect& r, int& c0, int& c1, int& r0, int& r1) const;
  int cw_, ch_;
  std::vector<std::vector<int>> cells_;
  std::vector<int> big_;  // rectangles spanning many cells: one list, not one entry per cell
};

}  // namespace check
