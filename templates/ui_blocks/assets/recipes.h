// Pictures that are not plain shapes: the row arrow, the check box / radio image and
// the chart. Strokes are drawn at ss times the size with round ends and box-reduced.
#pragma once

#include "assets/asset.h"
#include "gen_res/image.h"

namespace ub {

gen_res::Image chevron_image(int w, int h, Rgba color, int ss = 8);
gen_res::Image mark_image(const Asset& prm);
gen_res::Image chart_image(const Asset& prm);

}  // namespace ub
