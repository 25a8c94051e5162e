#include "json2img/picture_files.h"

#include <algorithm>
#include <filesystem>

#include "gen_res/image.h"

namespace fs = std::filesystem;

namespace layout {

std::string picture_path(const std::string& images_dir, const std::string& ref) {
  std::string name = ref.rfind("images/", 0) == 0 ? ref.substr(7) : ref;
  if (name.empty() || name.front() == '/') return "";
  for (const auto& part : fs::path(name))
    if (part == "..") return "";
  return (fs::path(images_dir) / name).string();
}

std::string images_dir_for(const std::string& layout_path) {
  fs::path dir = fs::absolute(layout_path).lexically_normal().parent_path();
  for (fs::path p = dir; !p.empty() && p != p.root_path(); p = p.parent_path())
    if (p.filename() == "ui") return (p.parent_path() / "resources" / "images").string();
  return (dir.parent_path() / "resources" / "images").string();
}

bool resolves_inside(const std::string& dir, const std::string& path) {
  std::error_code ec, ec2;
  fs::path d = fs::canonical(dir, ec), f = fs::canonical(path, ec2);
  if (ec || ec2) return false;
  auto [end, _] = std::mismatch(d.begin(), d.end(), f.begin(), f.end());
  return end == d.end() && f != d;
}

PictureProbe probe_picture(const std::string& images_dir, const std::string& ref) {
  PictureProbe p;
  p.path = picture_path(images_dir, ref);
  std::error_code ec;
  if (p.path.empty()) {
    p.status = PictureStatus::outside;
  } else if (!fs::is_regular_file(p.path, ec)) {
    p.status = PictureStatus::missing;
  } else if (!resolves_inside(images_dir, p.path)) {
    p.status = PictureStatus::outside;
  } else if (!gen_res::png_size(p.path, p.w, p.h) || p.w <= 0 || p.h <= 0) {
    p.status = PictureStatus::not_png;
  } else {
    p.status = p.w > kMaxPictureSide || p.h > kMaxPictureSide ? PictureStatus::too_large : PictureStatus::ok;
  }
  return p;
}

}  // namespace layout
