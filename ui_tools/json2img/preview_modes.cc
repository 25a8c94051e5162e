#include "json2img/preview_modes.h"

#include <algorithm>
#include <limits>
#include <vector>

namespace j2i {

using layout::Control;
using layout::Layout;
using layout::Rect;

namespace {

// Clip and visible part again after boxes moved, as the layout reading derives them.
void recompute_clips(Layout& lay) {
  const Rect screen{0, 0, lay.W, lay.H};
  for (Control& c : lay.controls) {
    if (c.parent < 0) {
      c.clip = screen;
    } else {
      const Control& p = lay.controls[(size_t)c.parent];
      c.clip = layout::clips(p.type) ? p.clip.intersect(p.box) : p.clip;
    }
    c.vis = c.box.intersect(c.clip);
  }
}

}  // namespace

void show_overlays(Layout& lay) {
  // Pre-order: a parent is settled before its children.
  for (Control& c : lay.controls) {
    const bool own = !c.hidden;
    c.shown = c.parent < 0 ? own || c.type == "window" : lay.controls[(size_t)c.parent].shown && own;
  }
}

bool unroll_scrolling(Layout& lay, long long max_height) {
  // Last first: a lower or inner window grows before the windows above or around it measure
  // their content, which then already holds that growth.
  for (size_t k = lay.controls.size(); k-- > 0;) {
    const Control& s = lay.controls[k];
    if (s.type != "scrollwindow" || !s.shown) continue;
    int content_b = s.box.b;
    for (int i = (int)k + 1; i < s.end; ++i)
      if (lay.controls[(size_t)i].shown) content_b = std::max(content_b, lay.controls[(size_t)i].box.b);
    const int extra = content_b - s.box.b;
    if (extra <= 0) continue;
    if ((long long)lay.H + extra > max_height) {
      lay.H = (int)std::min<long long>((long long)lay.H + extra, std::numeric_limits<int>::max());
      return false;
    }
    const int bottom = s.box.b;
    // What starts below the window moves down with everything inside it; a control inside
    // something that spans the window's bottom (a full-screen overlay) stays with its holder.
    std::vector<char> moved(lay.controls.size(), 0);
    for (int i = 0; i < (int)lay.controls.size(); ++i) {
      Control& c = lay.controls[(size_t)i];
      if (layout::ancestor_or_self(lay, i, (int)k)) {
        c.box.b += extra;  // the window and what holds it grow
        continue;
      }
      if (layout::ancestor_or_self(lay, (int)k, i)) continue;  // the content keeps its place
      const bool free = c.parent < 0 || layout::ancestor_or_self(lay, c.parent, (int)k);
      moved[(size_t)i] = (c.parent >= 0 && moved[(size_t)c.parent]) || (free && c.box.t >= bottom);
      if (moved[(size_t)i]) {
        c.box.t += extra;
        c.box.b += extra;
      }
    }
    lay.H += extra;
  }
  recompute_clips(lay);
  return true;
}

}  // namespace j2i
