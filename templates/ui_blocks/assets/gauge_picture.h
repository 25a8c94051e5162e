// The picture of a gauge: a ring open at the bottom (270 degrees, from lower left round
// to lower right), the share of its value drawn over it, and a tick across the ring at
// the limit. Strokes have round ends and are drawn at 8 times the size, box-reduced.
#pragma once

#include "assets/asset.h"
#include "gen_res/image.h"

namespace ub {

// Where a share (0..1) of the range lies on the ring, in degrees clockwise from the
// positive x axis of the picture (y down): 135 for none, 405 for all.
double gauge_angle(double share);

gen_res::Image gauge_image(const Asset& prm);

}  // namespace ub
