// The gap between a row's value text and its right-end control, one for the page.
#include <algorithm>
#include <map>
#include <set>

#include "compose.h"

namespace ub {

void Composer::note_row_gaps(const std::string& caption, int right_edge, std::optional<int> rt_edge) {
  if (!rt_edge) return;
  if (!row_gaps_) row_gaps_.emplace();
  row_gaps_->emplace_back(caption, *rt_edge - right_edge);
  row_gap_places_.push_back(building);
}

void Composer::assert_row_gaps() const {
  if (!row_gaps_) return;
  std::set<int> distinct;
  std::vector<std::string> pairs;
  for (const auto& [caption, gap] : *row_gaps_) {
    distinct.insert(gap);
    pairs.push_back(cat(caption, "=", gap));
  }
  if (distinct.size() < 2) return;
  // The place of a row with the rarest gap: the first such after the first row, which
  // sets the family's gap when every gap is as common.
  std::map<int, int> count;
  for (const auto& [caption, gap] : *row_gaps_) ++count[gap];
  const size_t n = row_gaps_->size();
  std::string msg = cat("[X] 行族「值→右端控件」间隙不一致：", join(pairs, "；"));
  const int rarest = std::min_element(count.begin(), count.end(), [](auto& a, auto& b) { return a.second < b.second; })->second;
  for (size_t k = 1; k <= n; ++k) {
    const size_t i = k % n;
    if (count[(*row_gaps_)[i].second] != rarest) continue;
    const int at = i < row_gap_places_.size() ? row_gap_places_[i] : -1;
    if (at >= 0 && at < (int)places.size()) msg += "\n" + places[at];
    break;
  }
  stop(msg);
}

}  // namespace ub
