// Text of the preview through FreeType. A glyph that no loaded font can draw, and
// every glyph when FreeType cannot be used at all, becomes an outlined box.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "json2img/canvas.h"

namespace j2i {

struct TextStyle {
  int size = 16;
  int align = 36;  // 36 left, 37 centred, 38 right; anything else left
  bool bold = false;
  Rgba color{255, 255, 255, 255};
};

class TextPainter {
 public:
  // cjk_font: the font for every character ("" = none). Without it, latin_font (if it
  // loads) draws only characters below the CJK range and everything else is a box.
  TextPainter(const std::string& cjk_font, const std::string& latin_font);
  ~TextPainter();
  TextPainter(const TextPainter&) = delete;
  TextPainter& operator=(const TextPainter&) = delete;

  // One or more lines (split at LF) aligned in box and centred vertically, cut to clip.
  void draw(Canvas& cv, const std::string& text, const Rect& box, const TextStyle& st, const Rect& clip);
  // Advance width of one line in pixels.
  int measure(const std::string& line, int size, bool bold);

  // What draws the text, for the report.
  std::string describe() const;
  const std::vector<std::string>& warnings() const { return warnings_; }
  int boxes_drawn() const { return boxes_; }

 private:
  struct Face;
  bool usable(char32_t cp) const;
  void set_size(int size);
  // Draws (when cv is given) or measures one line starting at pen x; returns the advance.
  int run_line(Canvas* cv, const std::u32string& line, int x, int baseline, const TextStyle& st,
               const Rect& clip);

  std::unique_ptr<Face> face_;
  bool cjk_ = false;  // the face may draw every character
  std::string path_;
  std::vector<std::string> warnings_;
  int boxes_ = 0;
  int size_ = 0;
};

}  // namespace j2i
