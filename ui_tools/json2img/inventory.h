// The --report inventory: one line per control, nested entries indented below it.
#pragma once

#include <string>
#include <vector>

#include "json2img/layout_model.h"

namespace j2i {

// Lines of the inventory, without the summary. Each control line reads
//   <indent><key> <type> "<caption>" @<left>,<top> <width>x<height> [text "..." | hint "..."]
//   [pic <picture>] [hidden] [clipped]
// with absolute boxes; radio buttons and list template entries follow their control.
std::vector<std::string> inventory_lines(const layout::Layout& lay);

}  // namespace j2i
