// Pictures of a layout, read once each from the project's resources/images.
#pragma once

#include <map>
#include <memory>
#include <string>
#include <vector>

#include "gen_res/image.h"

namespace j2i {

// The file a picture reference names: "images/x.png" (or a bare "x.png") lies in
// images_dir. Empty for references that would leave that directory.
std::string picture_path(const std::string& images_dir, const std::string& ref);

// resources/images of the project that holds a layout file: the parent of the nearest
// ancestor directory named "ui", else the parent of the layout's directory.
std::string images_dir_for(const std::string& layout_path);

class Pictures {
 public:
  explicit Pictures(std::string images_dir) : dir_(std::move(images_dir)) {}
  // The picture, or nullptr when the reference is empty, missing or unreadable.
  const gen_res::Image* get(const std::string& ref);
  const std::vector<std::string>& missing() const { return missing_; }
  int loaded() const { return loaded_; }

 private:
  std::string dir_;
  std::map<std::string, std::unique_ptr<gen_res::Image>> cache_;
  std::vector<std::string> missing_;
  int loaded_ = 0;
};

}  // namespace j2i
