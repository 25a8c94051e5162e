#include "checks/geometry.h"

#include <algorithm>
#include <map>

#include "base/primitives.h"

namespace ub {

namespace {

// Control types that clip what lies inside them.
const std::vector<std::string> CLIP_TYPES = {"scrollwindow", "pagewindow", "slidewindow"};

using Rect = std::array<int, 4>;

Rect intersect(const Rect& a, const Rect& b) {
  return {std::max(a[0], b[0]), std::max(a[1], b[1]), std::min(a[2], b[2]), std::min(a[3], b[3])};
}

}  // namespace

void check_text_fit(Notes& notes, const PageContext& page, const std::string& caption, const std::string& txt,
                    double fs, int box_w, int box_h, const std::string& where) {
  const std::string& page_name = page.page_name;
  auto [mw, mh] = text_min_size(txt, fs, 0);
  if (mw > box_w || mh > box_h)
    notes.add(cat(caption, "(", where, ") 文本「", txt, "」需 ≥", mw, "x", mh, "，盒 ", box_w, "x", box_h,
                        " → 文案过长，请用 value_short 或缩短文案（", page_name, "）"));
}

void assert_children_fit(const Node& win, int cw, int ch, const std::string& where) {
  std::vector<std::string> bad;
  for (const auto& c : win.children) {
    const Pos& p = c->pos;
    if (p.left < 0 || p.top < 0 || p.left + p.width > cw || p.top + p.height > ch)
      bad.push_back(cat(c->caption, "(", c->type, ") ", p.left, ",", p.top, " ", p.width, "x", p.height, " 超出容器 ",
                        cw, "x", ch));
  }
  if (!bad.empty()) stop("[X] " + where + " 子节点越界（子节点坐标应为相对父容器）：" + join(bad, "；"));
}

// Each node's absolute rectangle cut by its clipping ancestors; fully cut nodes are left out,
// their children are still visited.
static void collect_into(const NodeList& nodes, int ox, int oy, const std::optional<Rect>& clip,
                         std::vector<RectRecord>& out, const std::vector<std::string>& path) {
  for (const auto& nd : nodes) {
    const Pos& p = nd->pos;
    int l = ox + p.left, t = oy + p.top, w = p.width, h = p.height;
    std::vector<std::string> here = path;
    here.push_back(nd->caption);
    if (w > 0 && h > 0) {
      Rect r = {l, t, l + w, t + h};
      if (clip) r = intersect(r, *clip);
      if (r[2] > r[0] && r[3] > r[1])
        out.push_back(RectRecord{r[0], r[1], r[2], r[3], nd->caption, nd->type, nd->children.empty(), here});
    }
    std::optional<Rect> sub_clip = clip;
    if (std::find(CLIP_TYPES.begin(), CLIP_TYPES.end(), nd->type) != CLIP_TYPES.end() && w > 0 && h > 0) {
      Rect bx = {l, t, l + w, t + h};
      sub_clip = clip ? intersect(bx, *clip) : bx;
    }
    if (!nd->children.empty()) collect_into(nd->children, l, t, sub_clip, out, here);
  }
}

namespace {

// A node's effective rectangle as the bar check needs it: no texts copied.
struct Box {
  int l = 0, t = 0, r = 0, b = 0;
  const Node* node = nullptr;
  bool leaf = false;
};

// collect_into without the paths: one small record per node of a page of any size.
void collect_boxes(const NodeList& nodes, int ox, int oy, const std::optional<Rect>& clip, std::vector<Box>& out) {
  for (const auto& nd : nodes) {
    const Pos& p = nd->pos;
    int l = ox + p.left, t = oy + p.top, w = p.width, h = p.height;
    if (w > 0 && h > 0) {
      Rect r = {l, t, l + w, t + h};
      if (clip) r = intersect(r, *clip);
      if (r[2] > r[0] && r[3] > r[1]) out.push_back(Box{r[0], r[1], r[2], r[3], nd.get(), nd->children.empty()});
    }
    std::optional<Rect> sub_clip = clip;
    if (std::find(CLIP_TYPES.begin(), CLIP_TYPES.end(), nd->type) != CLIP_TYPES.end() && w > 0 && h > 0) {
      Rect bx = {l, t, l + w, t + h};
      sub_clip = clip ? intersect(bx, *clip) : bx;
    }
    if (!nd->children.empty()) collect_boxes(nd->children, l, t, sub_clip, out);
  }
}

std::vector<Box> boxes_of(const NodeList& nodes) {
  std::vector<Box> out;
  collect_boxes(nodes, 0, 0, std::nullopt, out);
  return out;
}

std::string span(const Box& r) { return cat(r.l, ",", r.t, "..", r.r, ",", r.b); }

// The box with the greatest bottom; the first one on ties.
const Box* lowest(const std::vector<Box>& rs, bool leaves_only) {
  const Box* best = nullptr;
  for (const auto& r : rs)
    if ((!leaves_only || r.leaf) && (!best || r.b > best->b)) best = &r;
  return best;
}

}  // namespace

std::vector<RectRecord> collect_rects(const NodeList& nodes, int ox, int oy, const std::optional<Rect>& clip,
                                                std::vector<RectRecord>* out, const std::vector<std::string>& path) {
  std::vector<RectRecord> local;
  std::vector<RectRecord>& res = out ? *out : local;
  collect_into(nodes, ox, oy, clip, res, path);
  return res;
}

void assert_no_bar_overlap(const Metrics& m, int content_h, const std::vector<std::string>& places, Notes& notes,
                           const NodeList& content_nodes, const NodeList& band_nodes) {
  int view_bot = m.content_bottom;
  if (m.bar_top + m.viewport > view_bot)
    stop(cat("[X] 内容视口伸进底部固定条：标题带 ", m.bar_top, " + 视口 ", m.viewport, " = ", m.bar_top + m.viewport,
             " > 内容区下沿 ", view_bot, "（视口必须 = 屏高 − 标题带 − 底部条高）"));
  std::vector<Box> crect = boxes_of(content_nodes), brect = boxes_of(band_nodes);

  const Box* deep = lowest(crect, true);
  int declared_bottom = m.bar_top + content_h;
  if (deep && deep->b > declared_bottom)
    stop(with_places(cat("[X] 内容实际底 ", deep->b, " > 声明内容高上沿 ", declared_bottom, "（", deep->node->caption,
                         " ", span(*deep), "）：块自己报的高度装不下子节点 → 滑动到底也看不到最后一段"),
                     {deep->node}, places));

  std::vector<std::string> bad;
  std::map<std::string, std::pair<const Node*, const Node*>> pairs;  // each text's first pair
  for (const auto& a : crect)
    for (const auto& b : brect) {
      int ix = std::min(a.r, b.r) - std::max(a.l, b.l);
      int iy = std::min(a.b, b.b) - std::max(a.t, b.t);
      if (ix > 0 && iy > 0) {
        bad.push_back(cat(a.node->caption, "(", a.node->type, ") ", span(a), " ∩ ", b.node->caption, "(", b.node->type,
                          ") ", span(b), " = ", ix, "x", iy, " px"));
        pairs.try_emplace(bad.back(), a.node, b.node);
      }
    }
  if (!bad.empty()) {
    std::vector<std::string> shown;
    std::vector<const Node*> makers;
    for (const auto& [s, ab] : pairs) {
      if (shown.size() == 12) break;
      shown.push_back(s);
      makers.insert(makers.end(), {ab.first, ab.second});
    }
    stop(with_places(cat("[X] 底部固定带与内容节点相交 ", bad.size(),
                         " 对（缺陷 A：底栏/底导盖住内容）——视口必须扣掉底部条高（m['content_bottom'] = H − bar_bot）：\n    ",
                         join(shown, "\n    ")),
                     makers, places));
  }

  const Box* deepest = lowest(crect, false);
  if (!deepest) return;
  const Box* leaf = lowest(crect, true);
  std::string note = cat("固定带自检：内容有效底 ", deepest->b, " ≤ 底栏上沿 ", view_bot, "（最靠下内容节点 ",
                         deepest->node->caption, " ", span(*deepest));
  if (leaf && leaf != deepest) note += cat("；最靠下行/卡底 ", leaf->node->caption, " ", span(*leaf), "（超出视口部分被引擎裁掉）");
  note += "）｜ 相交 0 对";
  notes.add(note);
}

}  // namespace ub
