// Pictures of a layout from the project's resources/images, each file decoded once however
// many controls name it and under whatever spelling of its path; decoded pictures are
// kept within a memory budget.
#pragma once

#include <cstddef>
#include <list>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "gen_res/image.h"
#include "json2img/picture_files.h"

namespace j2i {

// Decoded pictures kept at most (RGBA bytes); the least recently drawn goes first. A
// single picture is at most 8192 x 8192 (layout::kMaxPictureSide), 256 MiB.
constexpr size_t kPictureBudget = size_t(512) << 20;

class Pictures {
 public:
  explicit Pictures(std::string images_dir, size_t budget = kPictureBudget)
      : dir_(std::move(images_dir)), budget_(budget) {}
  // The picture, or nullptr when the reference is empty, missing, unreadable or refused.
  std::shared_ptr<const gen_res::Image> get(std::string_view ref);
  const std::vector<std::string>& missing() const { return missing_; }
  // "REF: why" for pictures that were not read: outside the images directory, too large.
  const std::vector<std::string>& refused() const { return refused_; }
  // References drawn (each once, aliases of one file included) and files decoded.
  int loaded() const { return loaded_; }
  int decoded() const { return decoded_; }

 private:
  // A file by its device and inode: every path that leads to it is one picture.
  using FileId = std::pair<unsigned long long, unsigned long long>;
  struct Ref {
    bool usable = false;
    FileId file{};
    std::string path;
  };
  struct Decoded {
    std::shared_ptr<const gen_res::Image> image;  // null when the file cannot be decoded
    std::list<FileId>::iterator age;
  };
  std::shared_ptr<const gen_res::Image> decode(const Ref& r, const std::string& ref);

  std::string dir_;
  size_t budget_, held_ = 0;
  std::map<std::string, Ref, std::less<>> refs_;
  std::map<FileId, Decoded> files_;
  std::list<FileId> ages_;  // most recently drawn first
  std::vector<std::string> missing_, refused_;
  int loaded_ = 0, decoded_ = 0;
};

}  // namespace j2i
