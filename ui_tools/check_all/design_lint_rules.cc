// #2, #3, #4: the design lint. Warnings only: a page that users find hard to touch or
// read still works, so these never fail the run. They run first,
// so that their lists never push a failure out of the tail that compose --check shows.
#include <memory>

#include "check_all/rules.h"
#include "design_lint/design_lint.h"

namespace check {

namespace {

// Pictures are decoded once per project, for both rules that look at them.
lint::PictureCache& pictures_of(const Project& p) {
  if (!p.lint_pictures) p.lint_pictures = std::make_shared<lint::PictureCache>(p.images_dir());
  return *p.lint_pictures;
}

template <typename Find>
void warn_all(const Project& p, Report& r, Find find, const std::string& ok) {
  uint64_t n = 0;
  for (const auto& lf : p.layouts) {
    if (!lf.ok()) continue;
    for (const lint::Finding& f : find(lf.lay)) {
      ++n;
      r.warn(where(lf, lf.lay.controls[(size_t)f.control]) + " " + lint::detail(lf.lay, f, p.lint));
    }
  }
  if (n == 0) r.pass(ok);
}

}  // namespace

void rule_touch_size(const Project& p, Report& r) {
  r.section(2, "触控目标 ≥ touch_min");
  if (p.lint.touch_min <= 0) {
    r.pass("没有 touch_min（设计令牌里没有），不查");
    return;
  }
  warn_all(p, r, [&](const layout::Layout& lay) { return lint::touch_findings(lay, p.lint); },
           "可触控件都不小于 " + std::to_string(p.lint.touch_min) + " px");
}

void rule_text_contrast(const Project& p, Report& r) {
  r.section(3, "文字对比度（正文 4.5:1、大字 3:1）");
  lint::PictureSource pics = pictures_of(p).source();
  warn_all(p, r, [&](const layout::Layout& lay) { return lint::contrast_findings(lay, pics); },
           "文字与背景对比度都够");
}

void rule_glyph_fill(const Project& p, Report& r) {
  r.section(4, "图标字形填满盒");
  lint::PictureSource pics = pictures_of(p).source();
  warn_all(p, r, [&](const layout::Layout& lay) { return lint::glyph_findings(lay, pics); },
           "图标字形都不远小于盒");
}

}  // namespace check
