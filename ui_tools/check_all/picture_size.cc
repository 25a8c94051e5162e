// #21: every picture a layout names exists in resources/images and has exactly the
// pixel size of the box it is drawn in ("图 == 盒").
#include <filesystem>
#include <map>
#include <set>
#include <unordered_map>

#include "check_all/rules.h"
#include "json2img/picture_files.h"

namespace fs = std::filesystem;

namespace check {

namespace {

struct PictureUse {
  std::string what;  // where the reference stands
  std::string ref;
  int w, h;          // the box it must fill
};

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

std::vector<PictureUse> uses_of(const LayoutFile& lf, const layout::Control& c) {
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

// "图 == 盒", with one allowance: a box of no height (a hairline's control) shows a picture
// one pixel high, and a box of no width one a pixel wide, since a picture cannot be empty.
bool fits(int pw, int ph, int bw, int bh) {
  if (pw == bw && ph == bh) return true;
  if (bh == 0 && bw > 0) return pw == bw && ph == 1;
  if (bw == 0 && bh > 0) return pw == 1 && ph == bh;
  return false;
}

}  // namespace

void rule_picture_size(const Project& p, Report& r) {
  r.section(21, "图 == 盒");
  std::set<std::string> used;
  struct Probe {
    layout::PictureProbe pr;
    std::string normal;  // the file's path, normalised
  };
  std::unordered_map<std::string, Probe> probes;  // one look at each file
  int count = 0;
  for (const auto& lf : p.layouts) {
    if (!lf.ok()) continue;
    for (const auto& c : lf.lay.controls) {
      for (const auto& u : uses_of(lf, c)) {
        ++count;
        auto known = probes.find(u.ref);
        if (known == probes.end()) {
          Probe pb{layout::probe_picture(p.images_dir(), u.ref), {}};
          if (!pb.pr.path.empty()) {
            pb.normal = fs::path(pb.pr.path).lexically_normal().string();
            used.insert(pb.normal);
          }
          known = probes.emplace(u.ref, std::move(pb)).first;
        }
        const layout::PictureProbe& pr = known->second.pr;
        if (pr.path.empty()) {
          r.fail(u.what + " 图片引用「" + u.ref + "」越出 resources/images");
          continue;
        }
        using layout::PictureStatus;
        if (pr.status == PictureStatus::missing) {
          r.fail(u.what + " 缺图 " + u.ref + "（resources/images 里没有）");
        } else if (pr.status == PictureStatus::outside) {
          r.fail(u.what + " 图片引用「" + u.ref + "」经符号链接越出 resources/images");
        } else if (pr.status == PictureStatus::not_png) {
          r.fail(u.what + " " + u.ref + " 不是 PNG");
        } else if (pr.status == PictureStatus::too_large) {
          r.fail(u.what + " 图 " + u.ref + " " + std::to_string(pr.w) + "x" + std::to_string(pr.h) + " 超过边长上限 " +
                 std::to_string(layout::kMaxPictureSide));
        } else if (!fits(pr.w, pr.h, u.w, u.h)) {
          r.fail(u.what + " 图 " + u.ref + " " + std::to_string(pr.w) + "x" + std::to_string(pr.h) + " ≠ 盒 " +
                 std::to_string(u.w) + "x" + std::to_string(u.h));
        }
      }
    }
  }
  // Pictures nothing refers to are only worth a warning: code may load them.
  std::error_code ec;
  std::vector<std::string> orphans;
  for (const auto& e : fs::directory_iterator(p.images_dir(), ec))
    if (e.is_regular_file(ec) && !used.count(e.path().lexically_normal().string()))
      orphans.push_back(e.path().filename().string());
  std::sort(orphans.begin(), orphans.end());
  if (!orphans.empty())
    r.warn(std::to_string(orphans.size()) + " 张图没有布局引用：" +
           ub::join(std::vector<std::string>(orphans.begin(), orphans.begin() + std::min<size_t>(orphans.size(), 10)),
                    ", ") +
           (orphans.size() > 10 ? " ..." : ""));
  r.pass(std::to_string(count) + " 处图片都与盒同尺寸");
}

}  // namespace check
