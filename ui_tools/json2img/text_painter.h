// Text of the preview through FreeType. A glyph that no loaded font can draw, and
// every glyph when FreeType cannot be used at all, becomes an outlined box.
#pragma once

#include <memory>
#include <string>
#include <vector>

#include "json2img/canvas.h"

namespace j2i {

// Latin companion font of the system (Debian fonts-dejavu-core): it draws what the
// given font lacks, below the CJK range only. Without it those glyphs are boxes.
inline constexpr char kLatinFont[] = "/usr/share/fonts/truetype/dejavu/DejaVuSans.ttf";

struct TextStyle {
  int size = 16;
  int align = 36;  // 36 left, 37 centred, 38 right; anything else left
  bool bold = false;
  Rgba color{255, 255, 255, 255};
};

class TextPainter {
 public:
  // font: the font for every character ("" = none); latin_font draws what font lacks,
  // but never Chinese: without a usable font, Chinese is drawn as boxes.
  TextPainter(const std::string& font, const std::string& latin_font);
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
  // The face that draws cp, nullptr when none does.
  Face* face_for(char32_t cp);
  // Draws (when cv is given) or measures one line starting at pen x; returns the advance.
  int run_line(Canvas* cv, const std::u32string& line, int x, int baseline, const TextStyle& st,
               const Rect& clip);

  bool open(const std::string& path, bool cjk);
  // Line metrics of the first face at a size: ascent and descent in pixels.
  std::pair<int, int> metrics(int size);

  std::vector<std::unique_ptr<Face>> faces_;  // in order of preference
  std::vector<std::string> warnings_;
  int boxes_ = 0;
};

}  // namespace j2i
