// Scans of the serialised layout: forbidden characters and duplicate captions.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "base/values.h"
#include "controls/serialize.h"

namespace ub {

// Characters outside the engine's font library.
extern const std::u32string BLACKLIST_CHARS;
std::vector<std::pair<std::optional<std::string>, std::string>> find_forbidden_chars(const Json& doc);
Json duplicate_captions(const Json& doc);  // caption -> [keys], only captions seen twice or more
void assert_caption_unique(const Json& doc, const std::string& page_name = "");
// Names the places (see Node::place) of the blocks that made the duplicates.
void assert_caption_unique(const std::vector<ControlRef>& controls, const std::string& page_name = "",
                           const std::vector<std::string>& places = {});
// False when the text certainly holds no forbidden character (all of them are non-ASCII
// and written literally in a layout), so the scan of the parsed document can be skipped.
bool may_hold_forbidden(std::string_view text);

}  // namespace ub
