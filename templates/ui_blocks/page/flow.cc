// Composer::run: the block list becomes the page's root sequence. Content flows from
// y 0 down; the fixed bands, dialogs and toasts are built after it, and the root order
// (top band, content, navigation, bottom bar, dialogs, toasts) is the z-order.
#include <algorithm>

#include "kinds/block_place.h"
#include "kinds/registry.h"
#include "page/flow.h"

namespace ub {

NodeList Composer::run() {
  root.clear();
  seq_ = 0;
  places.clear();
  building = -1;
  FlowLists f;

  top_blocks(*this);  // refuses a page or block list of the wrong type
  if (auto it = page.find("blocks"); it != page.end()) name_tree(*it);
  scan_row_family();
  apply_band_changes(*this, f);

  for (Json* b : top_blocks(*this)) dispatch_block(*this, *b, f);
  const int content_h_local = std::max(y, 0);

  Json* title_blk = decide_title(*this, f);
  decide_footer(*this, f);

  // The bands are built by their kinds, at the left margin from the top.
  const Spot band_spot{m.margin, 0, m.content_w};
  auto build = [&](Json& b, NodeList& parent) {
    build_placed(*this, b, parent, [&] { block_kinds().of(b)->build(*this, b, parent, band_spot); });
  };
  NodeList title_nodes;
  if (title_blk) build(*title_blk, title_nodes);
  for (Json* tb : f.toolbars) build(*tb, title_nodes);

  NodeList body = place_content(*this, f.content, content_h_local);

  NodeList bands;
  auto band = [&](auto&& build) {
    size_t i0 = root.size();
    build();
    bands.insert(bands.end(), root.begin() + (long)i0, root.end());
  };
  for (Json* b : f.navs) band([&] { build(*b, root); });
  for (Json* b : f.footer) band([&] { build(*b, root); });
  for (Json* b : f.dialogs) build(*b, root);
  for (Json* b : f.toasts) build(*b, root);

  NodeList ordered = title_nodes;
  ordered.insert(ordered.end(), body.begin(), body.end());
  ordered.insert(ordered.end(), root.begin(), root.end());
  root = std::move(ordered);
  content_h = content_h_local;

  NodeList upper = title_nodes;
  upper.insert(upper.end(), body.begin(), body.end());
  assert_no_bar_overlap(upper, bands);

  nodes_ = root;
  control_count = (int)collect_controls(root).size();
  return root;
}

}  // namespace ub
