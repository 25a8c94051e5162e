#include "json2img/pictures.h"

#include <sys/stat.h>

namespace j2i {

std::shared_ptr<const gen_res::Image> Pictures::get(std::string_view ref) {
  if (ref.empty()) return nullptr;
  auto it = refs_.find(ref);
  if (it == refs_.end()) {
    const std::string name(ref);
    Ref r;
    layout::PictureProbe pr = layout::probe_picture(dir_, name);
    struct stat st;
    if (pr.status == layout::PictureStatus::outside) {
      refused_.push_back(name + ": leads outside " + dir_);
    } else if (pr.status == layout::PictureStatus::too_large) {
      refused_.push_back(name + ": " + std::to_string(pr.w) + "x" + std::to_string(pr.h) + " is over " +
                         std::to_string(layout::kMaxPictureSide) + " pixels a side");
    } else if (pr.status == layout::PictureStatus::ok && ::stat(pr.path.c_str(), &st) == 0) {
      r.usable = true;
      r.file = {(unsigned long long)st.st_dev, (unsigned long long)st.st_ino};
      r.path = pr.path;
    }
    it = refs_.emplace(name, std::move(r)).first;
    auto img = it->second.usable ? decode(it->second, name) : nullptr;
    if (img) ++loaded_;
    else if (pr.status != layout::PictureStatus::outside && pr.status != layout::PictureStatus::too_large)
      missing_.push_back(name);
    return img;
  }
  return it->second.usable ? decode(it->second, it->first) : nullptr;
}

std::shared_ptr<const gen_res::Image> Pictures::decode(const Ref& r, const std::string&) {
  auto f = files_.find(r.file);
  if (f != files_.end()) {
    ages_.splice(ages_.begin(), ages_, f->second.age);
    return f->second.image;
  }
  std::shared_ptr<const gen_res::Image> img;
  try {
    img = std::make_shared<const gen_res::Image>(gen_res::load_png(r.path));
    ++decoded_;
  } catch (const std::exception&) {
    img.reset();
  }
  const size_t bytes = img ? img->px.size() : 0;
  // Room for the new picture: the least recently drawn ones go (they are decoded again if
  // drawn again).
  while (held_ + bytes > budget_ && !ages_.empty()) {
    auto old = files_.find(ages_.back());
    held_ -= old->second.image ? old->second.image->px.size() : 0;
    files_.erase(old);
    ages_.pop_back();
  }
  ages_.push_front(r.file);
  files_[r.file] = {img, ages_.begin()};
  held_ += bytes;
  return img;
}

}  // namespace j2i
