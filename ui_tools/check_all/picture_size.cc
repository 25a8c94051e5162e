// #21: every picture a layout names exists in resources/images and has exactly the
// pixel size of the box it is drawn in ("图 == 盒").
#include <filesystem>
#include <map>
#include <set>

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

void add_pictab(const Json& rec, const std::string& what, int w, int h, std::vector<PictureUse>& out) {
  const Json& tab = ub::get(rec, "picTab");
  for (const char* k : kPicSlots) {
    std::string ref = str_field(tab, k);
    if (!ref.empty()) out.push_back({what + ".picTab." + k, ref, w, h});
  }
}

// A member of a list template or radio group: its box, its icon box when it has one.
void add_member(const Json& rec, const std::string& what, const layout::Rect& box, std::vector<PictureUse>& out) {
  std::string bg = str_field(rec, "backgroundPic");
  if (!bg.empty()) out.push_back({what + ".backgroundPic", bg, box.w(), box.h()});
  const Json& ip = ub::get(rec, "iconPosition");
  layout::Rect icon = ip.is_object() ? layout::read_box(ip, 0, 0, what) : box;
  if (icon.empty()) icon = box;
  add_pictab(rec, what, icon.w(), icon.h(), out);
}

std::vector<PictureUse> uses_of(const LayoutFile& lf, const layout::Control& c) {
  std::vector<PictureUse> out;
  const Json& rec = *c.rec;
  std::string at = where(lf, c);
  for (const char* k : {"backgroundPic", "progressPic", "secondaryProgressPic"}) {
    std::string ref = str_field(rec, k);
    if (!ref.empty()) out.push_back({at + "." + k, ref, c.box.w(), c.box.h()});
  }
  if (c.type == "seekbar") {
    const Json& th = ub::get(rec, "thumb");
    int tw = (int)layout::int_field(ub::get(th, "size"), "width", 0, c.key);
    int thh = (int)layout::int_field(ub::get(th, "size"), "height", 0, c.key);
    for (const char* k : {"normalPic", "pressedPic"}) {
      std::string ref = str_field(th, k);
      if (!ref.empty()) out.push_back({at + ".thumb." + k, ref, tw, thh});
    }
  }
  layout::Rect icon = layout::inner_box(c, "iconPosition");
  add_pictab(rec, at, icon.w(), icon.h(), out);
  if (c.type == "radiogroup" && ub::get(rec, "radiobuttons").is_array()) {
    const Json& rbs = rec["radiobuttons"];
    for (size_t i = 0; i < rbs.size(); ++i) {
      std::string w = at + ".radiobuttons[" + std::to_string(i) + "]";
      add_member(rbs[i], w, layout::read_box(ub::get(rbs[i], "position"), 0, 0, w), out);
    }
  }
  if (c.type == "listview" && ub::get(rec, "item").is_object()) {
    const Json& item = rec["item"];
    add_member(item, at + ".item", layout::read_box(ub::get(item, "position"), 0, 0, at + ".item"), out);
    const Json& subs = ub::get(item, "subItem");
    if (subs.is_array())
      for (size_t i = 0; i < subs.size(); ++i) {
        std::string w = at + ".subItem[" + std::to_string(i) + "]";
        add_member(subs[i], w, layout::read_box(ub::get(subs[i], "position"), 0, 0, w), out);
      }
  }
  return out;
}

}  // namespace

void rule_picture_size(const Project& p, Report& r) {
  r.section(21, "图 == 盒");
  std::set<std::string> used;
  std::map<std::string, layout::PictureProbe> probes;  // one look at each file
  int count = 0;
  for (const auto& lf : p.layouts) {
    if (!lf.ok()) continue;
    for (const auto& c : lf.lay.controls) {
      for (const auto& u : uses_of(lf, c)) {
        ++count;
        auto known = probes.find(u.ref);
        if (known == probes.end()) known = probes.emplace(u.ref, layout::probe_picture(p.images_dir(), u.ref)).first;
        const layout::PictureProbe& pr = known->second;
        if (pr.path.empty()) {
          r.fail(u.what + " 图片引用「" + u.ref + "」越出 resources/images");
          continue;
        }
        used.insert(fs::path(pr.path).lexically_normal().string());
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
        } else if (pr.w != u.w || pr.h != u.h) {
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
