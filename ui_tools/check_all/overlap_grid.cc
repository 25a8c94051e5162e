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
  int c0, c1, r0, r1;
  span(r, c0, c1, r0, r1);
  if ((c1 - c0) * (r1 - r0) > kCells) {
    big_.push_back(i);
    return;
  }
  for (int y = r0; y < r1; ++y)
    for (int x = c0; x < c1; ++x) cells_[(size_t)(y * kCells + x)].push_back(i);
}

int OverlapGrid::first(const layout::Rect& r, int after, const std::function<bool(int)>& accept) const {
  if (r.empty()) return -1;
  int c0, c1, r0, r1;
  span(r, c0, c1, r0, r1);
  // The lists of the cells r touches (at most kCells of them for a query of a small
  // rectangle) and the big ones, merged lazily in rising order.
  struct Run {
    std::vector<int>::const_iterator at, end;
  };
  std::vector<Run> runs;
  auto take = [&](const std::vector<int>& list) {
    auto from = std::upper_bound(list.begin(), list.end(), after);
    if (from != list.end()) runs.push_back({from, list.end()});
  };
  for (int y = r0; y < r1; ++y)
    for (int x = c0; x < c1; ++x) take(cells_[(size_t)(y * kCells + x)]);
  take(big_);
  auto later = [](const Run& a, const Run& b) { return *a.at > *b.at; };
  std::make_heap(runs.begin(), runs.end(), later);
  int last = after;
  while (!runs.empty()) {
    std::pop_heap(runs.begin(), runs.end(), later);
    Run& run = runs.back();
    const int j = *run.at;
    if (++run.at == run.end) runs.pop_back();
    else std::push_heap(runs.begin(), runs.end(), later);
    if (j == last) continue;  // in several cells
    last = j;
    if (accept(j)) return j;
  }
  return -1;
}

}  // namespace check
