// The page run: its owners, and the block list made into the page's root sequence.
// Content flows from y 0 down; the fixed bands, dialogs and toasts are built after it,
// and the root order (top band, content, navigation, bottom bar, dialogs, toasts) is
// the z-order.
#include <algorithm>

#include "checks/geometry.h"
#include "compose.h"
#include "controls/box_sizes.h"
#include "controls/id_capacity.h"
#include "kinds/block_place.h"
#include "kinds/registry.h"
#include "page/flow.h"

namespace ub {

// The owners are built in order: the page, its context, then what building changes.
Composer::Composer(Json spec, std::string page_name, const Installation& inst, const AssetMap* earlier,
                   std::string project_root)
    : page_(take_page(spec)),
      records_(read_page_records(page_, inst.blocks, block_kinds())),
      required_keys_(inst.required_keys),
      ctx_(build_page_context(spec, page_, records_, std::move(page_name), inst, notes_)),
      pictures_(inst.icons, ctx_.page_name, earlier, ctx_.m.icon_fill),
      controls_(ctx_, pictures_),
      rows_(ctx_.m, flow_),
      bd_{ctx_, controls_, pictures_, notes_, rows_, flow_, data_} {
  ctx_.project_root = std::move(project_root);
}

const NodeList& Composer::run() {
  if (ran_) return root_;
  root_.clear();
  flow_.restart();
  data_ = {};
  FlowLists f;

  rows_.scan_row_family(records_.blocks);
  collect_bands(records_, f);

  for (const BlockRecord& b : records_.blocks) dispatch_block(bd_, b, f);
  const int content_h_local = std::max(flow_.y(), 0);

  const BlockRecord* title_blk = decide_title(bd_, page_, records_, f);
  decide_footer(page_, records_, f);

  // The bands are built by their kinds, at the left margin from the top.
  const Metrics& m = ctx_.m;
  const Spot band_spot{m.margin, 0, m.content_w};
  auto build = [&](const BlockRecord& b, NodeList& parent) {
    build_placed(flow_, b, parent, [&] { b.kind->build(bd_, b, parent, band_spot); });
  };
  NodeList title_nodes;
  if (title_blk) build(*title_blk, title_nodes);
  for (const BlockRecord* tb : f.toolbars) build(*tb, title_nodes);

  NodeList body = place_content(bd_, f.content, content_h_local);

  NodeList bands;
  auto band = [&](auto&& build) {
    size_t i0 = root_.size();
    build();
    bands.insert(bands.end(), root_.begin() + (long)i0, root_.end());
  };
  for (const BlockRecord* b : f.navs) band([&] { build(*b, root_); });
  for (const BlockRecord* b : f.footer) band([&] { build(*b, root_); });
  for (const BlockRecord* b : f.dialogs) build(*b, root_);
  for (const BlockRecord* b : f.toasts) build(*b, root_);

  NodeList ordered = title_nodes;
  ordered.insert(ordered.end(), body.begin(), body.end());
  ordered.insert(ordered.end(), root_.begin(), root_.end());
  root_ = std::move(ordered);
  content_h_ = content_h_local;

  NodeList upper = title_nodes;
  upper.insert(upper.end(), body.begin(), body.end());
  check_box_sizes(root_, ctx_.W, ctx_.H);
  assert_no_bar_overlap(m, content_h_, flow_.places(), notes_, upper, bands);
  check_id_capacity(root_, controls_.last_subitem(), controls_.last_radiobutton());

  ran_ = true;
  control_count_ = (int)count_controls(root_);
  return root_;
}

}  // namespace ub
