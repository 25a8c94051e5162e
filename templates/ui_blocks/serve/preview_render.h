// The preview picture of a composed layout, drawn in the server's process by the renderer
// of json2img. The fonts are opened once; the picture is encoded for speed, not size, as it
// is shown once and replaced on the next save.
#pragma once

#include <string>

#include "base/values.h"
#include "json2img/text_painter.h"
#include "serve/recompose.h"

namespace serve {

class PreviewRenderer {
 public:
  // font: the TTF file for every character, "" for none (Chinese drawn as boxes).
  explicit PreviewRenderer(const std::string& font);

  // The first screen of the layout file's text as PNG bytes, with the pictures of images_dir.
  // Throws layout::LayoutError (or std::runtime_error) on a layout that cannot be drawn.
  std::string render(std::string_view layout_text, const std::string& images_dir);

 private:
  j2i::TextPainter text_;
};

// The preview of a good run into r.png; a layout that cannot be drawn leaves it empty (the
// last preview stays) and says why in a note.
void draw_preview(PreviewRenderer& renderer, const std::string& images_dir, RunOutcome& r);

}  // namespace serve
