// Status pills side by side, each drawn as a status_pill draws its capsule; a pill that
// does not fit beside the ones before it starts a new line.
#include "checks/geometry.h"
#include "kinds/block_kind.h"
#include "page_blocks/block_parts.h"
#include "page_blocks/page_blocks.h"

namespace ub {

namespace {

struct PillSpot {
  int x = 0, y = 0, w = 0;
};

// Where each pill stands in the row's box, and the box's height.
std::vector<PillSpot> flow_pills(const std::vector<int>& widths, int span, int gap, int line_h, int* height) {
  std::vector<PillSpot> out;
  int x = 0, y = 0;
  for (int w : widths) {
    if (x > 0 && x + w > span) {
      x = 0;
      y += line_h + gap;
    }
    out.push_back({x, y, w});
    x += w + gap;
  }
  *height = widths.empty() ? 0 : y + line_h;
  return out;
}

}  // namespace

int build_pill_row(Build& bd, const BlockRecord& blk, NodeList& parent, int x, int y) {
  const Metrics& m = bd.page.m;
  const std::vector<Entry> items = entries(blk, "pills", "text");
  const std::string s_ = caption_id(blk);
  const int ph = m.pill_h, fs = m.fs.b2, span = m.content_w;
  std::vector<int> widths;
  for (const Entry& e : items)
    widths.push_back(std::min(bd.page.text_box_w(text(e, "text"), fs) + 2 * m.pill_pad, span));
  int h = 0;
  const std::vector<PillSpot> spots = flow_pills(widths, span, m.spacer, ph, &h);

  auto win = make_node("window", cat("PillRow", s_), bd.controls.box(x, y, span, h));
  for (size_t i = 0; i < items.size(); ++i) {
    const std::string state = text(items[i], "state");
    const auto [fg_name, bg_name] = bd.page.sem_color(state);
    const std::string txt = text(items[i], "text");
    const std::string id = cat("PillRow", s_, "Item", i + 1);
    const PillSpot& p = spots[i];
    win->children.push_back(bd.controls.deco(
        cat(id, "Bg"), bd.controls.box(p.x, p.y, p.w, ph), bd.page.col(bg_name),
        bd.pictures.shape(cat("pill_", state, "_", p.w, "x", ph, ".png"), p.w, ph, floordiv(ph, 2), bd.page.tcol(bg_name)),
        fs));
    const std::string cap = cat(id, "Text");
    win->children.push_back(
        bd.controls.text(cap, bd.controls.box(p.x, p.y, p.w, ph), fs, bd.page.col(fg_name), txt, "", kAlignCenter));
    check_text_fit(bd.notes, bd.page, cap, txt, fs, p.w, ph, "pill");
  }
  assert_children_fit(*win, span, h, cat("PillRow", s_));
  parent.push_back(win);
  return y + h;
}

namespace {

long long pill_row_limits(const LimitCheck& lc, const BlockRecord& b) {
  const long long n = (long long)list_size(b, "pills");
  if (n < 1) fail_at(b, "pills", "needs at least one pill");
  // At worst every pill takes a line of its own.
  lc.stacked(b, "pills", n, lc.m.pill_h + lc.m.spacer);
  return lc.m.pill_h;
}

}  // namespace

extern const BlockKind kPillRow{.type = "pill_row", .prefix = "PillRow", .group_gap = true, .limits = pill_row_limits,
                                .build = at_xy<build_pill_row>};

}  // namespace ub
