// Pictures of a layout, read once each from the project's resources/images.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "gen_res/image.h"
#include "json2img/picture_files.h"

namespace j2i {

class Pictures {
 public:
  explicit Pictures(std::string images_dir) : dir_(std::move(images_dir)) {}
  // The picture, or nullptr when the reference is empty, missing, unreadable or refused.
  const gen_res::Image* get(const std::string& ref);
  const std::vector<std::string>& missing() const { return missing_; }
  // "REF: why" for pictures that were not read: outside the images directory, too large.
  const std::vector<std::string>& refused() const { return refused_; }
  int loaded() const { return loaded_; }

 private:
  std::string dir_;
  std::map<std::string, std::unique_ptr<gen_res::Image>> cache_;
  std::vector<std::string> missing_, refused_;
  int loaded_ = 0;
};

}  // namespace j2i
