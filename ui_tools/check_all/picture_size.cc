// #21: every picture a layout names exists in resources/images and has exactly the
// pixel size of the box it is drawn in ("图 == 盒").
#include <filesystem>
#include <map>
#include <set>
#include <unordered_map>

#include "check_all/picture_uses.h"
#include "check_all/rules.h"
#include "json2img/picture_files.h"

namespace fs = std::filesystem;

namespace check {

namespace {

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
  std::unordered_map<std::string, layout::PictureProbe> probes;  // one look at each file
  int count = 0;
  for (const auto& lf : p.layouts) {
    if (!lf.ok()) continue;
    for (const auto& c : lf.lay.controls) {
      for (const auto& u : picture_uses(lf, c)) {
        ++count;
        auto known = probes.find(u.ref);
        if (known == probes.end()) known = probes.emplace(u.ref, layout::probe_picture(p.images_dir(), u.ref)).first;
        const layout::PictureProbe& pr = known->second;
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
  r.pass(std::to_string(count) + " 处图片都与盒同尺寸");
}

}  // namespace check
