#include "controls/id_capacity.h"

#include <map>

#include "controls/control_types.h"

namespace ub {

namespace {

void count(const NodeList& nodes, std::map<std::string_view, long long>& n) {
  for (const auto& node : nodes) {
    ++n[node->type];
    count(node->children, n);
  }
}

// The numbers after a base that stay below the next range in use.
constexpr long long kSubitemLimit = kTextviewIds.base - kSubitemIdBase - 1;
constexpr long long kRadiobuttonLimit = kCheckboxIds.base - kRadiobuttonIdBase - 1;

[[noreturn]] void too_many(std::string_view what, long long n, long long most) {
  throw InputError(cat("the page needs ", n, " ", std::string(what), " ids, more than their range holds: at most ", most,
                       "; split the page"));
}

}  // namespace

void check_id_capacity(const NodeList& nodes, int last_subitem, int last_radiobutton) {
  std::map<std::string_view, long long> n;
  count(nodes, n);
  for (const auto& [type, k] : n) {
    const ControlType* t = control_type(type);
    if (!t) continue;
    const long long most = (long long)t->ids.end - t->ids.base - 1;
    if (k > most) too_many(type, k, most);
  }
  if (last_subitem > kSubitemLimit) too_many("list-item part", last_subitem, kSubitemLimit);
  if (last_radiobutton > kRadiobuttonLimit) too_many("radio button", last_radiobutton, kRadiobuttonLimit);
}

}  // namespace ub
