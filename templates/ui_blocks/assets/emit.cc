#include <filesystem>
#include <iostream>

#include "assets/recipes.h"
#include "assets/registry.h"
#include "gen_res/glyphs.h"
#include "gen_res/shapes.h"
#include "iconlib/iconlib.h"
#include "base/values.h"

namespace ub {

namespace {

using gen_res::Image;

// A library icon, brought to its control box by centring on a transparent canvas.
void emit_libicon(const std::string& out, const std::string& name, const Asset& a) {
  auto [img, meta] = iconlib::produce(a.g, a.size, a.color, a.state);
  if (a.canvas && (a.canvas->first != img.w || a.canvas->second != img.h)) {
    Image cv(a.canvas->first, a.canvas->second);
    gen_res::alpha_composite(cv, img, (int)floordiv(cv.w - img.w, 2), (int)floordiv(cv.h - img.h, 2));
    img = std::move(cv);
  }
  gen_res::save_png(img, out + "/" + name);
  std::cout << "  " << pad_right(name, 40) << " " << img.w << "x" << img.h << "  [components/icons "
            << to_text(meta.value("name", Json(""))) << " · " << to_text(meta.value("tier", Json(0))) << "档 · "
            << to_text(meta.value("render", Json(""))) << "]\n";
}

void emit_one(const std::string& out, const std::string& name, const Asset& a) {
  if (a.kind == "shape") {
    gen_res::save(gen_res::rounded_rect_ss(a.w, a.h, a.radius, a.fill, a.border, a.border_w, 8), out, name);
  } else if (a.kind == "clip") {
    gen_res::Mask mask = gen_res::coverage_mask(a.src_w, a.src_h, a.radius, a.ss);
    mask = gen_res::crop(mask, a.src_x, a.src_y, a.src_x + a.w, a.src_y + a.h);
    // Only the mask sets alpha: the fill's own alpha is not used.
    Image img(a.w, a.h, {a.fill.r, a.fill.g, a.fill.b, 255});
    gen_res::putalpha(img, mask);
    gen_res::save(img, out, name);
  } else if (a.kind == "chevron") {
    gen_res::save(chevron_image(a.w, a.h, a.color), out, name);
  } else if (a.kind == "bar") {
    Image img(a.w, a.h);
    Image pill = gen_res::rounded_rect_cov(a.w, a.bar_h, std::max<long long>(floordiv(a.bar_h, 2), 1), a.fill, 8);
    gen_res::alpha_composite(img, pill, 0, (int)floordiv(a.h - a.bar_h, 2));
    gen_res::save(img, out, name);
  } else if (a.kind == "mark") {
    gen_res::save(mark_image(a), out, name);
  } else if (a.kind == "chart") {
    gen_res::save(chart_image(a), out, name);
  } else if (a.kind == "libicon") {
    emit_libicon(out, name, a);
  } else {
    gen_res::glyph_icon(out, name, a.g, a.size, a.color, a.canvas);
  }
}

}  // namespace

std::vector<std::string> emit_registry(const AssetMap& assets, const std::string& project_root) {
  std::string out = (std::filesystem::path(project_root) / "resources" / "images").string();
  std::filesystem::create_directories(out);
  std::vector<std::string> made;
  // The map is ordered by byte order, which for UTF-8 is code-point order.
  for (const auto& [name, a] : assets) {
    emit_one(out, name, a);
    made.push_back(name);
  }
  return made;
}

}  // namespace ub
