// Where a block stands in spec.json, for the messages about it. A stop or bad input
// passing out of a block is given the block's place on its way out.
#pragma once

#include <functional>
#include <string>
#include <vector>

#include "base/values.h"
#include "controls/node.h"
#include "kinds/block_record.h"
#include "kinds/flow_state.h"

namespace ub {

// A stop that already names its block: the blocks around it pass it on unchanged.
struct BlockStop : StopError {
  using StopError::StopError;
};

// "  at page.blocks[3].blocks[1] (toggle_row ToggleRow5)": path, type and caption base;
// empty for a block without a place.
std::string place_line(const BlockRecord& blk);

// The end of a place line for a misspelt type: ` — did you mean "toggle_row"?` with the
// nearest of `types`, or "" when none is close or the type is no text.
std::string type_hint(const Json& type, const std::vector<std::string>& types);

// A stop about one block: `msg` as its first line, then the place line and `hint`.
[[noreturn]] void stop_at(const BlockRecord& blk, const std::string& msg, const std::string& hint = "");

// Inside a catch block: the current exception again, a stop with the block's place line
// and a KeyError as bad input at the block's path.
[[noreturn]] void rethrow_placed(const BlockRecord& blk);

// Runs f for blk; what passes out of it names the block.
template <class F>
auto at_block(const BlockRecord& blk, F&& f) -> decltype(f()) {
  try {
    return f();
  } catch (const StopError&) {
    rethrow_placed(blk);
  } catch (const KeyError&) {
    rethrow_placed(blk);
  }
}

// Runs `build`, which builds blk into `parent`, as at_block does. The nodes it added to
// parent, and those below them that no inner block claimed, then carry blk's place, for
// the checks made on the finished page.
void build_placed(FlowState& flow, const BlockRecord& blk, NodeList& parent, const std::function<void()>& build);

}  // namespace ub
