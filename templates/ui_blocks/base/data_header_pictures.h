// The pictures the generated list and wheel data headers (src/logic/<page>Data.h) name: a
// list row's icon is shown by the device from the header, not from a layout, so pruning and
// the unused-picture check count these names as used.
#pragma once

#include <set>
#include <string>
#include <string_view>

namespace ub {

// The picture file names ("ic_fan_24.png") quoted in one header's text.
std::set<std::string> pictures_in_data_header(std::string_view text);

// The same for every src/logic/*Data.h of the project at root; none when there are none.
std::set<std::string> data_header_pictures(const std::string& root);

}  // namespace ub
