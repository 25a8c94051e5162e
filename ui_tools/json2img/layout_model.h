// A layout JSON read as a flat list of controls with absolute boxes. Both the preview
// renderer and the project checks walk layouts through this one reading.
#pragma once

#include <optional>
#include <stdexcept>
#include <string>
#include <vector>

#include "gen_res/image.h"
#include "base/values.h"

namespace layout {

// A layout that cannot be read (no resolution, a position that is not a number...).
struct LayoutError : std::runtime_error {
  using std::runtime_error::runtime_error;
};

// Half-open rectangle [l, r) x [t, b).
struct Rect {
  int l = 0, t = 0, r = 0, b = 0;
  int w() const { return r - l; }
  int h() const { return b - t; }
  bool empty() const { return r <= l || b <= t; }
  Rect intersect(const Rect& o) const;
  bool operator==(const Rect&) const = default;
};

// A position mapping (left, top, width, height) as a rectangle at origin (ox, oy).
// Missing keys count as 0; a value that is not an integer throws LayoutError.
Rect read_box(const Json& pos, int ox, int oy, const std::string& where);

struct Control {
  std::string key;      // e.g. textview__3
  std::string type;     // from the key, or from the id range for odd keys
  std::string caption;
  const Json* rec = nullptr;
  Rect box;             // absolute, not clipped
  Rect clip;            // what clipping ancestors (and the screen) leave visible
  Rect vis;             // box cut by clip; empty when nothing of it can show
  int depth = 0;        // 0 for controls of the root record
  int parent = -1;      // index into Layout::controls, -1 at root level
  int end = 0;          // one past the index of its last descendant
  bool shown = true;    // it and all its ancestors are visible
};

struct Layout {
  int W = 0, H = 0;
  std::vector<Control> controls;  // depth-first pre-order = z-order (first drawn first)
};

// The absolute box of a control's iconPosition or textPosition. A copy of the control's
// own position means the control box; any other box is relative to the control; an
// absent or empty one is the control box.
Rect inner_box(const Control& c, const char* key);

// Control types that clip their children.
bool clips(const std::string& type);

// Control type of a record under key: the part before "__" when it is a known type,
// else the type of the id range, else the part before "__" as it stands.
std::string control_type(const std::string& key, const Json& rec);

// Deepest nesting of controls read; a deeper layout is refused.
constexpr int kMaxDepth = 100;
// Largest magnitude of an integer field.
constexpr long long kMaxInt = 1000000000;
// Largest magnitude of a position value: a page of tens of thousands of blocks scrolls
// over millions of pixels, and kMaxDepth offsets of this size still add up inside an int.
constexpr long long kMaxCoord = 20000000;
static_assert((kMaxDepth + 2) * kMaxCoord < 2147483647LL);

// Reads the document; throws LayoutError with a readable message on malformed input.
Layout flatten(const Json& doc);

// True when a is b or an ancestor of b.
inline bool ancestor_or_self(const Layout& lay, int a, int b) {
  return a <= b && b < lay.controls[(size_t)a].end;
}

// An integer field of a record: def when absent or null; LayoutError when not a number
// or beyond kMaxInt.
long long int_field(const Json& rec, const char* key, long long def, const std::string& where);

// Colour of a control record: -1 (and absent or null) = not set; 0xRRGGBB opaque;
// a set top byte is read as 0xAARRGGBB.
std::optional<gen_res::Rgba> color_of(const Json& v);

// The first entry of a colour table (color0), not set when absent.
std::optional<gen_res::Rgba> table_color(const Json& rec, const char* table, const char* slot = "color0");

}  // namespace layout
