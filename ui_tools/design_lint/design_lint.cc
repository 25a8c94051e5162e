#include "design_lint/design_lint.h"

#include <algorithm>
#include <cmath>
#include <cstdio>

#include "gen_res/png_writer.h"
#include "json2img/picture_files.h"

namespace lint {

namespace {

using gen_res::Rgba;
using layout::Control;
using layout::Layout;

bool is_window(const std::string& type) {
  return type == "window" || type == "scrollwindow" || type == "pagewindow" || type == "slidewindow";
}

// touchable as written, else the default of the control's type.
bool touchable(const Control& c) {
  if (c.touchable >= 0) return c.touchable == 1;
  return c.type != "textview" && c.type != "window";
}

// The outermost hidden control at or above each control (-1: none). A hidden dialog's
// texts and buttons count as the dialog shows them, over what lies below it.
std::vector<int> hidden_roots(const Layout& lay) {
  std::vector<int> root(lay.controls.size(), -1);
  for (size_t i = 0; i < lay.controls.size(); ++i) {
    const Control& c = lay.controls[i];
    if (c.parent >= 0 && root[(size_t)c.parent] >= 0) root[i] = root[(size_t)c.parent];
    else if (c.hidden) root[i] = (int)i;
  }
  return root;
}

Rgba over(Rgba top, Rgba below) {
  auto mix = [&](int a, int b) { return (a * top.a + b * (255 - top.a) + 127) / 255; };
  return {mix(top.r, below.r), mix(top.g, below.g), mix(top.b, below.b), 255};
}

// The picture's pixel at (x, y) of the screen, the picture stretched over box.
std::optional<Rgba> sample(const gen_res::Image& img, const layout::Rect& box, int x, int y) {
  if (img.w <= 0 || img.h <= 0 || box.w() <= 0 || box.h() <= 0) return std::nullopt;
  int px = (int)std::clamp<long long>((long long)(x - box.l) * img.w / box.w(), 0, img.w - 1);
  int py = (int)std::clamp<long long>((long long)(y - box.t) * img.h / box.h(), 0, img.h - 1);
  const uint8_t* p = img.at(px, py);
  return Rgba{p[0], p[1], p[2], p[3]};
}

double channel(int v) {
  double c = v / 255.0;
  return c <= 0.04045 ? c / 12.92 : std::pow((c + 0.055) / 1.055, 2.4);
}

double luminance(Rgba c) { return 0.2126 * channel(c.r) + 0.7152 * channel(c.g) + 0.0722 * channel(c.b); }

std::string hex(Rgba c) {
  char buf[8];
  std::snprintf(buf, sizeof buf, "#%02X%02X%02X", c.r & 255, c.g & 255, c.b & 255);
  return buf;
}

std::string fixed1(double v) {
  char buf[32];
  std::snprintf(buf, sizeof buf, "%.1f", std::floor(v * 10) / 10);  // never rounds up past a limit
  return buf;
}

std::string size_text(const Finding& f) { return std::to_string(f.w) + "x" + std::to_string(f.h); }

bool has_text(const Layout& lay, const Control& c) {
  if (c.text.empty()) return false;
  if (c.type == "textview" || c.type == "button" || c.type == "checkbox") return true;
  if (c.type == "edittext") {
    const layout::Extra* ex = lay.extra_of(c);
    return !(ex && ex->is_password);
  }
  return false;
}

// A picture with no text on an untouchable text view: how pages draw tiles, discs, icons.
bool is_decoration(const Control& c) {
  return c.type == "textview" && c.text.empty() && !c.background_pic.empty() && !touchable(c);
}

}  // namespace

Settings settings_from_tokens(const nlohmann::ordered_json& tok) {
  Settings s;
  auto size = tok.find("size");
  if (size != tok.end() && size->is_object()) {
    auto t = size->find("touch_min");
    if (t != size->end() && t->is_number()) s.touch_min = std::max(0, (int)t->get<double>());
  }
  return s;
}

double contrast_ratio(Rgba a, Rgba b) {
  double la = luminance(a), lb = luminance(b);
  return (std::max(la, lb) + 0.05) / (std::min(la, lb) + 0.05);
}

namespace {

// The controls that can lie beneath a text: visible ones with a picture or a fill, by the
// screen cells their visible part covers, each cell's list in drawing order. Controls
// scrolled out of view have no visible part, so a long page costs what one screen holds.
struct Layers {
  static constexpr int kCell = 32;
  int cols = 0, rows = 0;
  std::vector<std::vector<int>> cells;
  std::vector<int> roots;  // hidden_roots of the layout

