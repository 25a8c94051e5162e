// Previews of one page at several sizes side by side at 1:1, each with its label in a band
// above it.
#pragma once

#include <string>
#include <vector>

#include "gen_res/image.h"
#include "json2img/text_painter.h"

namespace j2i {

struct SheetItem {
  std::string label;  // "800x480"
  gen_res::Image image;
};

constexpr int kSheetGap = 16;   // between two previews
constexpr int kSheetBand = 28;  // the label band over the previews

// Width: the previews' widths plus a gap between each two; height: the highest preview
// plus the label band.
gen_res::Image contact_sheet(const std::vector<SheetItem>& items, TextPainter& tp);

}  // namespace j2i
