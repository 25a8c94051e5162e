// RGBA raster with straight (non-premultiplied) alpha, and the few operations the
// picture recipes and the preview renderer share: composite, crop, box reduction, PNG.
#pragma once

#include <cstdint>
#include <string>
#include <vector>

namespace gen_res {

struct Rgba {
  int r = 0, g = 0, b = 0, a = 255;
  bool operator==(const Rgba&) const = default;
};

struct Image {
  int w = 0, h = 0;
  std::vector<uint8_t> px;  // w*h*4, row-major RGBA, straight alpha

  Image() = default;
  Image(int w, int h, Rgba fill = {0, 0, 0, 0});
  uint8_t* at(int x, int y) { return &px[((size_t)y * w + x) * 4]; }
  const uint8_t* at(int x, int y) const { return &px[((size_t)y * w + x) * 4]; }
};

// Single-channel coverage (0..255).
struct Mask {
  int w = 0, h = 0;
  std::vector<uint8_t> v;
  Mask() = default;
  Mask(int w, int h) : w(w), h(h), v((size_t)w * h, 0) {}
  uint8_t& at(int x, int y) { return v[(size_t)y * w + x]; }
  uint8_t at(int x, int y) const { return v[(size_t)y * w + x]; }
};

// Source-over of src onto dst at (dx, dy); the offset must not be negative.
void alpha_composite(Image& dst, const Image& src, int dx, int dy);
Image crop(const Image& src, int x0, int y0, int x1, int y1);
Mask crop(const Mask& src, int x0, int y0, int x1, int y1);
// Replace the alpha channel with a mask of the same size.
void putalpha(Image& img, const Mask& m);
// Area-average reduction (box filter) to w x h.
Image resize_box(const Image& src, int w, int h);

// PNG in and out. load_png converts any PNG to RGBA; throws std::runtime_error on failure.
Image load_png(const std::string& path);
void save_png(const Image& img, const std::string& path);
// Pixel size of a PNG file without decoding it; false if it is no PNG.
bool png_size(const std::string& path, int& w, int& h);

}  // namespace gen_res
