// Where the picture a layout names lies in resources/images, and whether it may be read:
// references and symbolic links leading out of that directory, and pictures too large
// to decode, are refused before any pixel is read.
#pragma once

#include <string>

namespace layout {

// Largest picture side read.
constexpr int kMaxPictureSide = 8192;

// The file a picture reference names: "images/x.png" (or a bare "x.png") lies in
// images_dir. Empty for references that would leave that directory.
std::string picture_path(const std::string& images_dir, const std::string& ref);

// resources/images of the project that holds a layout file: the parent of the nearest
// ancestor directory named "ui", else the parent of the layout's directory.
std::string images_dir_for(const std::string& layout_path);

// True when path exists and, all symbolic links followed, lies inside dir.
bool resolves_inside(const std::string& dir, const std::string& path);

enum class PictureStatus { ok, outside, missing, not_png, too_large };

struct PictureProbe {
  PictureStatus status = PictureStatus::missing;
  std::string path;  // the file, empty when the reference leaves images_dir
  int w = 0, h = 0;  // from the PNG header, when it was read
};

// Looks at a reference without decoding the picture: only its PNG header is read.
PictureProbe probe_picture(const std::string& images_dir, const std::string& ref);

}  // namespace layout
