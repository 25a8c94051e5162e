// Control factories: the methods through which builders make controls.
#include "controls/controls.h"

#include "controls/control_types.h"

namespace ub {

namespace {

constexpr long long kHintGrey = 8947848;  // 0x888888

// An empty mapping with room for n keys.
Json object_with_room(size_t n) {
  Json j = Json::object();
  j.get_ref<Json::object_t&>().reserve(n);
  return j;
}

// A colour table with one colour in color0 (and optionally color1).
Json single(long long c0, long long c1 = -1) {
  Json j = object_with_room(5);
  auto& o = j.get_ref<Json::object_t&>();
  o.emplace_back("color0", c0);
  o.emplace_back("color1", c1);
  o.emplace_back("color2", -1);
  o.emplace_back("color3", -1);
  o.emplace_back("color4", -1);
  return j;
}

// A picture's reference under images/; most names come as references already, and are
// added to the payload without a copy.
void add_image(Payload& p, std::string_view key, const std::string& bg) {
  if (starts_with(bg, "images/")) p.add_text(key, bg);
  else p.add_text(key, "images/" + bg);
}

Json square(int left, int top, int side) {
  return object_of("left", left, "top", top, "width", side, "height", side);
}

}  // namespace

std::pair<int, int> Controls::xy(double x, double y) const {
  return {(int)half_even(x - origin.first), (int)half_even(y - origin.second)};
}

Pos Controls::box(double x, double y, double w, double h) const {
  auto [l, t] = xy(x, y);
  return Pos{l, t, (int)half_even(w), (int)half_even(h)};
}

size_t count_controls(const NodeList& nodes) {
  size_t n = nodes.size();
  for (const auto& node : nodes) n += count_controls(node->children);
  return n;
}

NodePtr Controls::text(const std::string& caption, Pos pos, int fs, long long color, const std::string& txt,
                       const std::string& bg, int align, bool bold, bool touchable) {
  Payload p;
  p.reserve(bg.empty() ? 6 : 7, bg.empty() ? 1 : 2, txt.size() + (bg.empty() ? 0 : bg.size() + 7));
  p.add_int("fontSize", fs);
  p.add_text("text", txt);
  p.add_int("alignment", align);
  p.add_colors("colorTab", color);
  p.add_flag("touchable", touchable);
  p.add_flag("bold", bold);
  if (!bg.empty()) add_image(p, "backgroundPic", bg);
  return make_node("textview", caption, pos, std::move(p));
}

NodePtr Controls::button(const std::string& caption, Pos pos, const std::string& bg, std::optional<int> fs,
                         std::optional<long long> color, int align, const std::string& txt, bool touchable) {
  Payload p;
  p.reserve(6, 2, txt.size() + (bg.empty() ? 0 : bg.size() + 7));
  p.add_int("alignment", align);
  p.add_flag("touchable", touchable);
  if (!bg.empty()) add_image(p, "backgroundPic", bg);
  if (fs && *fs != 0) p.add_int("fontSize", *fs);
  if (color) p.add_colors("colorTab", *color, *color);  // a button repeats color0 in color1
  if (!txt.empty()) p.add_text("text", txt);
  return make_node("button", caption, pos, std::move(p));
}

NodePtr Controls::deco(const std::string& caption, Pos pos, long long color, const std::string& bg, int fs) {
  return text(caption, pos, fs ? fs : m.fs.b2, color, "", bg, kAlignCenter, false, false);
}

Json Controls::subitem(const std::string& caption, Pos pos, int fs, long long color, const std::string& txt,
                       const std::string& pic, int align, bool touchable) {
  last_subitem_ = ++sub_;
  return record_from(subitem_fields(),
                     object_of("id", kSubitemIdBase + sub_, "caption", caption, "position", pos.to_json(), "alignment",
                               align, "colorTab", single(color), "fontSize", fs, "picTab", object_of("pic0", pic),
                               "text", txt, "touchable", touchable));
}

NodePtr Controls::sep_node(int x, int y, int w, const std::string& id) {
  std::string p = shape(cat("sep_", w, "x1.png"), w, 1, 0, tcol("line"));
  return text(cat("RowSep", id), box(x, y, w, 1), m.fs.b2, hex2int(tok_color("line")), "", p, kAlignCenter, false,
              false);
}

NodePtr Controls::make_seekbar(const std::string& caption, Pos bx, long long progress, bool readonly) {
  int th = m.thumb;
  int bar_h = std::min(std::max(r4(bx.height * 0.43), 10), bx.height);
  std::string size = cat(bx.width, "x", bx.height, ".png");
  std::string p_track = bar("sk_track_" + size, bx.width, bx.height, bar_h, tcol("line"));
  std::string p_fill = bar("sk_fill_" + size, bx.width, bx.height, bar_h, tcol("brand"));
  Json thumb;
  if (!readonly) {
    std::string p_thumb = shape(cat("sk_thumb_", th, ".png"), th, th, floordiv(th, 2), tcol("brand"));
    thumb = Json{{"size", {{"width", th}, {"height", th}}}, {"normalPic", p_thumb}, {"pressedPic", p_thumb}};
  } else {
    // Size 0 draws no thumb: a picture would read as a draggable knob.
    thumb = Json{{"size", {{"width", 0}, {"height", 0}}}, {"normalPic", ""}, {"pressedPic", ""}};
  }
  Json p = Json::object();
  p["backgroundPic"] = p_track;
  p["progressPic"] = p_fill;
  p["secondaryProgressPic"] = "";
  p["defProgress"] = progress;
  p["max"] = 100;
  p["orientation"] = 0;
  p["thumb"] = thumb;
  p["touchable"] = true;
  return make_node("seekbar", caption, bx, std::move(p));
}

NodePtr Controls::make_edittext(const std::string& caption, Pos bx, const EditFields& f) {
  Json p = Json::object();
  p["alignment"] = kAlignLeft;
  p["fontSize"] = m.fs.b1;
  p["bgColorTab"] = single(hex2int(tok_color("page")));
  p["colorTab"] = single(col("fg1"));
  p["hintTextColor"] = kHintGrey;
  p["hintText"] = f.hint;
  p["text"] = f.text;
  p["textType"] = f.type;
  p["isPassword"] = f.password;
  p["passwordChar"] = f.password_char;
  p["beepEnable"] = true;
  p["touchable"] = true;
  return make_node("edittext", caption, bx, std::move(p));
}

NodePtr Controls::make_checkbox(const std::string& caption, Pos bx, bool checked) {
  int s = bx.width;
  int r = std::max((int)half_even(s * 0.25), 2);
  std::string off = mark(cat("cb_", s, "_off.png"), s, s, r, tcol("switchOff"));
  std::string on = mark(cat("cb_", s, "_on.png"), s, s, r, tcol("brand"), "check",
                        std::max((int)half_even(s * 0.58), 8), tcol("onBrand"));
  Json icon_pos = square(0, 0, s);
  Json p = Json::object();
  p["alignment"] = kAlignCenter;
  p["checked"] = checked;
  p["bold"] = false;
  p["fontSize"] = m.fs.b1;
  p["italic"] = false;
  p["text"] = "";
  p["colorTab"] = single(col("fg1"));
  p["backgroundColor"] = -1;
  p["touchable"] = true;
  p["iconPosition"] = icon_pos;
  p["textPosition"] = icon_pos;
  p["picTab"] = Json{{"pic0", off}, {"pic1", off}, {"pic2", on}};
  return make_node("checkbox", caption, bx, std::move(p));
}

NodePtr Controls::make_radiogroup(const std::string& caption, Pos bx, const Json& opts, long long selected,
                                  const std::string& name) {
  int s = m.cb, oh = m.opt_h, gw = bx.width;
  std::string off = mark(cat("rd_", s, "_off.png"), s, s, floordiv(s, 2), tcol("switchOff"));
  std::string on_name = cat("rd_", s, "_on.png");
  // Below 24 px a dot would blur: a plain brand disc instead.
  std::string on = s >= 24 ? mark(on_name, s, s, floordiv(s, 2), tcol("brand"), "dot",
                                  std::max((int)half_even(s * 0.42), 6), tcol("onBrand"))
                           : mark(on_name, s, s, floordiv(s, 2), tcol("brand"));
  if (truthy(opts) && !opts.is_array()) throw InputError("options of " + name + " must be a list");
  Json buttons = Json::array();
  int i = 0;
  for (const Json& txt : opts.is_array() ? opts : Json::array()) {
    last_radiobutton_ = ++sub_;
    Json b = record_from(
        radiobutton_fields(),
        object_of("id", kRadiobuttonIdBase + sub_, "caption", cat(name, "Opt", i + 1), "position",
                  object_of("left", 0, "top", i * oh, "width", gw, "height", oh), "alignment", kAlignLeft, "checked",
                  i == selected, "colorTab",
                  object_of("color0", col("fg1"), "color1", -1, "color2", col("brand"), "color3", -1, "color4", -1),
                  "fontSize", m.fs.b1, "iconPosition", square(m.spacer, (int)floordiv(oh - s, 2), s), "textPosition",
                  object_of("left", 2 * m.spacer + s, "top", floordiv(oh - m.h_b1, 2), "width", gw - (3 * m.spacer + s),
                            "height", m.h_b1),
                  "picTab", object_of("pic0", off, "pic1", off, "pic2", on), "text", txt));
    buttons.push_back(std::move(b));
    ++i;
  }
  return make_node("radiogroup", caption, bx, Json{{"touchable", true}, {"radiobuttons", std::move(buttons)}});
}

}  // namespace ub
