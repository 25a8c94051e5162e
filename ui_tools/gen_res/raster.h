// Strokes drawn "at a multiple of the final size, then box-reduced", without the big
// picture: each final pixel keeps one bit per subsample, shapes set the bits of the
// subsamples whose centres they cover, and the reduction counts bits. For a picture
// in one colour this equals drawing at ss times the size and area-averaging, but
// costs memory and time only in proportion to the final size and the strokes.
#pragma once

#include <cstdint>
#include <utility>
#include <vector>

#include "gen_res/image.h"

namespace gen_res {

using Point = std::pair<double, double>;

class SsCanvas {
 public:
  // A w x h final picture sampled ss x ss times per pixel. Coordinates given to the
  // drawing calls are in the big grid (final pixel x covers [x*ss, (x+1)*ss)).
  SsCanvas(int w, int h, int ss);

  int width() const { return w_; }
  int height() const { return h_; }
  int ss() const { return ss_; }

  // A line through pts, `width` wide, with flat ends; with round_joints every inner
  // point also gets a disc of the line's width, as a curved joint does.
  void line(const std::vector<Point>& pts, double width, bool round_joints);
  // A filled ellipse given by its bounding box.
  void ellipse(double x0, double y0, double x1, double y1);
  // A circle outline: the points between radius r_in and r_out around (cx, cy).
  void ring(double cx, double cy, double r_out, double r_in);
  // A filled convex polygon.
  void polygon(const std::vector<Point>& pts);

  // Covered fraction of each final pixel, 0..255.
  Mask coverage() const;
  // The picture in one colour: alpha = colour alpha x covered fraction.
  Image paint(Rgba color) const;

 private:
  // Sets the subsamples of big-grid row j whose centres lie in [xl, xr].
  void span(int j, double xl, double xr);
  int w_, h_, ss_, words_;
  std::vector<uint64_t> bits_;
};

}  // namespace gen_res
