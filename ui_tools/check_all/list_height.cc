// #37: the engine makes a list item int(list height / rows) - rowSpacing high; the
// item template must have exactly that height.
#include "check_all/rules.h"

namespace check {

void rule_list_item_height(const Project& p, Report& r) {
  r.section(37, "列表项高 = int(列表高/rows) − rowSpacing");
  int lists = 0;
  for (const auto& lf : p.layouts) {
    if (!lf.ok()) continue;
    for (const auto& c : lf.lay.controls) {
      if (c.type != "listview") continue;
      ++lists;
      const layout::Extra* ex = lf.lay.extra_of(c);
      if (!ex || ex->item < 0 || !lf.lay.elements[(size_t)ex->item].position.is_object()) {
        r.fail(where(lf, c) + " 没有 item 模板位置");
        continue;
      }
      const layout::Element& item = lf.lay.elements[(size_t)ex->item];
      long long rows = lf.lay.number(ex->rows, 1, c.key);
      long long rs = lf.lay.number(ex->row_spacing, 0, c.key);
      if (rows < 1) {
        r.fail(where(lf, c) + " rows " + std::to_string(rows) + " < 1");
        continue;
      }
      long long want = c.box.h() / rows - rs;
      long long ih = lf.lay.number(item.position.height, 0, c.key + ".item");
      if (ih != want)
        r.fail(where(lf, c) + " 项高 " + std::to_string(ih) + " ≠ int(" + std::to_string(c.box.h()) + "/" +
               std::to_string(rows) + ")−" + std::to_string(rs) + " = " + std::to_string(want));
    }
  }
  r.pass(lists == 0 ? "没有列表" : std::to_string(lists) + " 个列表项高都对");
}

}  // namespace check
