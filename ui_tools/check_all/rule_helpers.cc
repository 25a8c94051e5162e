#include "check_all/rules.h"

namespace check {

std::string where(const LayoutFile& lf, const layout::Control& c) {
  return lf.rel + " " + c.key + "「" + c.caption + "」";
}

std::string str_field(const Json& rec, const char* key) {
  const Json& v = ub::get(rec, key);
  return v.is_string() ? v.get<std::string>() : "";
}

bool touchable(const layout::Control& c) {
  const Json& v = ub::get(*c.rec, "touchable");
  if (v.is_boolean()) return v.get<bool>();
  return c.type != "textview" && c.type != "window";
}

bool is_container(const std::string& type) {
  return type == "window" || type == "scrollwindow" || type == "pagewindow" || type == "slidewindow";
}

}  // namespace check
