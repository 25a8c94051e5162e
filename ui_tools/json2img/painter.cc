#include "json2img/painter.h"

#include <algorithm>

#include "base/values.h"

namespace j2i {

using layout::Control;
using layout::Element;
using layout::Extra;
using layout::Layout;

namespace {

struct Ctx {
  const Layout& lay;
  Canvas& cv;
  TextPainter& tp;
  Pictures& pics;
};

const Rgba kWhite{255, 255, 255, 255};

TextStyle style_of(const Layout& lay, const layout::Num& font_size, const layout::Num& alignment, bool bold,
                   std::optional<Rgba> color, int default_align, const std::string& where) {
  TextStyle st;
  st.size = (int)lay.number(font_size, 16, where);
  st.align = (int)lay.number(alignment, default_align, where);
  st.bold = bold;
  st.color = color.value_or(kWhite);
  return st;
}

// A box given relative to an origin, as radio buttons and list subitems carry them.
Rect rel_box(const Layout& lay, const layout::Box& b, const Rect& origin, const std::string& where) {
  if (!b.is_object()) return origin;
  return layout::read_box(lay, b, origin.l, origin.t, where);
}

// backgroundColor, else the first colour of bgColorTab.
void ground(Ctx& x, const layout::Color& background, const layout::Color& tab, const Rect& box, const Rect& clip) {
  auto c = background.rgba();
  if (!c) c = tab.rgba();
  if (c) x.cv.fill(box, *c, clip);
}

void picture(Ctx& x, std::string_view ref, const Rect& box, const Rect& clip) {
  if (auto img = x.pics.get(ref)) x.cv.draw_image(*img, box.l, box.t, clip.intersect(box));
}

std::string_view pic_of(const std::string_view* pics, bool checked) {
  return checked && !pics[2].empty() ? pics[2] : pics[0];
}

// One element of a list template or a radio group: ground, picture, text.
void element(Ctx& x, const Element& e, const Rect& box, const Rect& clip, const std::string& where) {
  ground(x, e.background, e.ground_tab, box, clip);
  picture(x, pic_of(e.pics, e.checked), rel_box(x.lay, e.icon_position, box, where), clip);
  const layout::Color& color = e.checked && e.checked_color.set ? e.checked_color : e.text_color;
  x.tp.draw(x.cv, std::string(e.text), rel_box(x.lay, e.text_position, box, where),
            style_of(x.lay, e.font_size, e.alignment, e.bold, color.rgba(), 36, where), clip);
}

void draw_edittext(Ctx& x, const Control& c, const Rect& clip) {
  const Extra* ex = x.lay.extra_of(c);
  std::string text(c.text);
  TextStyle st = style_of(x.lay, c.font_size, c.alignment, c.bold, c.text_color.rgba(), 36, c.key);
  if (text.empty()) {
    text = ex ? std::string(ex->hint_text) : "";
    st.color = (ex ? ex->hint_color.rgba() : std::nullopt).value_or(Rgba{136, 136, 136, 255});
  } else if (ex && ex->is_password) {
    const std::string ch(ex->password_char);
    std::string masked;
    for (size_t i = 0, n = ub::cp_len(text); i < n; ++i) masked += ch.empty() ? "*" : ch;
    text = masked;
  }
  x.tp.draw(x.cv, text, c.box, st, clip);
}

void draw_seekbar(Ctx& x, const Control& c, const Rect& clip) {
  static const Extra none;
  const Extra& ex = x.lay.extra_of(c) ? *x.lay.extra_of(c) : none;
  long long mx = x.lay.number(ex.max, 100, c.key);
  long long pr = std::clamp(x.lay.number(ex.def_progress, 0, c.key), 0LL, std::max(mx, 0LL));
  int reach = mx > 0 ? (int)(c.box.w() * pr / mx) : 0;
  picture(x, ex.progress_pic, c.box, clip.intersect({c.box.l, c.box.t, c.box.l + reach, c.box.b}));
  auto img = x.pics.get(ex.thumb_normal);
  long long tw = x.lay.number(ex.thumb_w, 0, c.key + ".thumb");
  if (img && tw > 0) {
    int cx = c.box.l + reach, cy = c.box.t + c.box.h() / 2;
    x.cv.draw_image(*img, cx - img->w / 2, cy - img->h / 2, c.clip);
  }
}

// The template row once, at the top of the list: further rows are data at run time.
void draw_listview(Ctx& x, const Control& c, const Rect& clip) {
  const Extra* ex = x.lay.extra_of(c);
  if (!ex || ex->item < 0) return;
  const Element& item = x.lay.elements[(size_t)ex->item];
  long long rows = std::max(1LL, x.lay.number(ex->rows, 1, c.key));
  const std::string where = c.key + ".item";
  Rect ibox = layout::read_box(x.lay, item.position, c.box.l, c.box.t, where);
  if (!item.position.width.present()) ibox.r = ibox.l + c.box.w();
  if (!item.position.height.present()) ibox.b = ibox.t + (int)(c.box.h() / rows);
  element(x, item, ibox, clip, where);
  if (!ex->has_subs) return;
  for (int i = ex->sub_begin; i < ex->sub_end; ++i) {
    const Element& sub = x.lay.elements[(size_t)i];
    const std::string at = c.key + ".subItem[" + std::to_string(i - ex->sub_begin) + "]";
    element(x, sub, rel_box(x.lay, sub.position, ibox, at), clip.intersect(ibox), at);
  }
}

void draw_radiogroup(Ctx& x, const Control& c, const Rect& clip) {
  const Extra* ex = x.lay.extra_of(c);
  if (!ex || !ex->has_radios) return;
  for (int i = ex->radio_begin; i < ex->radio_end; ++i) {
    const Element& rb = x.lay.elements[(size_t)i];
    const std::string where = c.key + ".radiobuttons[" + std::to_string(i - ex->radio_begin) + "]";
    if (rb.hidden) continue;
    element(x, rb, rel_box(x.lay, rb.position, c.box, where), clip, where);
  }
}

void draw_control(Ctx& x, const Control& c) {
  const Rect& clip = c.clip;
  ground(x, c.background, c.ground_tab, c.box, clip);
  picture(x, c.background_pic, c.box, clip);
  const std::string& t = c.type;
  if (t == "textview" || t == "button") {
    picture(x, pic_of(c.pics, false), layout::icon_box(x.lay, c), clip);
    x.tp.draw(x.cv, std::string(c.text), layout::text_box(x.lay, c),
              style_of(x.lay, c.font_size, c.alignment, c.bold, c.text_color.rgba(), t == "button" ? 37 : 36, c.key),
              clip);
  } else if (t == "checkbox") {
    picture(x, pic_of(c.pics, c.checked), layout::icon_box(x.lay, c), clip);
    x.tp.draw(x.cv, std::string(c.text), layout::text_box(x.lay, c),
              style_of(x.lay, c.font_size, c.alignment, c.bold, c.text_color.rgba(), 37, c.key), clip);
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

Rgba ground_color(const Layout& lay) { return lay.ground.value_or(Rgba{0, 0, 0, 255}); }

void paint_layout(const Layout& lay, Canvas& cv, TextPainter& tp, Pictures& pics) {
  Ctx x{lay, cv, tp, pics};
  for (const Control& c : lay.controls)
    if (c.shown && !c.vis.empty()) draw_control(x, c);
}

}  // namespace j2i
