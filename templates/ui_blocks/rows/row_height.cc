// Planned height of a block in a container: must equal what its builder reports.
#include "compose.h"
#include "kinds/registry.h"

namespace ub {

int Composer::row_height(const Json& blk) const {
  const BlockKind* k = block_kinds().of(blk);
  return k && k->planned_height ? k->planned_height(*this, blk) : m.row_h;
}

}  // namespace ub
