// Page-wide block numbering: every block gets _seq and _name in reading order, through
// containers, so captions derived from names never repeat between cards; and _path, its
// place in spec.json for the messages.
#pragma once

#include <string>

#include "base/values.h"
#include "kinds/flow_state.h"

namespace ub {

// Numbers one block with the flow's next number; returns it.
Json& name_block(FlowState& flow, Json& blk);
// Names the blocks of a list and writes each one's place in spec.json as "_path".
void name_tree(FlowState& flow, Json& blocks, const std::string& path = "page.blocks");

}  // namespace ub
