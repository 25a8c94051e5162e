#include "serve/preview_render.h"

#include "gen_res/png_writer.h"
#include "json2img/canvas.h"
#include "json2img/layout_model.h"
#include "json2img/layout_reader.h"
#include "json2img/painter.h"
#include "json2img/pictures.h"

namespace serve {

PreviewRenderer::PreviewRenderer(const std::string& font) : text_(font, j2i::kLatinFont) {}

std::string PreviewRenderer::render(std::string_view layout_text, const std::string& images_dir) {
  const layout::Layout lay = layout::read_layout_text(layout_text);
  j2i::Pictures pictures(images_dir);
  j2i::Canvas canvas(lay.W, lay.H, j2i::ground_color(lay));
  j2i::paint_layout(lay, canvas, text_, pictures);
  return gen_res::encode_png_fast(canvas.image());
}

void draw_preview(PreviewRenderer& renderer, const std::string& images_dir, RunOutcome& r) {
  if (!r.ok) return;
  try {
    r.png = renderer.render(r.layout_text, images_dir);
  } catch (const std::exception& e) {
    r.png.clear();
    r.notes.push_back(std::string("preview not drawn: ") + e.what());
  }
  std::string().swap(r.layout_text);  // drawn: the text is not kept
}

}  // namespace serve
