#include "check_all/picture_uses.h"

#include "check_all/rules.h"

namespace check {

namespace {

const char* const kPicSlots[] = {"pic0", "pic1", "pic2", "pic3", "pic4"};

// Where a reference stands: made only for the references there are.
struct Place {
  const LayoutFile& lf;
  const layout::Control& c;
  std::string text;
  const std::string& get() {
    if (text.empty()) text = where(lf, c);
    return text;
  }
};

void add(Place& at, const std::string& what, std::string_view ref, int w, int h, std::vector<PictureUse>& out) {
  if (!ref.empty()) out.push_back({at.get() + what, std::string(ref), w, h});
}

void add_pictab(Place& at, const std::string& what, const std::string_view* pics, int w, int h,
                std::vector<PictureUse>& out) {
  for (int i = 0; i < 5; ++i)
    if (!pics[i].empty()) add(at, what + ".picTab." + kPicSlots[i], pics[i], w, h, out);
}

// A member of a list template or radio group: its box, its icon box when it has one.
void add_member(Place& at, const layout::Layout& lay, const layout::Element& e, const std::string& what,
                std::vector<PictureUse>& out) {
  const std::string w = at.get() + what;  // as the box's error names it
  const layout::Rect box = layout::read_box(lay, e.position, 0, 0, w);
  add(at, what + ".backgroundPic", e.background_pic, box.w(), box.h(), out);
  layout::Rect icon = e.icon_position.is_object() ? layout::read_box(lay, e.icon_position, 0, 0, w) : box;
  if (icon.empty()) icon = box;
  add_pictab(at, what, e.pics, icon.w(), icon.h(), out);
}

}  // namespace

std::vector<PictureUse> picture_uses(const LayoutFile& lf, const layout::Control& c) {
  std::vector<PictureUse> out;
  const layout::Layout& lay = lf.lay;
  const layout::Extra* ex = lay.extra_of(c);
  Place at{lf, c, {}};
  add(at, ".backgroundPic", c.background_pic, c.box.w(), c.box.h(), out);
  if (ex) {
    add(at, ".progressPic", ex->progress_pic, c.box.w(), c.box.h(), out);
    add(at, ".secondaryProgressPic", ex->secondary_progress_pic, c.box.w(), c.box.h(), out);
  }
  if (c.type == "seekbar" && ex) {
    int tw = (int)lay.number(ex->thumb_w, 0, c.key);
    int thh = (int)lay.number(ex->thumb_h, 0, c.key);
    add(at, ".thumb.normalPic", ex->thumb_normal, tw, thh, out);
    add(at, ".thumb.pressedPic", ex->thumb_pressed, tw, thh, out);
  }
  layout::Rect icon = layout::icon_box(lay, c);
  add_pictab(at, "", c.pics, icon.w(), icon.h(), out);
  if (c.type == "radiogroup" && ex && ex->has_radios)
    for (int i = ex->radio_begin; i < ex->radio_end; ++i)
      add_member(at, lay, lay.elements[(size_t)i], ".radiobuttons[" + std::to_string(i - ex->radio_begin) + "]", out);
  if (c.type == "listview" && ex && ex->item >= 0) {
    add_member(at, lay, lay.elements[(size_t)ex->item], ".item", out);
    if (ex->has_subs)
      for (int i = ex->sub_begin; i < ex->sub_end; ++i)
        add_member(at, lay, lay.elements[(size_t)i], ".subItem[" + std::to_string(i - ex->sub_begin) + "]", out);
  }
  return out;
}

}  // namespace check