  explicit Layers(const Layout& lay) : roots(hidden_roots(lay)) {
    cols = std::max(1, (lay.W + kCell - 1) / kCell);
    rows = std::max(1, (lay.H + kCell - 1) / kCell);
    cells.resize((size_t)cols * rows);
    for (size_t j = 0; j < lay.controls.size(); ++j) {
      const Control& c = lay.controls[j];
      if (c.vis.empty() || (c.background_pic.empty() && !c.background.set)) continue;
      const int x0 = std::clamp(c.vis.l / kCell, 0, cols - 1), x1 = std::clamp((c.vis.r - 1) / kCell, 0, cols - 1);
      const int y0 = std::clamp(c.vis.t / kCell, 0, rows - 1), y1 = std::clamp((c.vis.b - 1) / kCell, 0, rows - 1);
      for (int y = y0; y <= y1; ++y)
        for (int x = x0; x <= x1; ++x) cells[(size_t)y * cols + x].push_back((int)j);
    }
  }
  const std::vector<int>& at(int x, int y) const {
    return cells[(size_t)std::clamp(y / kCell, 0, rows - 1) * cols + std::clamp(x / kCell, 0, cols - 1)];
  }
};

Rgba backdrop_of(const Layout& lay, const Layers& index, int i, int x, int y, const PictureSource& pics) {
  // Layers from the top down to the first opaque one, then laid bottom-up.
  std::vector<Rgba> layers;
  const std::vector<int>& here = index.at(x, y);
  auto it = std::upper_bound(here.begin(), here.end(), i);
  while (it != here.begin()) {
    const int j = *--it;
    const Control& c = lay.controls[(size_t)j];
    const int hr = index.roots[(size_t)j];
    if (hr >= 0 && !layout::ancestor_or_self(lay, hr, i)) continue;  // another hidden overlay
    const layout::Rect& v = c.vis;
    if (x < v.l || x >= v.r || y < v.t || y >= v.b) continue;
    std::optional<Rgba> top;
    if (!c.background_pic.empty() && pics) {
      if (const gen_res::Image* img = pics(c.background_pic)) top = sample(*img, c.box, x, y);
    }
    if (!top || top->a == 0) {
      if (auto fill = c.background.rgba()) top = fill;
    }
    if (!top || top->a == 0) continue;
    layers.push_back(*top);
    if (top->a >= 255) break;
  }
  Rgba out = lay.ground.value_or(Rgba{255, 255, 255, 255});
  out.a = 255;
  for (auto l = layers.rbegin(); l != layers.rend(); ++l) out = over(*l, out);
  return out;
}

}  // namespace

Rgba backdrop(const Layout& lay, int i, int x, int y, const PictureSource& pics) {
  return backdrop_of(lay, Layers(lay), i, x, y, pics);
}

std::vector<Finding> touch_findings(const Layout& lay, const Settings& s) {
  std::vector<Finding> out;
  if (s.touch_min <= 0) return out;
  for (size_t i = 0; i < lay.controls.size(); ++i) {
    const Control& c = lay.controls[i];
    if (!touchable(c) || is_window(c.type) || c.box.empty()) continue;
    if (c.box.w() >= s.touch_min && c.box.h() >= s.touch_min) continue;
    Finding f;
    f.kind = Kind::touch;
    f.control = (int)i;
    f.w = c.box.w(), f.h = c.box.h();
    out.push_back(f);
  }
  return out;
}

std::vector<Finding> contrast_findings(const Layout& lay, const PictureSource& pics) {
  std::vector<Finding> out;
  const Layers index(lay);
  for (size_t i = 0; i < lay.controls.size(); ++i) {
    const Control& c = lay.controls[i];
    if (!has_text(lay, c) || c.vis.empty()) continue;
    auto fg = c.text_color.rgba();
    if (!fg) continue;
    const layout::Rect tb = layout::text_box(lay, c);
    const int x = tb.l + tb.w() / 2, y = tb.t + tb.h() / 2;
    const Rgba bg = backdrop_of(lay, index, (int)i, x, y, pics);
    const Rgba ink = over(*fg, bg);
    const long long fs = lay.number(c.font_size, 16, c.key);
    const bool large = fs >= 24 || (c.bold && fs >= 19);
    const double need = large ? kContrastLarge : kContrastBody;
    const double ratio = contrast_ratio(ink, bg);
    if (ratio >= need) continue;
    Finding f;
    f.kind = Kind::contrast;
    f.control = (int)i;
    f.w = c.box.w(), f.h = c.box.h();
    f.ratio = ratio, f.need = need;
    f.fg = ink, f.bg = bg;
    out.push_back(f);
  }
  return out;
}

std::vector<Finding> glyph_findings(const Layout& lay, const PictureSource& pics) {
  std::vector<Finding> out;
  if (!pics) return out;
  std::map<const gen_res::Image*, int> inks;  // a shared picture is measured once
  for (size_t i = 0; i < lay.controls.size(); ++i) {
    const Control& c = lay.controls[i];
    if (!is_decoration(c) || c.box.w() != c.box.h() || c.box.w() < kGlyphBoxMin) continue;
    const gen_res::Image* img = pics(c.background_pic);
    if (!img || img->w != c.box.w() || img->h != c.box.h()) continue;  // a wrong size is #21's
    auto known = inks.find(img);
    if (known == inks.end()) {
      int x0 = img->w, y0 = img->h, x1 = -1, y1 = -1;
      for (int y = 0; y < img->h; ++y)
        for (int x = 0; x < img->w; ++x)
          if (img->at(x, y)[3] >= 128) {
            x0 = std::min(x0, x), x1 = std::max(x1, x);
            y0 = std::min(y0, y), y1 = std::max(y1, y);
          }
      known = inks.emplace(img, x1 < 0 ? 0 : std::max(x1 - x0 + 1, y1 - y0 + 1)).first;
    }
    const int ink = known->second;
    if (ink == 0) continue;  // nothing drawn: no glyph
    const double part = (double)ink / img->w;
    if (part >= kGlyphFillMin) continue;
    Finding f;
    f.kind = Kind::glyph;
    f.control = (int)i;
    f.w = c.box.w(), f.h = c.box.h();
    f.ratio = part;
    f.ink = ink;
    out.push_back(f);
  }
  return out;
}

std::string detail(const Layout& lay, const Finding& f, const Settings& s) {
  switch (f.kind) {
    case Kind::touch:
      return size_text(f) + " < touch_min " + std::to_string(s.touch_min) + " px";
    case Kind::contrast: {
      const Control& c = lay.controls[(size_t)f.control];
      return size_text(f) + " 文字「" + std::string(c.text) + "」对比度 " + fixed1(f.ratio) + ":1 < " +
             fixed1(f.need) + ":1（" + hex(f.fg) + " 在 " + hex(f.bg) + " 上）";
    }
    case Kind::glyph:
      return size_text(f) + " 字形只有 " + std::to_string(f.ink) + " px（" +
             std::to_string((int)std::floor(f.ratio * 100)) + "% < " +
             std::to_string((int)std::lround(kGlyphFillMin * 100)) + "%）";
  }
  return "";
}

std::string summary_line(const Layout& lay, Kind kind, const std::vector<Finding>& found, const Settings& s) {
  if (found.empty()) return "";
  const Finding& f = found.front();
  const Control& c = lay.controls[(size_t)f.control];
  std::string head, example = c.caption + " " + size_text(f);
  switch (kind) {
    case Kind::touch:
      head = "触控目标小于 touch_min " + std::to_string(s.touch_min) + " px";
      break;
    case Kind::contrast:
      head = "文字对比度不足（正文 4.5:1、大字 3:1）";
      example += " " + fixed1(f.ratio) + ":1";
      break;
    case Kind::glyph:
      head = "图标字形远小于盒（< " + std::to_string((int)std::lround(kGlyphFillMin * 100)) + "%）";
      example += " 字形 " + std::to_string(f.ink) + " px";
      break;
  }
  return "  [!] " + head + "：" + std::to_string(found.size()) + " 处（例 " + example + "）\n";
}

const gen_res::Image* PictureCache::get(std::string_view ref) {
  auto it = decoded_.find(ref);
  if (it != decoded_.end()) return it->second ? &*it->second : nullptr;
  std::optional<gen_res::Image> img;
  try {
    std::string name(ref);
    if (name.rfind("images/", 0) == 0) name = name.substr(7);
    auto held = held_.find(name);
    if (held != held_.end() && !held->second->empty()) {
      img = gen_res::decode_png(*held->second);
    } else {
      const layout::PictureProbe p = layout::probe_picture(dir_, std::string(ref));
      if (p.status == layout::PictureStatus::ok) img = gen_res::load_png(p.path);
    }
  } catch (const std::exception&) {
    img.reset();  // unreadable: the picture rule reports it
  }
  if (img && (img->w <= 0 || img->h <= 0)) img.reset();
  auto& slot = decoded_.emplace(std::string(ref), std::move(img)).first->second;
  return slot ? &*slot : nullptr;
}

}  // namespace lint
