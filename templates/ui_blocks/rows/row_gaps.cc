// The gap between a row's value text and its right-end control, one for the page.
#include <set>

#include "compose.h"

namespace ub {

void Composer::note_row_gaps(const std::string& caption, int right_edge, std::optional<int> rt_edge) {
  if (!rt_edge) return;
  if (!row_gaps_) row_gaps_.emplace();
  row_gaps_->emplace_back(caption, *rt_edge - right_edge);
}

void Composer::assert_row_gaps() const {
  if (!row_gaps_) return;
  std::set<int> distinct;
  std::vector<std::string> pairs;
  for (const auto& [caption, gap] : *row_gaps_) {
    distinct.insert(gap);
    pairs.push_back(cat(caption, "=", gap));
  }
  if (distinct.size() >= 2) stop(cat("[X] 行族「值→右端控件」间隙不一致：", join(pairs, "；")));
}

}  // namespace ub
