#include "json2img/text_painter.h"

#include <ft2build.h>
#include FT_FREETYPE_H
#include FT_SYNTHESIS_H

#include <algorithm>
#include <cmath>
#include <filesystem>

#include "base/values.h"

namespace j2i {

namespace {
// Code points from here on are Chinese and full-width: the range that needs a CJK font.
constexpr char32_t kCjkStart = 0x2E80;

bool is_space(char32_t c) { return c == ' ' || c == '\t' || c == 0x3000 || c == 0xA0; }
}  // namespace

struct TextPainter::Face {
  FT_Library lib = nullptr;
  FT_Face face = nullptr;
  std::string path;
  bool cjk = false;  // may draw Chinese
  int size = 0;      // pixel size last set
  ~Face() {
    if (face) FT_Done_Face(face);
    if (lib) FT_Done_FreeType(lib);
  }
  bool set_size(int px) {
    if (px != size && FT_Set_Pixel_Sizes(face, 0, (FT_UInt)px) == 0) size = px;
    return size == px;
  }
};

bool TextPainter::open(const std::string& path, bool cjk) {
  if (path.empty()) return false;
  std::error_code ec;
  if (!std::filesystem::is_regular_file(path, ec)) {
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
  f->path = path;
  f->cjk = cjk;
  faces_.push_back(std::move(f));
  return true;
}

TextPainter::TextPainter(const std::string& font, const std::string& latin_font) {
  open(font, true);
  open(latin_font, false);
}

TextPainter::~TextPainter() = default;

std::string TextPainter::describe() const {
  if (faces_.empty()) return "none (every glyph drawn as a box)";
  std::vector<std::string> parts;
  for (const auto& f : faces_) parts.push_back(f->path);
  std::string s = ub::join(parts, " + ");
  if (!faces_.front()->cjk) s += " (no CJK font: Chinese drawn as boxes)";
  return s;
}

TextPainter::Face* TextPainter::face_for(char32_t cp) {
  for (auto& f : faces_)
    if ((f->cjk || cp < kCjkStart) && FT_Get_Char_Index(f->face, cp) != 0) return f.get();
  return nullptr;
}

std::pair<int, int> TextPainter::metrics(int size) {
  for (auto& f : faces_)
    if (f->set_size(size)) {
      const FT_Size_Metrics& m = f->face->size->metrics;
      return {(int)(m.ascender >> 6), (int)((-m.descender) >> 6)};
    }
  int asc = (int)std::lround(size * 0.8);
  return {asc, size - asc};
}

int TextPainter::run_line(Canvas* cv, const std::u32string& line, int x, int baseline, const TextStyle& st,
                          const Rect& clip) {
  int pen = x;
  for (char32_t cp : line) {
    if (cp < 0x20 || cp == 0x7F) continue;
    Face* face = face_for(cp);
    if (face && face->set_size(st.size)) {
      FT_Face f = face->face;
      if (FT_Load_Glyph(f, FT_Get_Char_Index(f, cp), FT_LOAD_DEFAULT) == 0) {
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
    // A glyph no font can draw: an outlined box of a capital's height, a pixel inset.
    int box_adv = (int)std::lround(st.size * (cp >= kCjkStart ? 1.0 : 0.55));
    if (!is_space(cp) && cv) {
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
  auto [asc, desc] = metrics(st.size);
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
