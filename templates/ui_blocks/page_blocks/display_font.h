// The display font of large readings (big_value, the value of a gauge): a size of the
// tokens' `display` steps, scaled with the screen height like the font roles, and stepped
// down until a text fits its width.
#pragma once

#include <string>

#include "spec/page_context.h"

namespace ub {

// The display size of the screen: the fixed `compact` size on a compact page, else the
// `base` size scaled by H / base_screen.height and snapped to the `steps`, within
// `min`..`max`.
int display_font(const PageContext& page);

// The largest size not above `start`, from the display steps and then the font roles
// h1, h2, b1, at which the box of `txt` (text_box_w at `align`) and `beside` more pixels
// fit `width`; the smallest of those when none does.
int fitting_font(const PageContext& page, int start, const std::string& txt, int beside, int width,
                 int align = 37);

// The height of a text line of font size fs: fs × size.text_h_of_fs on the grid.
int line_height(const PageContext& page, int fs);

}  // namespace ub
