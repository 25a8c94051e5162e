// Planned height of a block in a container: must equal what its builder reports.
#include "kinds/block_kind.h"
#include "rows/rows.h"

namespace ub {

int row_height(const PageContext& page, const BlockRecord& blk) {
  const BlockKind* k = blk.kind;
  return k && k->planned_height ? k->planned_height(page, blk) : page.m.row_h;
}

}  // namespace ub
