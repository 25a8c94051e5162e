#include "json2img/painter.h"

#include <algorithm>

namespace j2i {

using layout::Control;
using layout::color_of;
using layout::inner_box;
using layout::table_color;

namespace {

struct Ctx {
  Canvas& cv;
  TextPainter& tp;
  Pictures& pics;
};

std::string str_field(const Json& rec, const char* key) {
  const Json& v = ub::get(rec, key);
  return v.is_string() ? v.get<std::string>() : "";
}

TextStyle style_of(const Json& rec, int default_align, const std::string& where, const char* slot = "color0") {
  TextStyle st;
  st.size = (int)layout::int_field(rec, "fontSize", 16, where);
  st.align = (int)layout::int_field(rec, "alignment", default_align, where);
  st.bold = ub::get(rec, "bold").is_boolean() && ub::get(rec, "bold").get<bool>();
  st.color = table_color(rec, "colorTab", slot).value_or(Rgba{255, 255, 255, 255});
  return st;
}

// A box given relative to an origin, as radio buttons and list subitems carry them.
Rect rel_box(const Json& rec, const char* key, const Rect& origin, const std::string& where) {
  const Json& p = ub::get(rec, key);
  if (!p.is_object()) return origin;
  return layout::read_box(p, origin.l, origin.t, where);
}

// backgroundColor, else the first colour of bgColorTab.
void ground(Ctx& x, const Json& rec, const Rect& box, const Rect& clip) {
  auto c = color_of(ub::get(rec, "backgroundColor"));
  if (!c) c = table_color(rec, "bgColorTab");
  if (c) x.cv.fill(box, *c, clip);
}

void picture(Ctx& x, const std::string& ref, const Rect& box, const Rect& clip) {
  if (const gen_res::Image* img = x.pics.get(ref)) x.cv.draw_image(*img, box.l, box.t, clip.intersect(box));
}

std::string pic_of(const Json& rec, bool checked) {
  const Json& tab = ub::get(rec, "picTab");
  std::string on = str_field(tab, "pic2");
  return checked && !on.empty() ? on : str_field(tab, "pic0");
}

bool is_checked(const Json& rec) {
  const Json& v = ub::get(rec, "checked");
  return v.is_boolean() && v.get<bool>();
}

// One element of a list template or a radio group: ground, picture, text.
void element(Ctx& x, const Json& rec, const Rect& box, const Rect& clip, const std::string& where) {
  ground(x, rec, box, clip);
  bool checked = is_checked(rec);
  picture(x, pic_of(rec, checked), rel_box(rec, "iconPosition", box, where), clip);
  const char* slot = checked && table_color(rec, "colorTab", "color2") ? "color2" : "color0";
  x.tp.draw(x.cv, str_field(rec, "text"), rel_box(rec, "textPosition", box, where), style_of(rec, 36, where, slot),
            clip);
}

void draw_edittext(Ctx& x, const Control& c, const Rect& clip) {
  const Json& r = *c.rec;
  std::string text = str_field(r, "text");
  TextStyle st = style_of(r, 36, c.key);
  if (text.empty()) {
    text = str_field(r, "hintText");
    st.color = color_of(ub::get(r, "hintTextColor")).value_or(Rgba{136, 136, 136, 255});
  } else if (ub::get(r, "isPassword").is_boolean() && ub::get(r, "isPassword").get<bool>()) {
    std::string ch = str_field(r, "passwordChar");
    std::string masked;
    for (size_t i = 0, n = ub::cp_len(text); i < n; ++i) masked += ch.empty() ? "*" : ch;
    text = masked;
  }
  x.tp.draw(x.cv, text, c.box, st, clip);
}

void draw_seekbar(Ctx& x, const Control& c, const Rect& clip) {
  const Json& r = *c.rec;
  long long mx = layout::int_field(r, "max", 100, c.key);
  long long pr = std::clamp(layout::int_field(r, "defProgress", 0, c.key), 0LL, std::max(mx, 0LL));
  int reach = mx > 0 ? (int)(c.box.w() * pr / mx) : 0;
  picture(x, str_field(r, "progressPic"), c.box, clip.intersect({c.box.l, c.box.t, c.box.l + reach, c.box.b}));
  const Json& th = ub::get(r, "thumb");
  const gen_res::Image* img = x.pics.get(str_field(th, "normalPic"));
  long long tw = layout::int_field(ub::get(th, "size"), "width", 0, c.key + ".thumb");
  if (img && tw > 0) {
    int cx = c.box.l + reach, cy = c.box.t + c.box.h() / 2;
    x.cv.draw_image(*img, cx - img->w / 2, cy - img->h / 2, c.clip);
  }
}

// The template row once, at the top of the list: further rows are data at run time.
void draw_listview(Ctx& x, const Control& c, const Rect& clip) {
  const Json& item = ub::get(*c.rec, "item");
  if (!item.is_object()) return;
  long long rows = std::max(1LL, layout::int_field(*c.rec, "rows", 1, c.key));
  Rect ibox = layout::read_box(ub::get(item, "position"), c.box.l, c.box.t, c.key + ".item");
  if (!ub::has(ub::get(item, "position"), "width")) ibox.r = ibox.l + c.box.w();
  if (!ub::has(ub::get(item, "position"), "height")) ibox.b = ibox.t + (int)(c.box.h() / rows);
  element(x, item, ibox, clip, c.key + ".item");
  const Json& subs = ub::get(item, "subItem");
  if (!subs.is_array()) return;
  for (size_t i = 0; i < subs.size(); ++i) {
    std::string where = c.key + ".subItem[" + std::to_string(i) + "]";
    element(x, subs[i], rel_box(subs[i], "position", ibox, where), clip.intersect(ibox), where);
  }
}

void draw_radiogroup(Ctx& x, const Control& c, const Rect& clip) {
  const Json& rbs = ub::get(*c.rec, "radiobuttons");
  if (!rbs.is_array()) return;
  for (size_t i = 0; i < rbs.size(); ++i) {
    std::string where = c.key + ".radiobuttons[" + std::to_string(i) + "]";
    const Json& v = ub::get(rbs[i], "visible");
    if (v.is_boolean() && !v.get<bool>()) continue;
    element(x, rbs[i], rel_box(rbs[i], "position", c.box, where), clip, where);
  }
}

void draw_control(Ctx& x, const Control& c) {
  const Json& r = *c.rec;
  const Rect& clip = c.clip;
  ground(x, r, c.box, clip);
  picture(x, str_field(r, "backgroundPic"), c.box, clip);
  const std::string& t = c.type;
  if (t == "textview" || t == "button") {
    picture(x, pic_of(r, false), inner_box(c, "iconPosition"), clip);
    x.tp.draw(x.cv, str_field(r, "text"), inner_box(c, "textPosition"), style_of(r, t == "button" ? 37 : 36, c.key),
              clip);
  } else if (t == "checkbox") {
    picture(x, pic_of(r, is_checked(r)), inner_box(c, "iconPosition"), clip);
    x.tp.draw(x.cv, str_field(r, "text"), inner_box(c, "textPosition"), style_of(r, 37, c.key), clip);
  } else if (t == "edittext") {
    draw_edittext(x, c, clip);
  } else if (t == "seekbar") {
    draw_seekbar(x, c, clip);
  } else if (t == "radiogroup") {
    draw_radiogroup(x, c, clip);
  } else if (t == "listview") {
    draw_listview(x, c, clip);
  }
}

}  // namespace

Rgba ground_color(const Json& doc) {
  return color_of(ub::get(doc, "backgroundColor")).value_or(Rgba{0, 0, 0, 255});
}

void paint_layout(const layout::Layout& lay, Canvas& cv, TextPainter& tp, Pictures& pics) {
  Ctx x{cv, tp, pics};
  for (const Control& c : lay.controls)
    if (c.shown && !c.vis.empty()) draw_control(x, c);
}

}  // namespace j2i
