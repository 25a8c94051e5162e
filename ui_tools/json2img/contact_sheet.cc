#include "json2img/contact_sheet.h"

#include <algorithm>

namespace j2i {

gen_res::Image contact_sheet(const std::vector<SheetItem>& items, TextPainter& tp) {
  int w = 0, h = 0;
  for (const auto& it : items) {
    w += it.image.w;
    h = std::max(h, it.image.h);
  }
  if (items.size() > 1) w += kSheetGap * (int)(items.size() - 1);
  Canvas cv(std::max(w, 1), h + kSheetBand, Rgba{32, 32, 32, 255});
  const TextStyle label{16, 36, false, Rgba{230, 230, 230, 255}};
  int x = 0;
  for (const auto& it : items) {
    tp.draw(cv, it.label, Rect{x + 4, 0, x + it.image.w, kSheetBand}, label, cv.bounds());
    cv.draw_image(it.image, x, kSheetBand, cv.bounds());
    x += it.image.w + kSheetGap;
  }
  return cv.image();
}

}  // namespace j2i
