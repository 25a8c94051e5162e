#include "gen_res/image.h"

#include <png.h>

#include <algorithm>
#include <cstdio>
#include <cstring>
#include <memory>
#include <stdexcept>

#include "gen_res/png_writer.h"

namespace gen_res {

Image::Image(int w_, int h_, Rgba f) : w(w_ > 0 ? w_ : 0), h(h_ > 0 ? h_ : 0) {
  const size_t row = (size_t)w * 4, size = row * h;
  if (size == 0 || (f.r == 0 && f.g == 0 && f.b == 0 && f.a == 0)) {
    px.resize(size);
    return;
  }
  // One row by hand, the others appended: every byte is written once (no zeroing first).
  std::vector<uint8_t> one;
  one.reserve(row);
  for (int x = 0; x < w; ++x) one.insert(one.end(), {(uint8_t)f.r, (uint8_t)f.g, (uint8_t)f.b, (uint8_t)f.a});
  px.reserve(size);
  for (int y = 0; y < h; ++y) px.insert(px.end(), one.begin(), one.end());
}

void alpha_composite(Image& dst, const Image& src, int dx, int dy) {
  if (dx < 0 || dy < 0) throw std::runtime_error("alpha_composite: negative offset");
  for (int y = 0; y < src.h; ++y) {
    int ty = y + dy;
    if (ty >= dst.h) break;
    for (int x = 0; x < src.w; ++x) {
      int tx = x + dx;
      if (tx >= dst.w) break;
      const uint8_t* s = src.at(x, y);
      uint8_t* d = dst.at(tx, ty);
      int sa = s[3];
      if (sa == 0) continue;
      if (sa == 255) {
        std::memcpy(d, s, 4);
        continue;
      }
      double a_s = sa / 255.0, a_d = d[3] / 255.0;
      double a_o = a_s + a_d * (1 - a_s);
      for (int c = 0; c < 3; ++c) {
        double v = (s[c] * a_s + d[c] * a_d * (1 - a_s)) / a_o;
        d[c] = (uint8_t)(v + 0.5);
      }
      d[3] = (uint8_t)(a_o * 255 + 0.5);
    }
  }
}

Image crop(const Image& src, int x0, int y0, int x1, int y1) {
  Image out(x1 - x0, y1 - y0);
  for (int y = 0; y < out.h; ++y)
    for (int x = 0; x < out.w; ++x) {
      int sx = x + x0, sy = y + y0;
      if (sx >= 0 && sy >= 0 && sx < src.w && sy < src.h) std::memcpy(out.at(x, y), src.at(sx, sy), 4);
    }
  return out;
}

Mask crop(const Mask& src, int x0, int y0, int x1, int y1) {
  Mask out(x1 - x0 > 0 ? x1 - x0 : 0, y1 - y0 > 0 ? y1 - y0 : 0);
  for (int y = 0; y < out.h; ++y)
    for (int x = 0; x < out.w; ++x) {
      int sx = x + x0, sy = y + y0;
      if (sx >= 0 && sy >= 0 && sx < src.w && sy < src.h) out.at(x, y) = src.at(sx, sy);
    }
  return out;
}

void putalpha(Image& img, const Mask& m) {
  for (int y = 0; y < img.h && y < m.h; ++y)
    for (int x = 0; x < img.w && x < m.w; ++x) img.at(x, y)[3] = m.at(x, y);
}

Image resize_box(const Image& src, int w, int h) {
  Image out(w, h);
  if (src.w == 0 || src.h == 0 || w == 0 || h == 0) return out;
  double sx = (double)src.w / w, sy = (double)src.h / h;
  for (int y = 0; y < h; ++y) {
    double y0 = y * sy, y1 = (y + 1) * sy;
    for (int x = 0; x < w; ++x) {
      double x0 = x * sx, x1 = (x + 1) * sx;
      // Premultiplied area average, then back to straight alpha.
      double acc[4] = {0, 0, 0, 0}, area = 0;
      for (int yy = (int)y0; yy < y1 && yy < src.h; ++yy) {
        double wy = std::min<double>(yy + 1, y1) - std::max<double>(yy, y0);
        if (wy <= 0) continue;
        for (int xx = (int)x0; xx < x1 && xx < src.w; ++xx) {
          double wx = std::min<double>(xx + 1, x1) - std::max<double>(xx, x0);
          if (wx <= 0) continue;
          double wgt = wx * wy;
          const uint8_t* p = src.at(xx, yy);
          double a = p[3];
          acc[0] += p[0] * a * wgt;
          acc[1] += p[1] * a * wgt;
          acc[2] += p[2] * a * wgt;
          acc[3] += a * wgt;
          area += wgt;
        }
      }
      uint8_t* d = out.at(x, y);
      if (area <= 0 || acc[3] <= 0) {
        d[0] = d[1] = d[2] = d[3] = 0;
        continue;
      }
      for (int c = 0; c < 3; ++c) {
        double v = acc[c] / acc[3];
        d[c] = (uint8_t)std::min(255.0, v + 0.5);
      }
      d[3] = (uint8_t)std::min(255.0, acc[3] / area + 0.5);
    }
  }
  return out;
}

namespace {
struct FileCloser {
  void operator()(FILE* f) const {
    if (f) std::fclose(f);
  }
};
}  // namespace

Image load_png(const std::string& path) {
  png_image pi;
  std::memset(&pi, 0, sizeof pi);
  pi.version = PNG_IMAGE_VERSION;
  if (!png_image_begin_read_from_file(&pi, path.c_str()))
    throw std::runtime_error("cannot read PNG " + path + ": " + pi.message);
  pi.format = PNG_FORMAT_RGBA;
  Image img((int)pi.width, (int)pi.height);
  if (!png_image_finish_read(&pi, nullptr, img.px.data(), 0, nullptr)) {
    std::string msg = pi.message;
    png_image_free(&pi);
    throw std::runtime_error("cannot decode PNG " + path + ": " + msg);
  }
  return img;
}

void save_png(const Image& img, const std::string& path) {
  std::string png = encode_png(img);
  std::unique_ptr<FILE, FileCloser> f(std::fopen(path.c_str(), "wb"));
  if (!f || std::fwrite(png.data(), 1, png.size(), f.get()) != png.size() || std::fflush(f.get()) != 0)
    throw std::runtime_error("cannot write " + path);
}

bool png_size(const std::string& path, int& w, int& h) {
  std::unique_ptr<FILE, FileCloser> f(std::fopen(path.c_str(), "rb"));
  if (!f) return false;
  unsigned char hdr[24];
  if (std::fread(hdr, 1, 24, f.get()) != 24) return false;
  static const unsigned char sig[8] = {0x89, 'P', 'N', 'G', '\r', '\n', 0x1a, '\n'};
  if (std::memcmp(hdr, sig, 8) != 0 || std::memcmp(hdr + 12, "IHDR", 4) != 0) return false;
  w = (hdr[16] << 24) | (hdr[17] << 16) | (hdr[18] << 8) | hdr[19];
  h = (hdr[20] << 24) | (hdr[21] << 16) | (hdr[22] << 8) | hdr[23];
  return true;
}

}  // namespace gen_res
