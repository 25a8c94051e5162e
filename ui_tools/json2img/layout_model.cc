#include "json2img/layout_model.h"

#include <algorithm>
#include <cstring>

namespace layout {

namespace {

struct IdRange {
  long long lo, hi;
  const char* type;
};
// Id bases of the control format, each type owning the thousand above its base
// (radio groups and check boxes share the 94000s, so their ranges are narrower).
const IdRange kIdRanges[] = {
    {20000, 30000, "button"},     {50000, 51000, "textview"},      {51000, 52000, "edittext"},
    {80000, 81000, "listview"},   {91000, 92000, "seekbar"},       {94000, 94100, "radiogroup"},
    {94500, 95000, "checkbox"},   {110000, 111000, "window"},      {120000, 121000, "scrollwindow"},
};
const char* kKnownTypes[] = {"textview", "button",   "window",   "scrollwindow", "edittext", "seekbar",
                             "checkbox", "radiogroup", "listview", "pagewindow",  "slidewindow"};

// The inner box of a control: its own box unless given apart from its position.
Rect inner(const Layout& lay, const Control& c, int index, const char* key) {
  if (index < 0) return c.box;
  Rect r = read_box(lay, lay.boxes[(size_t)index], c.box.l, c.box.t, c.key + "." + key);
  return r.empty() ? c.box : r;
}

}  // namespace

// Texts of the layout in blocks that never move, so the views into them stay valid.
struct Layout::Arena {
  static constexpr size_t kBlock = 1 << 20;
  std::vector<std::unique_ptr<char[]>> blocks;
  size_t used = kBlock;  // in the last block
};

Layout::Layout() : arena_(std::make_unique<Arena>()) {}
Layout::~Layout() = default;
Layout::Layout(Layout&&) noexcept = default;
Layout& Layout::operator=(Layout&&) noexcept = default;

std::string_view Layout::keep(std::string_view text) {
  if (text.empty()) return {};
  Arena& a = *arena_;
  char* at;
  if (text.size() > Arena::kBlock / 4) {  // a long text gets a block of its own, before the current one
    auto own = std::make_unique<char[]>(text.size());
    at = own.get();
    a.blocks.insert(a.blocks.end() - (a.blocks.empty() ? 0 : 1), std::move(own));
  } else {
    if (a.used + text.size() > Arena::kBlock) {
      a.blocks.push_back(std::make_unique<char[]>(Arena::kBlock));
      a.used = 0;
    }
    at = a.blocks.back().get() + a.used;
    a.used += text.size();
  }
  std::memcpy(at, text.data(), text.size());
  return {at, text.size()};
}

long long Layout::number(const Num& n, long long def, const std::string& where) const {
  switch (n.state) {
    case Num::kInt:
      return n.v;
    case Num::kBad:
      throw LayoutError(where + ": " + problems[(size_t)n.v]);
    default:
      return def;
  }
}

std::optional<gen_res::Rgba> Color::rgba() const {
  if (!set) return std::nullopt;
  const int a = (int)(argb >> 24);
  return gen_res::Rgba{(int)(argb >> 16) & 255, (int)(argb >> 8) & 255, (int)argb & 255, a ? a : 255};
}

Rect Rect::intersect(const Rect& o) const {
  return {std::max(l, o.l), std::max(t, o.t), std::min(r, o.r), std::min(b, o.b)};
}

Rect read_box(const Layout& lay, const Box& pos, int ox, int oy, const std::string& where) {
  if (pos.kind == Box::kOther) throw LayoutError(where + ": position is not a mapping");
  const std::string w = where + ".position";
  const long long l = lay.number(pos.left, 0, w), t = lay.number(pos.top, 0, w);
  const long long wd = lay.number(pos.width, 0, w), ht = lay.number(pos.height, 0, w);
  const long long lim = kMaxCoord;
  if (std::llabs(l) > lim || std::llabs(t) > lim || std::llabs(wd) > lim || std::llabs(ht) > lim)
    throw LayoutError(w + ": value out of range");
  const int x = ox + (int)l, y = oy + (int)t;
  return {x, y, x + (int)std::max(0LL, wd), y + (int)std::max(0LL, ht)};
}

Rect icon_box(const Layout& lay, const Control& c) { return inner(lay, c, c.icon_box, "iconPosition"); }
Rect text_box(const Layout& lay, const Control& c) { return inner(lay, c, c.text_box, "textPosition"); }

bool clips(std::string_view type) {
  return type == "scrollwindow" || type == "pagewindow" || type == "slidewindow";
}

std::string control_type(std::string_view key, std::optional<long long> id) {
  const std::string_view head = key.substr(0, key.find("__"));
  for (const char* t : kKnownTypes)
    if (head == t) return std::string(head);
  if (id)
    for (const auto& r : kIdRanges)
      if (*id >= r.lo && *id < r.hi) return r.type;
  return std::string(head);
}

void place_controls(Layout& lay, const std::vector<Box>& positions) {
  const Rect screen{0, 0, lay.W, lay.H};
  // (parent, key) pairs seen, in an open-addressed table of control indices by a hash of
  // both; a key given twice in one record is refused.
  size_t cap = 16;
  while (cap < lay.controls.size() * 2) cap *= 2;
  std::vector<int> table(cap, -1);
  for (size_t i = 0; i < lay.controls.size(); ++i) {
    Control& c = lay.controls[i];
    const Control* p = c.parent < 0 ? nullptr : &lay.controls[(size_t)c.parent];
    size_t at = (std::hash<std::string>{}(c.key) ^ ((uint64_t)(c.parent + 1) * 0x9E3779B97F4A7C15ULL)) & (cap - 1);
    for (; table[at] >= 0; at = (at + 1) & (cap - 1)) {
      const Control& o = lay.controls[(size_t)table[at]];
      if (o.parent == c.parent && o.key == c.key)
        throw LayoutError(c.key + " appears twice in " + (p ? p->key : std::string("the layout's root")));
    }
    table[at] = (int)i;
    c.box = read_box(lay, positions[i], p ? p->box.l : 0, p ? p->box.t : 0, c.key);
    if (c.depth >= kMaxDepth)
      throw LayoutError(c.key + ": controls nest deeper than " + std::to_string(kMaxDepth) + " levels");
    c.clip = !p ? screen : clips(p->type) ? p->clip.intersect(p->box) : p->clip;
    c.vis = c.box.intersect(c.clip);
    c.shown = (!p || p->shown) && !c.hidden;
  }
}

}  // namespace layout
