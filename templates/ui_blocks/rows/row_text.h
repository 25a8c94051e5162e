// Pieces shared by the row builders: the value of a row and the text band of a row.
#pragma once

#include <string>

#include "kinds/build.h"

namespace ub {

// The value text of a row: `value`, replaced by a non-empty `value_short` on a compact page.
std::string row_value(const PageContext& c, const BlockRecord& blk);

// Label and value of a row in the family's text box: label above value when the
// page has room for two lines, otherwise label left and value right on one line.
void row_text_band(Build& bd, NodeList& out, const std::string& name, const std::string& label,
                   const std::string& value, const RowBoxes& rb, int y0);

}  // namespace ub
