// The controls of a layout with absolute boxes, for the inspector of the preview page.
#pragma once

#include <string>
#include <vector>

#include <nlohmann/json.hpp>

namespace serve {

// One entry per control in definition order: caption, type, key, left/top/width/height on the
// screen (parents' offsets added), text, fontSize, visible, pictures (file names under
// resources/images) and notes (indices into `notes` of the lines that name the caption).
nlohmann::json control_boxes(const nlohmann::ordered_json& layout, const std::vector<std::string>& notes);

// "images/a.png" → "a.png"; anything that is not a plain picture name → "".
std::string picture_name(const std::string& ref);

}  // namespace serve
