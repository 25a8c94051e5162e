// Loading block, a still frame: a spinner (icon and text) or a skeleton (text and bars).
#include "checks/geometry.h"
#include "kinds/block_kind.h"
#include "page_blocks/block_parts.h"
#include "page_blocks/page_blocks.h"

namespace ub {

int build_loading(Build& bd, const BlockRecord& blk, NodeList& parent, int x, int y) {
  const Metrics& m = bd.page.m;
  const int H = bd.page.H;
  const Json& variant = value(blk, "variant");
  if (!variant.is_string() || (variant != "spinner" && variant != "skeleton"))
    stop("[X] loading.variant 只支持 spinner / skeleton，得到 " + literal_form(variant));

  const std::string txt = text(blk, "text");
  const int w = m.content_w, bar_h = m.load_bar_h;
  const std::string s_ = caption_id(blk);
  const std::string text_cap = cat("Loading", s_, "Text");
  NodeList deco_nodes;
  int band = 0;

  auto card_bg = [&](int bh) {
    return bd.controls.deco(
        cat("Loading", s_, "Bg"), bd.controls.box(0, 0, w, bh), bd.page.col("surface"),
        bd.pictures.shape(cat("card_", w, "x", bh, ".png"), w, bh, m.radius, bd.page.tcol("surface")));
  };

  if (variant == "spinner") {
    const int ic = m.ic_min;
    band = std::max(ic + m.spacer + m.h_b1 + 2 * m.spacer2, r4(H * m.load_h_of_h));
    deco_nodes.push_back(card_bg(band));
    // The icon and text pair is centred vertically.
    const int top = (int)floordiv(band - (ic + m.spacer + m.h_b1), 2);
    const std::string g = text(blk, "icon");
    deco_nodes.push_back(bd.controls.deco(
        cat("Loading", s_, "Icon"), bd.controls.box(floordiv(w - ic, 2), top, ic, ic), bd.page.col("brand"),
        bd.pictures.glyph(cat("ic_", g, "_", ic, ".png"), g, ic, bd.page.tcol("brand"), std::pair{ic, ic})));
    deco_nodes.push_back(bd.controls.text(text_cap, bd.controls.box(0, top + ic + m.spacer, w, m.h_b1), m.fs.b1,
                                          bd.page.col("fg2"), txt, "", kAlignCenter));
    check_text_fit(bd.notes, bd.page, text_cap, txt, m.fs.b1, w, m.h_b1, "加载态");
  } else {
    const int lines = (int)std::max<long long>(integer(blk, "lines"), 1);
    band = 2 * m.spacer2 + m.h_b1 + m.spacer1 + lines * bar_h + (lines - 1) * m.spacer;
    deco_nodes.push_back(card_bg(band));
    const int tw = w - 2 * m.pad_l;
    deco_nodes.push_back(
        bd.controls.text(text_cap, bd.controls.box(m.pad_l, m.spacer2, tw, m.h_b1), m.fs.b1, bd.page.col("fg2"), txt));
    check_text_fit(bd.notes, bd.page, text_cap, txt, m.fs.b1, tw, m.h_b1, "加载态");
    for (int i = 0; i < lines; ++i) {
      // The last bar is the short one.
      const int bw = i + 1 < lines ? tw : std::max(r4(tw * 0.6), 8);
      const int by = m.spacer2 + m.h_b1 + m.spacer1 + i * (bar_h + m.spacer);
      deco_nodes.push_back(bd.controls.deco(cat("Loading", s_, "Bar", i + 1), bd.controls.box(m.pad_l, by, bw, bar_h),
                                            bd.page.col("line"),
                                            bd.pictures.shape(cat("skel_", bw, "x", bar_h, ".png"), bw, bar_h,
                                                              floordiv(bar_h, 2), bd.page.tcol("line"))));
    }
  }

  auto win = make_node("window", cat("Loading", s_), bd.controls.box(x, y, w, band));
  for (auto& nd : deco_nodes) win->children.push_back(nd);
  assert_children_fit(*win, w, band, cat("Loading", s_));
  parent.push_back(win);
  return y + band;
}

namespace {

long long loading_limits(const LimitCheck& lc, const BlockRecord& b) {
  const long long lines = std::max<long long>(lc.int_key(b, "lines"), 1);
  return lc.stacked(b, "lines", lines, lc.m.load_bar_h + lc.m.spacer);
}

}  // namespace

extern const BlockKind kLoading{.type = "loading", .prefix = "Loading", .group_gap = true, .limits = loading_limits, .build = at_xy<build_loading>};

}  // namespace ub
