// The 4-pixel grid, the font ladder, colour readings and the text-room estimate.
#pragma once

#include <array>
#include <string>
#include <utility>
#include <vector>

#include "base/values.h"

namespace ub {

// Alignment codes of the control format.
constexpr int kAlignLeft = 36;
constexpr int kAlignCenter = 37;
constexpr int kAlignRight = 38;

int r4(double v);    // nearest grid value, halves to even, at least 4
int r4up(double v);  // grid value not below v, at least 4
double pick(double target, double lo, double hi, const std::vector<double>& ladder);
// Channels r, g, b, a of a colour text "#RRGGBB" or "#RRGGBBAA"; default_a when no alpha.
std::array<int, 4> colour_channels(const std::string& s, int default_a = 255);
// Minimum (width, height) a text needs at a font size (the text estimate).
std::pair<int, int> text_min_size(const std::string& text, double font_size, int align);
// First key of row whose value is present, not null and not "" (0 and false count).
std::string row_field(const Json& row, std::initializer_list<const char*> keys);
// Token colour string to the integer colour of control records (-1 never returned).
long long hex2int(const std::string& s);

}  // namespace ub
