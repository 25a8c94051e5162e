// Captions of buttons and edit fields, read from the finished layout document by id
// range, depth-first in definition order. Array members (subitems, radio buttons) are
// never entered.
#include "logic/logic.h"
#include "controls/control_types.h"

namespace ub {

namespace {

void collect(const Json& node, long long lo, long long hi, std::vector<std::string>& out) {
  if (!node.is_object()) return;
  for (const auto& [key, value] : node.items()) {
    if (!contains(key, "__")) continue;
    const Json& id = get(value, "id");
    long long n = id.is_null() ? 0 : int_of(id);
    const Json& caption = get(value, "caption");
    if (n >= lo && n < hi && truthy(caption)) out.push_back(to_text(caption));
    collect(value, lo, hi, out);
  }
}

}  // namespace

std::vector<std::string> collect_button_caps(const Json& node) {
  std::vector<std::string> out;
  collect(node, kButtonIds.base, kButtonIds.end, out);
  return out;
}

std::vector<std::string> collect_edittext_caps(const Json& node) {
  std::vector<std::string> out;
  collect(node, kEdittextIds.base, kEdittextIds.end, out);
  return out;
}

namespace {

std::vector<std::string> in_range(const std::vector<ControlRef>& controls, long long lo, long long hi) {
  std::vector<std::string> out;
  for (const ControlRef& c : controls)
    if (c.id >= lo && c.id < hi && c.caption && !c.caption->empty()) out.push_back(*c.caption);
  return out;
}

}  // namespace

std::vector<std::string> collect_button_caps(const std::vector<ControlRef>& controls) {
  return in_range(controls, kButtonIds.base, kButtonIds.end);
}

std::vector<std::string> collect_edittext_caps(const std::vector<ControlRef>& controls) {
  return in_range(controls, kEdittextIds.base, kEdittextIds.end);
}

}  // namespace ub
