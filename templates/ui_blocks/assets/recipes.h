// Pictures that are not plain shapes: the row arrow, the check box / radio image and
// the chart. Strokes are drawn at ss times the size with round ends and box-reduced.
#pragma once

#include "assets/asset.h"
#include "gen_res/image.h"
#include "iconlib/iconlib.h"

namespace ub {

// The report's line for a check box whose tick is a wire-frame.
inline constexpr const char* kCheckFallbackLine = "  [回退线框] 勾选符号 check 未走图标库（库不可用）→ gen_res 线框";

gen_res::Image chevron_image(int w, int h, Rgba color, int ss = 8);
// A check box's or radio button's picture; the tick comes from `icons`, or is a wire-frame
// when the library gives no true record for "check" (then *fell_back is set).
gen_res::Image mark_image(const Asset& prm, const iconlib::Index& icons, bool* fell_back = nullptr);
// The least height of a bar whose value is not zero, so no real value looks like none.
inline constexpr int kMinBarPx = 4;
// A line or bar chart. Bars of data with no negative value stand on zero; a limit draws a
// full-width line at its value in limit_color, and the scale reaches it.
gen_res::Image chart_image(const Asset& prm);

}  // namespace ub
