// Pieces shared by the row builders: block readings and the text band of a row.
#pragma once

#include <string>

#include "kinds/build.h"

namespace ub {

// The block's `_name`, which every caption of a row carries.
std::string block_name(const Json& blk);
// The block's `_seq`, the page-wide number in container captions.
int block_seq(const Json& blk);
// The value text of a row: `value`, replaced by a non-empty `value_short` on a compact page.
std::string row_value(const PageContext& c, const Json& blk);
// A sequence read from a block key, by reference into the block: absent or false
// gives an empty list; anything else that is no list is bad input (KeyError).
const Json& block_list(const Json& blk, const std::string& key);

// Label and value of a row in the family's text box: label above value when the
// page has room for two lines, otherwise label left and value right on one line.
void row_text_band(Build& bd, NodeList& out, const std::string& name, const std::string& label,
                   const std::string& value, const RowBoxes& rb, int y0);

}  // namespace ub
