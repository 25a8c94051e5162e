#include "assets/shipped_picture.h"

#include <algorithm>
#include <cmath>
#include <cstdio>
#include <filesystem>
#include <stdexcept>

#include "assets/picture_names.h"
#include "base/values.h"

namespace fs = std::filesystem;

namespace ub {

namespace {

// True when p, made canonical as far as it exists, lies in dir.
bool lies_in(const fs::path& dir, const fs::path& p) {
  std::error_code ec;
  const fs::path d = fs::weakly_canonical(dir, ec);
  if (ec) return false;
  const fs::path q = fs::weakly_canonical(p, ec);
  if (ec) return false;
  auto di = d.begin(), qi = q.begin();
  for (; di != d.end(); ++di, ++qi)
    if (qi == q.end() || *di != *qi) return false;
  return qi != q.end();
}

}  // namespace

std::string shipped_path(const std::string& project_root, const std::string& src, const std::string& key) {
  if (src.empty()) stop(cat("[X] ", key, " 不能为空（给 resources/ 下的图片路径，如 photos/logo.png）"));
  if (project_root.empty()) stop(cat("[X] ", key, " 要从项目的 resources/ 读图，但没有项目目录：", src));
  const fs::path rel(src);
  bool outward = rel.is_absolute() || src.find('\\') != std::string::npos || src.find('\0') != std::string::npos;
  for (const auto& part : rel)
    if (part == "..") outward = true;
  const fs::path res = fs::path(project_root) / "resources";
  const fs::path file = res / rel;
  if (outward || !lies_in(res, file)) stop(cat("[X] ", key, " 必须是 resources/ 里的相对路径：", src));
  std::error_code ec;
  if (!fs::is_regular_file(file, ec)) stop(cat("[X] ", key, " 找不到图片：resources/", src));
  return file.string();
}

std::pair<int, int> shipped_size(const std::string& path, const std::string& shown) {
  int w = 0, h = 0;
  if (!gen_res::png_size(path, w, h) || w <= 0 || h <= 0) stop(cat("[X] 图片不是可读的 PNG：", shown));
  if (w > kMostShippedSide || h > kMostShippedSide)
    stop(cat("[X] 图片太大（", w, "x", h, "，边长上限 ", kMostShippedSide, "）：", shown));
  return {w, h};
}

gen_res::Image read_shipped(const std::string& path, const std::string& shown) {
  shipped_size(path, shown);
  try {
    return gen_res::load_png(path);
  } catch (const std::exception&) {
    stop(cat("[X] 图片不是可读的 PNG：", shown));
  }
}

std::pair<int, int> fitted_size(int pw, int ph, int w, int h, bool contain) {
  if (!contain) return {std::min(pw, w), std::min(ph, h)};
  const double s = std::min({1.0, (double)w / pw, (double)h / ph});
  return {std::clamp((int)half_even(pw * s), 1, w), std::clamp((int)half_even(ph * s), 1, h)};
}

gen_res::Image fit_into_box(const gen_res::Image& src, int w, int h, bool contain) {
  gen_res::Image out(w, h);
  const auto [fw, fh] = fitted_size(src.w, src.h, w, h, contain);
  gen_res::Image part;
  if (contain) {
    part = fw == src.w && fh == src.h ? src : gen_res::resize_box(src, fw, fh);
  } else {
    // The middle of a picture larger than the box.
    const int x0 = (int)floordiv(src.w - fw, 2), y0 = (int)floordiv(src.h - fh, 2);
    part = gen_res::crop(src, x0, y0, x0 + fw, y0 + fh);
  }
  // Copied, not composited: the box shows the picture's own alpha.
  const int dx = (int)floordiv(w - fw, 2), dy = (int)floordiv(h - fh, 2);
  for (int y = 0; y < fh; ++y) std::copy_n(part.at(0, y), (size_t)fw * 4, out.at(dx, dy + y));
  return out;
}

std::string pixels_digest(const gen_res::Image& img) {
  const uint64_t h = pixel_digest(img);
  char buf[9];
  std::snprintf(buf, sizeof buf, "%08x", (unsigned)((h >> 32) ^ h));
  return buf;
}

}  // namespace ub
