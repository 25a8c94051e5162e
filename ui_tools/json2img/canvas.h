// The preview's pixel surface: source-over drawing of fills, pictures and glyph
// coverage, always cut to a clip rectangle.
#pragma once

#include <cstdint>

#include "gen_res/image.h"
#include "json2img/layout_model.h"

namespace j2i {

using gen_res::Rgba;
using layout::Rect;

class Canvas {
 public:
  Canvas(int w, int h, Rgba ground);

  const gen_res::Image& image() const { return img_; }
  Rect bounds() const { return {0, 0, img_.w, img_.h}; }

  void fill(const Rect& r, Rgba c, const Rect& clip);
  // 1-pixel outline inside r.
  void frame(const Rect& r, Rgba c, const Rect& clip);
  // Picture with its top-left corner at (x, y).
  void draw_image(const gen_res::Image& src, int x, int y, const Rect& clip);
  // 8-bit coverage (rows of pitch bytes) tinted with c, top-left at (x, y).
  void draw_coverage(const uint8_t* cov, int w, int h, int pitch, int x, int y, Rgba c, const Rect& clip);

 private:
  void blend(int x, int y, int r, int g, int b, int a);
  gen_res::Image img_;
};

}  // namespace j2i
