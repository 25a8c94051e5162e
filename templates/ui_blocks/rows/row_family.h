// The page-wide row family: settled once before any row is built (the right-end reserve
// and the icon column), the text box every row shares, and the gaps between a row's
// value and its right-end control, which must be one for the page.
#pragma once

#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "base/values.h"
#include "kinds/block_record.h"
#include "kinds/flow_state.h"
#include "spec/metrics.h"

namespace ub {

// Text box of a row (row_boxes).
struct RowBoxes {
  int text_left = 0, text_w = 0, right_edge = 0;
};

class RowFamilyState {
 public:
  // Row gaps are noted with the place of the block being built in `flow`.
  RowFamilyState(const Metrics& m, const FlowState& flow) : m(m), flow(flow) {}

  // Settles reserve and icon column from the rows of the page's blocks (refuses mixed icons).
  void scan_row_family(const std::vector<BlockRecord>& blocks);
  std::optional<int> reserve() const { return fam_reserve; }
  std::optional<bool> icon() const { return fam_icon; }

  RowBoxes row_boxes(int x0, int y0, int w) const;

  // A row whose right-end control starts at rt_edge, its value ending at right_edge.
  void note_row_gaps(const std::string& caption, int right_edge, std::optional<int> rt_edge);
  const std::optional<std::vector<std::pair<std::string, int>>>& row_gaps() const { return row_gaps_; }
  // Refuses (StopError) a page whose rows have more than one gap.
  void assert_row_gaps() const;

 private:
  const Metrics& m;
  const FlowState& flow;
  std::optional<int> fam_reserve;
  std::optional<bool> fam_icon;
  std::optional<std::vector<std::pair<std::string, int>>> row_gaps_;
  std::vector<int> row_gap_places_;  // the place of each row gap's block
};

}  // namespace ub
