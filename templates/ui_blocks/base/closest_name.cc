#include "base/closest_name.h"

#include <algorithm>

#include "base/values.h"

namespace ub {

size_t edit_distance(const std::string& a_text, const std::string& b_text) {
  const std::u32string a = utf8_decode(a_text), b = utf8_decode(b_text);
  // Three rows of the table: two back (for swaps), one back, and the current one.
  std::vector<size_t> back2(b.size() + 1), back(b.size() + 1), cur(b.size() + 1);
  for (size_t j = 0; j <= b.size(); ++j) back[j] = j;
  for (size_t i = 1; i <= a.size(); ++i) {
    cur[0] = i;
    for (size_t j = 1; j <= b.size(); ++j) {
      const size_t same = a[i - 1] == b[j - 1] ? 0 : 1;
      cur[j] = std::min({back[j] + 1, cur[j - 1] + 1, back[j - 1] + same});
      if (i > 1 && j > 1 && a[i - 1] == b[j - 2] && a[i - 2] == b[j - 1]) cur[j] = std::min(cur[j], back2[j - 2] + 1);
    }
    std::swap(back2, back);
    std::swap(back, cur);
  }
  return back[b.size()];
}

std::optional<std::string> closest_name(const std::string& word, const std::vector<std::string>& candidates) {
  const size_t len = cp_len(word);
  const size_t most = std::max<size_t>(2, len / 3);
  std::optional<std::string> best;
  size_t best_d = most + 1;
  for (const std::string& c : candidates) {
    if (c == word) continue;
    const size_t d = edit_distance(word, c);
    if (d < best_d && d < len && d < cp_len(c)) {
      best_d = d;
      best = c;
    }
  }
  return best;
}

}  // namespace ub
