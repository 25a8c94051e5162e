// A layout JSON as the preview renderer and the project checks see it: a flat list of
// controls in definition order with absolute boxes, each holding the fields of its record
// that either tool reads. layout_reader.h fills it from the layout's text; nothing here
// keeps a JSON document.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

#include "gen_res/image.h"

namespace layout {

// A layout that cannot be read (no resolution, a position that is not a number...).
struct LayoutError : std::runtime_error {
  using std::runtime_error::runtime_error;
};
// Text that is no valid JSON; the message says where.
struct SyntaxError : LayoutError {
  using LayoutError::LayoutError;
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

// Deepest nesting of controls read; a deeper layout is refused.
constexpr int kMaxDepth = 100;
// Largest magnitude of an integer field.
constexpr long long kMaxInt = 1000000000;
// Largest magnitude of a position value: a page of tens of thousands of blocks scrolls
// over millions of pixels, and kMaxDepth offsets of this size still add up inside an int.
constexpr long long kMaxCoord = 20000000;
static_assert((kMaxDepth + 2) * kMaxCoord < 2147483647LL);

// An integer field as written: absent, null, a usable integer, or unusable. An unusable
// value is refused only when a reader asks for it (Layout::number), as a field is read
// only by the control types and rules that need it.
struct Num {
  enum State : uint8_t { kAbsent, kNull, kInt, kBad };
  int32_t v = 0;  // kInt: the value (|v| <= kMaxInt); kBad: index into Layout::problems
  State state = kAbsent;
  bool present() const { return state != kAbsent; }  // given, even as null
};

// A colour field: -1, absent, null or no usable number is not set; 0xRRGGBB is opaque; a
// set top byte makes it 0xAARRGGBB.
struct Color {
  uint32_t argb = 0;
  bool set = false;
  std::optional<gen_res::Rgba> rgba() const;
};

// A position mapping (left, top, width, height) as written.
struct Box {
  enum Kind : uint8_t { kAbsent, kNull, kObject, kOther };
  Kind kind = kAbsent;
  Num left, top, width, height;
  bool is_object() const { return kind == kObject; }
};

// A list item, list subitem or radio button: drawn as a part of its control.
struct Element {
  bool is_object = false;  // an entry that is no mapping counts as an empty one
  bool bold = false, checked = false, hidden = false;  // hidden: "visible": false
  std::string_view caption, text, background_pic;
  std::string_view pics[5];  // picTab.pic0 ... pic4
  Box position, icon_position, text_position;
  Color background, ground_tab;      // backgroundColor, bgColorTab.color0
  Color text_color, checked_color;   // colorTab.color0, colorTab.color2
  Num font_size, alignment;
};

// Fields only some controls have (seek bars, lists, radio groups, edit fields).
struct Extra {
  std::string_view hint_text, password_char, progress_pic, secondary_progress_pic;
  std::string_view thumb_normal, thumb_pressed;  // thumb.normalPic, thumb.pressedPic
  Color hint_color;
  Num max, def_progress, rows, row_spacing;
  Num thumb_w, thumb_h;  // thumb.size
  bool is_password = false;
  int item = -1;  // list item template in Layout::elements when "item" is a mapping
  int sub_begin = 0, sub_end = 0;      // its subItem entries, when a list
  bool has_subs = false;
  int radio_begin = 0, radio_end = 0;  // radiobuttons entries, when a list
  bool has_radios = false;
};

struct Control {
  std::string key;      // e.g. textview__3
  std::string type;     // from the key, or from the id range for odd keys
  std::string caption;
  Rect box;             // absolute, not clipped
  Rect clip;            // what clipping ancestors (and the screen) leave visible
  Rect vis;             // box cut by clip; empty when nothing of it can show
  int depth = 0;        // 0 for controls of the root record
  int parent = -1;      // index into Layout::controls, -1 at root level
  int end = 0;          // one past the index of its last descendant
  bool shown = true;    // it and all its ancestors are visible

  // The record's own fields.
  bool has_id = false;   // "id" is an integer
  long long id = 0;
  bool id_unsigned = false;  // an id above the range of long long, read as unsigned
  bool hidden = false;   // "visible": false
  int8_t touchable = -1;  // "touchable" as written; -1 when it is no truth value
  bool bold = false, checked = false;
  std::string_view text, background_pic;
  std::string_view pics[5];  // picTab.pic0 ... pic4
  Color background, ground_tab, text_color, checked_color;  // as in Element
  Num font_size, alignment;
  int icon_box = -1, text_box = -1;  // iconPosition / textPosition in Layout::boxes when
                                     // given apart from the control's own position
  int extra = -1;                    // index into Layout::extras
};

// A finding of the character scan: a text field holding characters outside the
// engine's font, anywhere in the document.
struct TextFinding {
  std::string what;   // "<path>「<caption>」.<key> = 「<text>」"
  std::string chars;  // the characters, each once
};

struct Layout {
  int W = 0, H = 0;
  std::optional<gen_res::Rgba> ground;  // the root's backgroundColor
  std::vector<Control> controls;  // depth-first pre-order = z-order (first drawn first)
  std::vector<Element> elements;
  std::vector<Extra> extras;
  std::vector<Box> boxes;
  std::vector<std::string> problems;      // why a Num is unusable, e.g. "fontSize is not a number (a list)"
  std::vector<TextFinding> text_findings;  // when asked for; in document order

  Layout();
  ~Layout();
  Layout(Layout&&) noexcept;
  Layout& operator=(Layout&&) noexcept;

  // The integer a field holds, def when absent or null; LayoutError "<where>: <problem>"
  // when unusable.
  long long number(const Num& n, long long def, const std::string& where) const;
  const Extra* extra_of(const Control& c) const { return c.extra < 0 ? nullptr : &extras[(size_t)c.extra]; }
  // Keeps a copy of text for the layout's lifetime.
  std::string_view keep(std::string_view text);

 private:
  struct Arena;
  std::unique_ptr<Arena> arena_;
};

// A position as a rectangle at origin (ox, oy). Missing keys count as 0; a value that is
// not an integer, or beyond kMaxCoord, throws LayoutError naming where.
Rect read_box(const Layout& lay, const Box& pos, int ox, int oy, const std::string& where);

// The absolute box of a control's iconPosition or textPosition. A copy of the control's
// own position means the control box; any other box is relative to the control; an
// absent or empty one is the control box.
Rect icon_box(const Layout& lay, const Control& c);
Rect text_box(const Layout& lay, const Control& c);

// Control types that clip their children.
bool clips(std::string_view type);

// Control type of a record under key with the given integer id (nullopt: none): the part
// before "__" when it is a known type, else the type of the id range, else the part
// before "__" as it stands.
std::string control_type(std::string_view key, std::optional<long long> id);

// Absolute boxes, clips and visibility of every control, from their positions read
// relative to their parents, in pre-order; throws LayoutError at the first unusable one.
void place_controls(Layout& lay, const std::vector<Box>& positions);

// True when a is b or an ancestor of b.
inline bool ancestor_or_self(const Layout& lay, int a, int b) {
  return a <= b && b < lay.controls[(size_t)a].end;
}

}  // namespace layout
