// #15 and #29: what the user can touch stays uncovered. A visible touchable control
// must not be overlapped by a later touchable control (#15), which would take its
// touches, nor by a later visible decoration (#29), which would hide it. Later means
// later in definition order, which is drawing order; rectangles are absolute and cut
// by scrolling windows, so content scrolled out of view covers nothing. A covered
// control is one finding, naming the first later control that covers it: a pile of
// controls on one spot makes as many findings as controls, not pairs.
#include "check_all/overlap_grid.h"
#include "check_all/rules.h"

namespace check {

namespace {

bool target(const layout::Control& c) {
  return c.shown && !c.vis.empty() && !is_container(c.type) && touchable(c);
}

// A picture holder: a textview with no text, a background picture and no touch.
bool decoration(const layout::Control& c) {
  return c.type == "textview" && c.shown && !c.vis.empty() && !touchable(c) && c.text.empty() &&
         !c.background_pic.empty();
}

void check_cover(const Project& p, Report& r, bool (*coverer)(const layout::Control&), const std::string& noun) {
  uint64_t targets = 0;
  for (const auto& lf : p.layouts) {
    if (!lf.ok()) continue;
    const auto& cs = lf.lay.controls;
    OverlapGrid grid(lf.lay.W, lf.lay.H);
    for (size_t j = 0; j < cs.size(); ++j)
      if (coverer(cs[j])) grid.add((int)j, cs[j].vis);
    for (size_t i = 0; i < cs.size(); ++i) {
      if (!target(cs[i])) continue;
      ++targets;
      // Later controls inside this one (its descendants) do not cover it.
      const int j = grid.first(cs[i].vis, cs[i].end - 1, [&](int k) { return !cs[i].vis.intersect(cs[(size_t)k].vis).empty(); });
      if (j < 0) continue;
      if (!r.listing()) {
        r.count_fail();
        continue;
      }
      const layout::Rect x = cs[i].vis.intersect(cs[(size_t)j].vis);
      r.fail(where(lf, cs[i]) + "(" + cs[i].type + ") 被后来的" + noun + " " + cs[(size_t)j].key + "「" +
             cs[(size_t)j].caption + "」(" + cs[(size_t)j].type + ") 盖住 " + std::to_string(x.w()) + "x" +
             std::to_string(x.h()) + " px @" + std::to_string(x.l) + "," + std::to_string(x.t));
    }
  }
  r.pass(std::to_string(targets) + " 个可触控件都没被" + noun + "盖住");
}

}  // namespace

void rule_touch_cover(const Project& p, Report& r) {
  r.section(15, "可触控件不被后来的可触控件盖住");
  check_cover(p, r, target, "可触控件");
}

void rule_decoration_cover(const Project& p, Report& r) {
  r.section(29, "可触控件不被装饰盖住");
  check_cover(p, r, decoration, "装饰");
}

}  // namespace check
