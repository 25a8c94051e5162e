// Design lint: what a user feels on the device and no geometry check sees. Touch targets
// smaller than the token touch_min, text whose colour is too close to what lies behind it,
// icon glyphs drawn much smaller than their box. Shared by check_all (its warning rules)
// and compose (the summary lines of its report); findings are warnings, never failures.
#pragma once

#include <functional>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <nlohmann/json.hpp>

#include "gen_res/image.h"
#include "json2img/layout_model.h"

namespace lint {

// A glyph whose ink spans less than this part of its box is drawn much smaller than the
// box. Every library icon drawn at its own size spans at least 14 of 24 px (0.58): close,
// chevrons and arrows; most span 18 to 20 px.
constexpr double kGlyphFillMin = 0.55;
// Boxes below this side are dots and marks, not glyphs.
constexpr int kGlyphBoxMin = 16;
// WCAG 2.x: large text is at least 18 pt (24 px), or 14 pt (18.67 px) when bold.
constexpr double kContrastBody = 4.5;
constexpr double kContrastLarge = 3.0;

struct Settings {
  int touch_min = 0;  // smallest touch target side in px; 0 leaves the rule out
};

// The settings the design tokens give: size.touch_min.
Settings settings_from_tokens(const nlohmann::ordered_json& tok);

enum class Kind { touch, contrast, glyph };

struct Finding {
  Kind kind = Kind::touch;
  int control = 0;  // index into Layout::controls
  int w = 0, h = 0;  // the control's box (touch, contrast) or the glyph's box
  double ratio = 0;  // contrast: the ratio; glyph: the ink's part of the box
  double need = 0;   // contrast: the ratio asked for
  int ink = 0;       // glyph: the ink's larger side in px
  gen_res::Rgba fg{}, bg{};  // contrast: the colours compared
};

// Decoded pictures by layout reference ("images/x.png"); null when it cannot be had.
using PictureSource = std::function<const gen_res::Image*(std::string_view ref)>;

// The findings of one rule, in control order.
std::vector<Finding> touch_findings(const layout::Layout& lay, const Settings& s);
std::vector<Finding> contrast_findings(const layout::Layout& lay, const PictureSource& pics);
std::vector<Finding> glyph_findings(const layout::Layout& lay, const PictureSource& pics);

// WCAG 2.x contrast ratio of two opaque colours, 1 to 21.
double contrast_ratio(gen_res::Rgba a, gen_res::Rgba b);
// The opaque colour a page shows at (x, y) below control i (its own fill included):
// every earlier control there with a fill or a picture, over the page's ground.
gen_res::Rgba backdrop(const layout::Layout& lay, int i, int x, int y, const PictureSource& pics);

// What a finding says after the control's place: "64x16 < touch_min 36 px".
std::string detail(const layout::Layout& lay, const Finding& f, const Settings& s);
// The report's line for one rule, empty when it found nothing:
// "  [!] 触控目标小于 touch_min 36 px：3 处（例 ButtonPrimary12 64x16）".
std::string summary_line(const layout::Layout& lay, Kind kind, const std::vector<Finding>& found,
                         const Settings& s);

// Pictures of one project, each decoded once: PNG bytes handed in (a run's own pictures,
// by file name), else the files of images_dir. References leaving images_dir, and
// pictures larger than json2img reads, are not read.
class PictureCache {
 public:
  explicit PictureCache(std::string images_dir) : dir_(std::move(images_dir)) {}
  // png stays owned by the caller and must outlive the cache.
  void add_png(const std::string& name, const std::string* png) { held_[name] = png; }
  const gen_res::Image* get(std::string_view ref);
  PictureSource source() {
    return [this](std::string_view ref) { return get(ref); };
  }

 private:
  std::string dir_;
  std::map<std::string, const std::string*> held_;
  std::map<std::string, std::optional<gen_res::Image>, std::less<>> decoded_;
};

}  // namespace lint
