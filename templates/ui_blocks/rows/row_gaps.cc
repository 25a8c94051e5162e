// The gap between a row's value text and its right-end control, one for the page.
#include <algorithm>
#include <map>

#include "rows/row_family.h"

namespace ub {

void RowFamilyState::note_row_gaps(const std::string& caption, int right_edge, std::optional<int> rt_edge) {
  if (!rt_edge) return;
  if (!row_gaps_) row_gaps_.emplace();
  row_gaps_->emplace_back(caption, *rt_edge - right_edge);
  row_gap_places_.push_back(flow.building());
}

void RowFamilyState::assert_row_gaps() const {
  if (!row_gaps_) return;
  std::map<int, int> rows_of;  // gap -> rows with it
  std::vector<std::string> pairs;
  for (const auto& [caption, gap] : *row_gaps_) {
    ++rows_of[gap];
    pairs.push_back(cat(caption, "=", gap));
  }
  if (rows_of.size() < 2) return;
  std::string msg = cat("[X] 行族「值→右端控件」间隙不一致：", join(pairs, "；"));
  // The place of a row with the rarest gap: the first such after the first row, whose gap
  // stands for the family when every gap is as common.
  const size_t n = row_gaps_->size();
  int rarest = (int)n;
  for (const auto& [gap, rows] : rows_of) rarest = std::min(rarest, rows);
  for (size_t k = 1; k <= n; ++k) {
    const size_t i = k % n;
    if (rows_of[(*row_gaps_)[i].second] != rarest) continue;
    const int at = i < row_gap_places_.size() ? row_gap_places_[i] : -1;
    if (at >= 0 && at < (int)flow.places().size()) msg += "\n" + flow.places()[at];
    break;
  }
  stop(msg);
}

}  // namespace ub
