// Limits of a page that hold before any block is composed: the screen size, names that
// become identifiers, the counts and numbers the builders turn into pixels.
#pragma once

#include <string>

#include "base/values.h"

namespace ub {

constexpr int kMinScreenSide = 16;
constexpr int kMaxScreenSide = 8192;
constexpr int kMaxIdentifierLength = 64;
// One block may take at most this many screen heights of content.
constexpr int kScrollScreens = 16;
// Fixed bands and overlays (title, toolbar, navigation, bottom bar, dialogs, toasts).
constexpr int kMaxOverlays = 16;
// The narrowest column a tab or a chart slot may get: one step of the 4-pixel grid.
constexpr int kMinSlotPx = 4;
// Chart values beyond this magnitude lose the precision the plot needs.
constexpr double kMaxChartValue = 1e15;

// Letters of any script with their combining marks, decimal digits and underscores,
// not starting with a digit or a mark, 1 to 64 characters of valid UTF-8.
bool is_identifier(const std::string& s);

}  // namespace ub
