#include "driver/screen_sizes.h"

#include <algorithm>
#include <sstream>

#include "driver/cli.h"

namespace ub {

namespace {

// The resolution limits a spec has.
constexpr int kMinSide = 16, kMaxSide = 8192;

int side(const std::string& s, const std::string& word) {
  const bool digits = !s.empty() && s.size() <= 5 && std::all_of(s.begin(), s.end(), [](char c) {
    return c >= '0' && c <= '9';
  });
  const int v = digits ? std::stoi(s) : -1;
  if (v < kMinSide || v > kMaxSide)
    throw UsageError("argument --sizes: invalid size '" + word + "' (WxH, each side 16 to 8192)");
  return v;
}

}  // namespace

std::string size_label(const ScreenSize& s) { return std::to_string(s.w) + "x" + std::to_string(s.h); }

std::vector<ScreenSize> parse_sizes(const std::vector<std::string>& words) {
  std::vector<ScreenSize> out;
  for (const auto& w : words) {
    std::stringstream ss(w);
    for (std::string part; std::getline(ss, part, ',');) {
      if (part.empty()) continue;
      const size_t x = part.find('x');
      if (x == std::string::npos) throw UsageError("argument --sizes: expected WxH, got '" + part + "'");
      const ScreenSize s{side(part.substr(0, x), part), side(part.substr(x + 1), part)};
      if (std::find(out.begin(), out.end(), s) == out.end()) out.push_back(s);
    }
  }
  if (out.empty()) throw UsageError("argument --sizes: no size given");
  return out;
}

bool looks_like_sizes(const std::string& word) {
  return !word.empty() && word[0] >= '0' && word[0] <= '9' && word.find('x') != std::string::npos &&
         word.find('.') == std::string::npos && word.find('/') == std::string::npos;
}

}  // namespace ub
