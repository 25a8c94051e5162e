// What a block builder gets: the page context it reads, and the owners of what building
// changes. Builders are free functions `int build_x(Build&, const Json& blk, NodeList&
// parent, ...)` in the file of their kind.
#pragma once

#include "assets/pictures.h"
#include "controls/controls.h"
#include "kinds/flow_state.h"
#include "kinds/page_data.h"
#include "rows/row_family.h"
#include "spec/notes.h"
#include "spec/page_context.h"

namespace ub {

struct Build {
  const PageContext& page;
  Controls& controls;
  Pictures& pictures;
  Notes& notes;
  RowFamilyState& rows;
  FlowState& flow;
  PageData& data;  // list rows and wheel values for the data header
};

}  // namespace ub
