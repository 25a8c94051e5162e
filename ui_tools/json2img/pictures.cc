#include "json2img/pictures.h"

namespace j2i {

const gen_res::Image* Pictures::get(const std::string& ref) {
  if (ref.empty()) return nullptr;
  auto it = cache_.find(ref);
  if (it == cache_.end()) {
    std::unique_ptr<gen_res::Image> img;
    layout::PictureProbe pr = layout::probe_picture(dir_, ref);
    if (pr.status == layout::PictureStatus::outside) {
      refused_.push_back(ref + ": leads outside " + dir_);
    } else if (pr.status == layout::PictureStatus::too_large) {
      refused_.push_back(ref + ": " + std::to_string(pr.w) + "x" + std::to_string(pr.h) + " is over " +
                         std::to_string(layout::kMaxPictureSide) + " pixels a side");
    } else {
      if (pr.status == layout::PictureStatus::ok) {
        try {
          img = std::make_unique<gen_res::Image>(gen_res::load_png(pr.path));
          ++loaded_;
        } catch (const std::exception&) {
          img.reset();
        }
      }
      if (!img) missing_.push_back(ref);
    }
    it = cache_.emplace(ref, std::move(img)).first;
  }
  return it->second.get();
}

}  // namespace j2i
