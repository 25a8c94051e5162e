// Planned height of a block in a container: must equal what its builder reports.
#include "kinds/registry.h"
#include "rows/rows.h"

namespace ub {

int row_height(const PageContext& page, const Json& blk) {
  const BlockKind* k = block_kinds().of(blk);
  return k && k->planned_height ? k->planned_height(page, blk) : page.m.row_h;
}

}  // namespace ub
