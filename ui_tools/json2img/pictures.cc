#include "json2img/pictures.h"

#include <filesystem>

namespace fs = std::filesystem;

namespace j2i {

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

const gen_res::Image* Pictures::get(const std::string& ref) {
  if (ref.empty()) return nullptr;
  auto it = cache_.find(ref);
  if (it == cache_.end()) {
    std::unique_ptr<gen_res::Image> img;
    std::string path = picture_path(dir_, ref);
    std::error_code ec;
    if (!path.empty() && fs::is_regular_file(path, ec)) {
      try {
        img = std::make_unique<gen_res::Image>(gen_res::load_png(path));
        ++loaded_;
      } catch (const std::exception&) {
        img.reset();
      }
    }
    if (!img) missing_.push_back(ref);
    it = cache_.emplace(ref, std::move(img)).first;
  }
  return it->second.get();
}

}  // namespace j2i
