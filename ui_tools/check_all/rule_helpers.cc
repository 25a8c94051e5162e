#include "check_all/rules.h"

namespace check {

std::string where(const LayoutFile& lf, const layout::Control& c) {
  return lf.rel + " " + c.key + "「" + c.caption + "」";
}

bool touchable(const layout::Control& c) {
  if (c.touchable >= 0) return c.touchable == 1;
  return c.type != "textview" && c.type != "window";
}

bool is_container(const std::string& type) {
  return type == "window" || type == "scrollwindow" || type == "pagewindow" || type == "slidewindow";
}

}  // namespace check
