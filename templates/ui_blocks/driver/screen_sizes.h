// Screen sizes on the command line: "800x480", lists "800x480,480x272", and the rule for
// taking further words after --sizes. Shared by compose and compose serve.
#pragma once

#include <string>
#include <vector>

namespace ub {

struct ScreenSize {
  int w = 0, h = 0;
  bool operator==(const ScreenSize&) const = default;
};

std::string size_label(const ScreenSize& s);  // "800x480"

// The sizes of comma-separated words, in order, each size once. Throws UsageError naming
// --sizes for a word that is not WxH with both sides in 16..8192, or when no size is given.
std::vector<ScreenSize> parse_sizes(const std::vector<std::string>& words);

// Whether a word after "--sizes WxH" is one more size list rather than a spec path:
// it starts with a digit and holds an 'x' but no '.' or '/'.
bool looks_like_sizes(const std::string& word);

}  // namespace ub
