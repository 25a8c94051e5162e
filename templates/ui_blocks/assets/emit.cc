#include <filesystem>

#include "base/output_files.h"
#include "assets/gauge_picture.h"
#include "assets/recipes.h"
#include "assets/registry.h"
#include "gen_res/glyphs.h"
#include "gen_res/png_writer.h"
#include "gen_res/shapes.h"
#include "iconlib/iconlib.h"
#include "base/values.h"

namespace ub {

namespace {

using gen_res::Image;

// What drawing needs: the icon library, where the report's lines go (none: nowhere), and
// whether the check mark's fall-back has been reported.
struct Drawing {
  const iconlib::Index& icons;
  std::ostream* log;
  bool check_fell_back = false;
};

// A library icon, brought to its control box by centring on a transparent canvas; its line
// of the report goes to the log.
Image libicon_image(const std::string& name, const Asset& a, Drawing& d) {
  auto [img, meta] = d.icons.produce(a.g, a.size, a.color, a.state, a.tier);
  if (a.canvas && (a.canvas->first != img.w || a.canvas->second != img.h)) {
    Image cv(a.canvas->first, a.canvas->second);
    gen_res::alpha_composite(cv, img, (int)floordiv(cv.w - img.w, 2), (int)floordiv(cv.h - img.h, 2));
    img = std::move(cv);
  }
  if (d.log)
    *d.log << "  " << pad_right(name, 40) << " " << img.w << "x" << img.h << "  [components/icons "
      << to_text(meta.value("name", Json(""))) << " · " << to_text(meta.value("tier", Json(0))) << "档 · "
      << to_text(meta.value("render", Json(""))) << "]\n";
  return img;
}

Image draw_one(const std::string& name, const Asset& a, Drawing& d) {
  if (a.kind == "shape") return gen_res::rounded_rect_ss(a.w, a.h, a.radius, a.fill, a.border, a.border_w, 8);
  if (a.kind == "clip") {
    gen_res::Mask mask = gen_res::coverage_mask(a.src_w, a.src_h, a.radius, a.ss);
    mask = gen_res::crop(mask, a.src_x, a.src_y, a.src_x + a.w, a.src_y + a.h);
    // Only the mask sets alpha: the fill's own alpha is not used.
    Image img(a.w, a.h, {a.fill.r, a.fill.g, a.fill.b, 255});
    gen_res::putalpha(img, mask);
    return img;
  }
  if (a.kind == "chevron") return chevron_image(a.w, a.h, a.color);
  if (a.kind == "bar") {
    Image img(a.w, a.h);
    Image pill = gen_res::rounded_rect_cov(a.w, a.bar_h, std::max<long long>(floordiv(a.bar_h, 2), 1), a.fill, 8);
    gen_res::alpha_composite(img, pill, 0, (int)floordiv(a.h - a.bar_h, 2));
    return img;
  }
  if (a.kind == "mark") {
    bool fell_back = false;
    Image img = mark_image(a, d.icons, &fell_back);
    // One line for the page, however many boxes are drawn so.
    if (fell_back && !d.check_fell_back && d.log) *d.log << kCheckFallbackLine << "\n";
    d.check_fell_back = d.check_fell_back || fell_back;
    return img;
  }
  if (a.kind == "chart") return chart_image(a);
  if (a.kind == "gauge") return gauge_image(a);
  if (a.kind == "shipped") return *a.pixels;
  if (a.kind == "libicon") return libicon_image(name, a, d);
  return gen_res::glyph_image(a.g, a.size, a.color, a.canvas);
}

}  // namespace

gen_res::Image draw_picture(const Asset& a, const iconlib::Index& icons) {
  Drawing d{icons, nullptr};
  return draw_one("", a, d);
}

std::vector<Picture> render_registry(const AssetMap& assets, const iconlib::Index& icons, std::ostream& log) {
  std::vector<Picture> pictures;
  Drawing d{icons, &log};
  // The map is ordered by byte order, which for UTF-8 is code-point order.
  for (const auto& [name, a] : assets) pictures.push_back({name, gen_res::encode_png(draw_one(name, a, d))});
  return pictures;
}

std::vector<std::string> emit_registry(const AssetMap& assets, const iconlib::Index& icons,
                                       const std::string& project_root, std::ostream& log) {
  base::OutputSet files;
  files.add_directory("resources/images");
  std::vector<std::string> made;
  for (auto& p : render_registry(assets, icons, log)) {
    made.push_back(p.name);
    files.add("resources/images/" + p.name, std::move(p.png));
  }
  files.commit(project_root);
  return made;
}

}  // namespace ub
