#include "driver/design_report.h"

#include "design_lint/design_lint.h"
#include "json2img/layout_reader.h"

namespace ub {

std::string design_lint_lines(const std::string& layout_text, const std::string& layout_path,
                              const std::vector<Picture>& pictures, const std::string& images_dir,
                              const Json& tokens) {
  layout::Layout lay;
  try {
    lay = layout_text.empty() ? layout::read_layout_file(layout_path) : layout::read_layout_text(layout_text);
  } catch (const std::exception&) {
    return "";  // the page was written by this run; a layout it cannot read is check_all's to report
  }
  const lint::Settings s = lint::settings_from_tokens(tokens);
  lint::PictureCache cache(images_dir);
  for (const Picture& p : pictures)
    if (!p.png.empty()) cache.add_png(p.name, &p.png);  // a written picture's bytes may have moved to its file
  const lint::PictureSource pics = cache.source();
  std::string out;
  try {
    out += lint::summary_line(lay, lint::Kind::touch, lint::touch_findings(lay, s), s);
    out += lint::summary_line(lay, lint::Kind::contrast, lint::contrast_findings(lay, pics), s);
    out += lint::summary_line(lay, lint::Kind::glyph, lint::glyph_findings(lay, pics), s);
  } catch (const std::exception&) {
    // A record the lint cannot read: the composer wrote it, check_all names it.
  }
  return out;
}

}  // namespace ub
