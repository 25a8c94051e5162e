// Thumbnail gallery: a static grid of placeholder tiles with an optional title and a
// count line; the application puts the real pictures in at run time.
#include "checks/geometry.h"
#include "kinds/block_kind.h"
#include "page_blocks/block_parts.h"
#include "page_blocks/page_blocks.h"

namespace ub {

int build_gallery(Build& bd, const BlockRecord& blk, NodeList& parent, int x, int y) {
  const Metrics& m = bd.page.m;
  const Json& tok = bd.page.tok;
  const long long cols = integer(blk, "cols");
  if (cols < 1 || cols > 5) stop(cat("[X] image_gallery.cols 应在 1~5，得到 ", cols));
  const int nc = (int)cols;
  const int rows = (int)std::max<long long>(integer(blk, "rows"), 1);
  const int n_tile = nc * rows;
  // Never empty: a false count shows the cell count.
  const std::string cnt = is_set(blk, "countText") ? text(blk, "countText")
                                                   : cat("共 ", is_set(blk, "count") ? integer(blk, "count") : n_tile, " 张");

  const int gap = m.grid_gap, w = m.content_w;
  const std::string s_ = caption_id(blk);
  const Columns c = split_columns(w - (nc - 1) * gap, nc, gap);

  const int tile_w = c.min_width();
  const int tile_h = std::max(r4(tile_w * size_token(tok, "gal_tile_of_w")), m.ic_min + 2 * m.spacer);
  const int gic = std::min({std::max(r4(std::min(tile_w, tile_h) * 0.34), m.ic_min), m.gal_ic_max,
                            std::max(tile_h - 2 * m.spacer, m.ic_min)});

  const std::string title = text(blk, "title");
  int h = 0;  // the grid's top
  if (!title.empty()) h += m.h_b1 + m.spacer1;
  const int grid_h = rows * tile_h + (rows - 1) * gap;
  const int cw = bd.page.text_box_w(cnt, m.fs.b2, kAlignRight);
  const int foot_h = cnt.empty() ? 0 : m.spacer1 + m.h_b2;
  const int total = h + grid_h + foot_h;
  auto win = make_node("window", cat("ImageGallery", s_), bd.controls.box(x, y, w, total));

  if (!title.empty()) {
    const std::string cap = cat("ImageGallery", s_, "Title");
    win->children.push_back(bd.controls.text(cap, bd.controls.box(0, 0, w, m.h_b1), m.fs.b1, bd.page.col("fg1"), title,
                                             "", kAlignLeft, true));
    check_text_fit(bd.notes, bd.page, cap, title, m.fs.b1, w, m.h_b1, "相册标题");
  }
  if (!cnt.empty()) {
    const std::string cap = cat("ImageGallery", s_, "Count");
    win->children.push_back(bd.controls.text(cap, bd.controls.box(w - cw, h + grid_h + m.spacer1, cw, m.h_b2), m.fs.b2,
                                             bd.page.col("fg2"), cnt, "", kAlignRight));
    check_text_fit(bd.notes, bd.page, cap, cnt, m.fs.b2, cw, m.h_b2, "相册计数");
  }

  const bool tappable = flag(blk, "tappable");
  const std::string g = text(blk, "icon");
  NodeList deco_nodes, btns;
  for (int i = 0; i < n_tile; ++i) {
    const int r = i / nc, ci = i % nc;
    const int tx = c.lefts[ci], tw = c.widths[ci], ty = h + r * (tile_h + gap);
    const std::string cap = cat("ImageGallery", s_, "Thumb", i + 1);
    deco_nodes.push_back(bd.controls.deco(
        cap + "Bg", bd.controls.box(tx, ty, tw, tile_h), bd.page.col("surface"),
        bd.pictures.shape(cat("thumb_", tw, "x", tile_h, ".png"), tw, tile_h, m.radius, bd.page.tcol("surface"))));
    // The name stays "ic_photo_" whatever the placeholder icon is.
    deco_nodes.push_back(bd.controls.deco(
        cap + "Icon", bd.controls.box(tx + floordiv(tw - gic, 2), ty + floordiv(tile_h - gic, 2), gic, gic),
        bd.page.col("chevron"),
        bd.pictures.glyph(cat("ic_photo_", gic, ".png"), g, gic, bd.page.tcol("chevron"), std::pair{gic, gic})));
    if (tappable) btns.push_back(bd.controls.button(cap, bd.controls.box(tx, ty, tw, tile_h)));
  }

  append_layers(*win, deco_nodes, btns);
  assert_children_fit(*win, w, total, cat("ImageGallery", s_));
  parent.push_back(win);
  return y + total;
}

namespace {

long long gallery_limits(const LimitCheck& lc, const BlockRecord& b) {
  lc.int_key(b, "cols");
  lc.int_key(b, "count");
  const long long rows = std::max<long long>(lc.int_key(b, "rows"), 1);
  return lc.stacked(b, "rows", rows, lc.m.ic_min + 2 * lc.m.spacer + lc.m.grid_gap);
}

}  // namespace

extern const BlockKind kImageGallery{.type = "image_gallery", .prefix = "ImageGallery", .group_gap = true, .limits = gallery_limits, .build = at_xy<build_gallery>};

}  // namespace ub
