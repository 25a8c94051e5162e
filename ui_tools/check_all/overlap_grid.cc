#include "check_all/overlap_grid.h"

#include <algorithm>

namespace check {

OverlapGrid::OverlapGrid(int screen_w, int screen_h)
    : cw_(std::max(1, (screen_w + kCells - 1) / kCells)),
      ch_(std::max(1, (screen_h + kCells - 1) / kCells)),
      cells_(kCells * kCells) {}

void OverlapGrid::span(const layout::Rect& r, int& c0, int& c1, int& r0, int& r1) const {
  auto cell = [](int v, int size) { return std::clamp(v / size, 0, kCells - 1); };
  c0 = cell(std::max(r.l, 0), cw_), c1 = cell(std::max(r.r - 1, 0), cw_) + 1;
  r0 = cell(std::max(r.t, 0), ch_), r1 = cell(std::max(r.b - 1, 0), ch_) + 1;
}

void OverlapGrid::add(int i, const layout::Rect& r) {
  if (r.empty()) return;
  if ((size_t)i >= stamp_.size()) stamp_.resize((size_t)i + 1, -1);
  int c0, c1, r0, r1;
  span(r, c0, c1, r0, r1);
  if ((c1 - c0) * (r1 - r0) > kCells) {
    big_.push_back(i);
    return;
  }
  for (int y = r0; y < r1; ++y)
    for (int x = c0; x < c1; ++x) cells_[(size_t)(y * kCells + x)].push_back(i);
}

std::vector<int> OverlapGrid::near(const layout::Rect& r, int after) const {
  std::vector<int> small;
  if (r.empty()) return small;
  ++query_;
  int c0, c1, r0, r1;
  span(r, c0, c1, r0, r1);
  for (int y = r0; y < r1; ++y)
    for (int x = c0; x < c1; ++x) {
      const auto& cell = cells_[(size_t)(y * kCells + x)];
      for (auto it = std::upper_bound(cell.begin(), cell.end(), after); it != cell.end(); ++it)
        if (stamp_[(size_t)*it] != query_) stamp_[(size_t)*it] = query_, small.push_back(*it);
    }
  std::sort(small.begin(), small.end());
  std::vector<int> out;
  out.reserve(small.size() + big_.size());
  std::merge(small.begin(), small.end(), std::upper_bound(big_.begin(), big_.end(), after), big_.end(),
             std::back_inserter(out));
  return out;
}

}  // namespace check
