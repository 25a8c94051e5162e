// Icon grid: equal tiles with an icon on a disc and a label, optionally tappable.
#include "checks/geometry.h"
#include "kinds/block_kind.h"
#include "page_blocks/block_parts.h"
#include "page_blocks/page_blocks.h"

namespace ub {

int build_grid(Build& bd, const BlockRecord& blk, NodeList& parent, int x, int y) {
  const Metrics& m = bd.page.m;
  const std::vector<Entry> items = entries(blk, "items", "text");
  if (items.empty()) stop("[X] grid_icons.items 不能为空");
  const long long cols = integer(blk, "cols");
  if (cols < 1 || cols > 6) stop(cat("[X] grid_icons.cols 应在 1~6，得到 ", cols));

  const std::string s_ = caption_id(blk);
  const int n = (int)items.size(), nc = (int)cols;
  const int rows = (int)floordiv(n + nc - 1, nc);  // the last row may be short
  const int tile_h = m.grid_tile_h, gap = m.grid_gap, rgap = m.grid_row_gap;
  const int gh = rows * tile_h + (rows - 1) * rgap;
  auto win = make_node("window", cat("GridIcons", s_), bd.controls.box(x, y, m.content_w, gh));

  // Slots span the content without gaps; each tile is its slot less the gap, centred.
  const Columns c = split_columns(m.content_w, nc);
  const bool tappable = flag(blk, "tappable");
  const int ib = m.grid_ib, ic = m.grid_ic;
  NodeList deco_nodes, btns;
  for (int i = 0; i < n; ++i) {
    const Entry& it = items[i];
    const int r = i / nc, col_i = i % nc;
    const std::string cap = cat("GridIcons", s_, "Cell", i + 1);
    const int tw = std::max(c.widths[col_i] - gap, 8);
    const int tx = c.lefts[col_i] + (int)floordiv(c.widths[col_i] - tw, 2);
    const int ty = r * (tile_h + rgap);

    deco_nodes.push_back(bd.controls.deco(
        cap + "Bg", bd.controls.box(tx, ty, tw, tile_h), bd.page.col("surface"),
        bd.pictures.shape(cat("gtile_", tw, "x", tile_h, ".png"), tw, tile_h, m.radius, bd.page.tcol("surface"))));
    deco_nodes.push_back(bd.controls.deco(
        cap + "IconBg", bd.controls.box(tx + floordiv(tw - ib, 2), ty + m.spacer, ib, ib), bd.page.col("brand1"),
        bd.pictures.shape(cat("icbg_", ib, ".png"), ib, ib, floordiv(ib, 2), bd.page.tcol("brand1"))));
    const std::string g = text(it, "icon");
    deco_nodes.push_back(bd.controls.deco(
        cap + "Icon", bd.controls.box(tx + floordiv(tw - ic, 2), ty + m.spacer + floordiv(ib - ic, 2), ic, ic),
        bd.page.col("brand"),
        bd.pictures.glyph(cat("ic_", g, "_", ic, ".png"), g, ic, bd.page.tcol("brand"), std::pair{ic, ic},
                          optional_text(it, "state"))));
    const std::string lbl = text(it, "text");
    deco_nodes.push_back(bd.controls.text(cap + "Label", bd.controls.box(tx, ty + m.spacer + ib + m.spacer, tw, m.h_b2),
                                          m.fs.b2, bd.page.col("fg1"), lbl, "", kAlignCenter));
    check_text_fit(bd.notes, bd.page, cap + "Label", lbl, m.fs.b2, tw, m.h_b2, "grid");
    if (tappable)
      btns.push_back(bd.controls.button(cap, bd.controls.box(tx, ty, tw, tile_h)));  // the tile, not the slot
  }

  // Every button above every static part.
  append_layers(*win, deco_nodes, btns);
  assert_children_fit(*win, m.content_w, gh, cat("GridIcons", s_));
  parent.push_back(win);
  return y + gh;
}

namespace {

long long grid_limits(const LimitCheck& lc, const BlockRecord& b) {
  const long long cols = lc.int_key(b, "cols");
  const long long n = (long long)list_size(b, "items");
  if (cols < 1) return 0;  // the builder refuses it
  return lc.stacked(b, "items", n, (lc.m.grid_tile_h + lc.m.grid_row_gap) / cols);
}

}  // namespace

extern const BlockKind kGridIcons{.type = "grid_icons", .prefix = "GridIcons", .group_gap = true, .limits = grid_limits, .build = at_xy<build_grid>};

}  // namespace ub
