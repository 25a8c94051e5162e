// #27: the rows of a page form one family. Their label texts (caption TextRow…Label)
// share left edge, width, height and alignment, and so do their value texts
// (TextRow…Value); and no text lies over an input control.
#include <map>

#include "check_all/overlap_grid.h"
#include "check_all/rules.h"

namespace check {

namespace {

bool row_text(const std::string& cap, const std::string& role) {
  const std::string head = "TextRow";
  return cap.size() > head.size() + role.size() && cap.rfind(head, 0) == 0 &&
         cap.compare(cap.size() - role.size(), role.size(), role) == 0;
}

// The most common value; on a tie the one met first.
int mode(const std::vector<int>& vals) {
  std::map<int, int> count;
  int top = 0;
  for (int v : vals) top = std::max(top, ++count[v]);
  for (int v : vals)
    if (count[v] == top) return v;
  return vals.front();
}

void check_family(const LayoutFile& lf, const std::string& role, Report& r) {
  const layout::Layout& lay = lf.lay;
  std::vector<const layout::Control*> rows;
  for (const auto& c : lf.lay.controls)
    if (c.type == "textview" && row_text(c.caption, role)) rows.push_back(&c);
  if (rows.size() < 2) return;
  struct Measure {
    const char* name;
    int (*get)(const layout::Layout&, const layout::Control&);
  };
  static const Measure kMeasures[] = {
      {"left", [](const layout::Layout&, const layout::Control& c) { return c.box.l; }},
      {"width", [](const layout::Layout&, const layout::Control& c) { return c.box.w(); }},
      {"height", [](const layout::Layout&, const layout::Control& c) { return c.box.h(); }},
      {"alignment",
       [](const layout::Layout& l, const layout::Control& c) { return (int)l.number(c.alignment, 0, c.key); }},
  };
  std::vector<int> common;
  for (const auto& m : kMeasures) {
    std::vector<int> vals;
    for (const auto* c : rows) vals.push_back(m.get(lay, *c));
    common.push_back(mode(vals));
  }
  for (const auto* c : rows) {
    std::vector<std::string> off;
    for (size_t i = 0; i < std::size(kMeasures); ++i) {
      int v = kMeasures[i].get(lay, *c);
      if (v != common[i])
        off.push_back(std::string(kMeasures[i].name) + " " + std::to_string(v) + " ≠ " + std::to_string(common[i]));
    }
    if (!off.empty()) r.fail(where(lf, *c) + " 与行族（" + std::to_string(rows.size()) + " 行）不齐：" + ub::join(off, "，"));
  }
}

bool input_control(const std::string& type) {
  return type == "seekbar" || type == "edittext" || type == "checkbox" || type == "radiogroup" ||
         type == "listview";
}

void check_text_over_controls(const LayoutFile& lf, Report& r) {
  const auto& cs = lf.lay.controls;
  OverlapGrid inputs(lf.lay.W, lf.lay.H);
  for (size_t j = 0; j < cs.size(); ++j)
    if (input_control(cs[j].type) && cs[j].shown) inputs.add((int)j, cs[j].vis);
  for (size_t i = 0; i < cs.size(); ++i) {
    const auto& t = cs[i];
    if (t.type != "textview" || !t.shown || t.vis.empty() || t.text.empty()) continue;
    // The first input control the text lies over, not one inside or around it.
    const int j = inputs.first(t.vis, -1, [&](int k) {
      return !ancestor_or_self(lf.lay, (int)i, k) && !ancestor_or_self(lf.lay, k, (int)i) &&
             !t.vis.intersect(cs[(size_t)k].vis).empty();
    });
    if (j < 0) continue;
    if (!r.listing()) {
      r.count_fail();
      continue;
    }
    const auto& c = cs[(size_t)j];
    const layout::Rect x = t.vis.intersect(c.vis);
    r.fail(where(lf, t) + " 文本压在 " + c.key + "「" + c.caption + "」(" + c.type + ") 上 " +
           std::to_string(x.w()) + "x" + std::to_string(x.h()) + " px");
  }
}

}  // namespace

void rule_row_family(const Project& p, Report& r) {
  r.section(27, "行族一致 / 文本不压控件");
  for (const auto& lf : p.layouts) {
    if (!lf.ok()) continue;
    check_family(lf, "Label", r);
    check_family(lf, "Value", r);
    check_text_over_controls(lf, r);
  }
  r.pass("行族左沿/宽/高/对齐一致，文本不压控件");
}

}  // namespace check
