// Other ways to look at a page than its first screen as the device shows it: the whole
// scroll content as one long picture, and the hidden overlays (dialogs, toasts) shown.
#pragma once

#include "json2img/layout_model.h"

namespace j2i {

// Shows every hidden window at the root (dialogs and toasts are such windows) with what
// inside it is visible on its own. Hidden controls deeper in the page stay hidden.
void show_overlays(layout::Layout& lay);

// Grows every scroll window to the height of its content, moves what lies below it down by
// as much and makes the screen that much higher: the picture becomes a long screenshot.
// Stops, returning false, once the screen would be higher than max_height: lay.H is then
// the height reached so far (at most INT_MAX), the layout only partly unrolled.
bool unroll_scrolling(layout::Layout& lay, long long max_height);

}  // namespace j2i
