#include "json2img/text_painter.h"

#include <ft2build.h>
#include FT_FREETYPE_H
#include FT_SYNTHESIS_H

#include <algorithm>
#include <cmath>
#include <filesystem>

#include "spec/values.h"

namespace j2i {

namespace {
// Code points from here on are Chinese and full-width: the range that needs a CJK font.
constexpr char32_t kCjkStart = 0x2E80;

bool is_space(char32_t c) { return c == ' ' || c == '\t' || c == 0x3000 || c == 0xA0; }
}  // namespace

struct TextPainter::Face {
  FT_Library lib = nullptr;
  FT_Face face = nullptr;
  ~Face() {
    if (face) FT_Done_Face(face);
    if (lib) FT_Done_FreeType(lib);
  }
};

TextPainter::TextPainter(const std::string& cjk_font, const std::string& latin_font) {
  auto open = [&](const std::string& path) -> bool {
    if (path.empty()) return false;
    if (!std::filesystem::is_regular_file(path)) {
      warnings_.push_back("font not found: " + path);
      return false;
    }
    auto f = std::make_unique<Face>();
    if (FT_Init_FreeType(&f->lib) != 0) {
      warnings_.push_back("FreeType could not start");
      return false;
    }
    if (FT_New_Face(f->lib, path.c_str(), 0, &f->face) != 0 || !FT_IS_SCALABLE(f->face)) {
      warnings_.push_back("FreeType cannot use the font " + path);
      return false;
    }
    face_ = std::move(f);
    path_ = path;
    return true;
  };
  if (open(cjk_font)) {
    cjk_ = true;
  } else {
    open(latin_font);
  }
}

TextPainter::~TextPainter() = default;

std::string TextPainter::describe() const {
  if (!face_) return "none (every glyph drawn as a box)";
  if (cjk_) return path_;
  return "no CJK font (Chinese drawn as boxes; Latin from " + path_ + ")";
}

bool TextPainter::usable(char32_t cp) const {
  if (!face_) return false;
  if (!cjk_ && cp >= kCjkStart) return false;
  return FT_Get_Char_Index(face_->face, cp) != 0;
}

void TextPainter::set_size(int size) {
  if (!face_ || size == size_) return;
  if (FT_Set_Pixel_Sizes(face_->face, 0, (FT_UInt)size) == 0) size_ = size;
}

int TextPainter::run_line(Canvas* cv, const std::u32string& line, int x, int baseline, const TextStyle& st,
                          const Rect& clip) {
  int pen = x;
  for (char32_t cp : line) {
    if (cp < 0x20 || cp == 0x7F) continue;
    int box_adv = (int)std::lround(st.size * (cp >= kCjkStart ? 1.0 : 0.55));
    if (usable(cp)) {
      FT_Face f = face_->face;
      set_size(st.size);
      FT_UInt gi = FT_Get_Char_Index(f, cp);
      if (FT_Load_Glyph(f, gi, FT_LOAD_DEFAULT) == 0) {
        if (st.bold) FT_GlyphSlot_Embolden(f->glyph);
        int adv = (int)((f->glyph->advance.x + 32) >> 6);
        if (cv && FT_Render_Glyph(f->glyph, FT_RENDER_MODE_NORMAL) == 0) {
          const FT_Bitmap& bm = f->glyph->bitmap;
          if (bm.pixel_mode == FT_PIXEL_MODE_GRAY && bm.buffer && bm.pitch > 0)
            cv->draw_coverage(bm.buffer, (int)bm.width, (int)bm.rows, bm.pitch, pen + f->glyph->bitmap_left,
                              baseline - f->glyph->bitmap_top, st.color, clip);
        }
        pen += adv;
        continue;
      }
    }
    if (!is_space(cp) && cv) {
      // Box for a glyph that cannot be drawn: the height of a capital, inset by a pixel.
      int top = baseline - (int)std::lround(st.size * 0.75);
      cv->frame({pen + 1, top, pen + std::max(2, box_adv - 1), baseline}, st.color, clip);
      ++boxes_;
    }
    pen += box_adv;
  }
  return pen - x;
}

int TextPainter::measure(const std::string& line, int size, bool bold) {
  TextStyle st;
  st.size = size;
  st.bold = bold;
  return run_line(nullptr, ub::utf8_decode(line), 0, 0, st, {});
}

void TextPainter::draw(Canvas& cv, const std::string& text, const Rect& box, const TextStyle& st0,
                       const Rect& clip) {
  if (text.empty() || st0.size <= 0) return;
  TextStyle st = st0;
  st.size = std::min(st.size, 512);
  int asc = (int)std::lround(st.size * 0.8), desc = st.size - asc;
  if (face_) {
    set_size(st.size);
    const FT_Size_Metrics& m = face_->face->size->metrics;
    asc = (int)(m.ascender >> 6);
    desc = (int)((-m.descender) >> 6);
  }
  std::vector<std::u32string> lines{U""};
  for (char32_t c : ub::utf8_decode(text)) {
    if (c == '\n')
      lines.emplace_back();
    else
      lines.back() += c;
  }
  int lh = asc + desc;
  int top = box.t + (box.h() - lh * (int)lines.size()) / 2;
  Rect cut = box.intersect(clip);
  for (size_t i = 0; i < lines.size(); ++i) {
    int w = run_line(nullptr, lines[i], 0, 0, st, {});
    int x = box.l;
    if (st.align == 37) x = box.l + (box.w() - w) / 2;
    if (st.align == 38) x = box.r - w;
    run_line(&cv, lines[i], x, top + (int)i * lh + asc, st, cut);
  }
}

}  // namespace j2i
