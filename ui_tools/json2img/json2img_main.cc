#include <filesystem>
#include <iostream>

#include "base/output_files.h"
#include "gen_res/png_writer.h"
#include "json2img/contact_sheet.h"
#include "json2img/inventory.h"
#include "json2img/layout_reader.h"
#include "json2img/json2img.h"
#include "json2img/painter.h"
#include "json2img/preview_modes.h"

namespace fs = std::filesystem;

namespace tools {

namespace {

const char* kUsage =
    "usage: json2img LAYOUT --out PNG [--page NAME] [--report] [--font TTF] [--images DIR] [--full]\n"
    "                [--show-hidden]\n"
    "       json2img --sheet --out PNG [--font TTF] LABEL=PNG...\n"
    "  Draws the layout JSON to a PNG of the layout's resolution.\n"
    "  --page NAME   page name for the report (default: the layout's file name)\n"
    "  --out PNG     the picture to write\n"
    "  --report      print an inventory of the controls on standard output\n"
    "  --font TTF    font for all text; without it Chinese is drawn as boxes\n"
    "  --images DIR  where \"images/...\" pictures lie (default: <project>/resources/images)\n"
    "  --full        the whole scroll content: scroll windows grow to their content\n"
    "  --show-hidden hidden windows at the root (dialogs, toasts) drawn as shown\n"
    "  --sheet       a contact sheet: the given pictures side by side, each under its label\n";

struct Options {
  std::string layout, page, out, font, images;
  bool report = false, full = false, show_hidden = false, sheet = false;
  std::vector<std::string> sheet_items;  // LABEL=PNG
};

// Parses args into o; returns an error text, empty on success.
std::string parse(const std::vector<std::string>& args, Options& o) {
  for (size_t i = 0; i < args.size(); ++i) {
    std::string a = args[i], val;
    bool has_val = false;
    if (a.rfind("--", 0) == 0 && a.find('=') != std::string::npos) {
      val = a.substr(a.find('=') + 1);
      a = a.substr(0, a.find('='));
      has_val = true;
    }
    auto take = [&](std::string& dst) -> bool {
      if (has_val) {
        dst = val;
        return true;
      }
      if (i + 1 >= args.size()) return false;
      dst = args[++i];
      return true;
    };
    if (!has_val && (a == "--report" || a == "--full" || a == "--show-hidden" || a == "--sheet")) {
      bool& flag = a == "--report" ? o.report : a == "--full" ? o.full : a == "--show-hidden" ? o.show_hidden : o.sheet;
      flag = true;
    } else if (a == "--page" || a == "--out" || a == "--font" || a == "--images") {
      std::string& dst = a == "--page" ? o.page : a == "--out" ? o.out : a == "--font" ? o.font : o.images;
      if (!take(dst)) return "option " + a + " needs a value";
    } else if (a.size() > 1 && a[0] == '-') {
      return "unknown option " + a;
    } else if (o.layout.empty()) {
      o.layout = a;
    } else {
      o.sheet_items.push_back(a);
    }
  }
  if (o.out.empty()) return "no --out given";
  if (o.sheet) {
    if (!o.layout.empty()) o.sheet_items.insert(o.sheet_items.begin(), o.layout);
    if (o.sheet_items.empty()) return "no pictures given for --sheet";
    for (const auto& item : o.sheet_items)
      if (item.find('=') == std::string::npos) return "a sheet item is LABEL=PNG, got " + item;
    return "";
  }
  if (o.layout.empty()) return "no layout given";
  if (!o.sheet_items.empty()) return "more than one layout given: " + o.sheet_items.front();
  return "";
}

// Largest picture drawn, in pixels (256 MiB of RGBA): a --full preview of a long page is
// refused beyond it rather than asking the system for gigabytes.
constexpr long long kMaxCanvasPixels = 1LL << 26;


layout::Layout read_layout(const std::string& path) {
  std::error_code ec;
  if (!fs::is_regular_file(path, ec)) throw std::runtime_error("no layout file " + path);
  try {
    return layout::read_layout_file(path);
  } catch (const layout::SyntaxError& e) {
    throw std::runtime_error("layout " + path + " is no valid JSON: " + e.what());
  }
}

// A --full preview grows with the page's scroll content: it is refused beyond this.
std::string full_height_refusal(const layout::Layout& lay, bool complete) {
  const long long most = kMaxCanvasPixels / lay.W;
  return std::string("the full preview would be ") + (complete ? "" : "at least ") + std::to_string(lay.H) +
         " pixels high (" + std::to_string(lay.W) + "x" + std::to_string(lay.H) + "), over the limit of " +
         std::to_string(kMaxCanvasPixels) + " pixels (" + std::to_string(most) + " high at this width)";
}

// Writes the picture through a temporary file and a rename, never through a symbolic link.
void write_png(const fs::path& out, const gen_res::Image& img) {
  base::OutputSet file;
  file.add(out.filename().string(), gen_res::encode_png(img));
  file.commit(out.parent_path().string());
}

int sheet_main(const Options& o) {
  std::vector<j2i::SheetItem> items;
  for (const auto& item : o.sheet_items) {
    const size_t eq = item.find('=');
    items.push_back({item.substr(0, eq), gen_res::load_png(item.substr(eq + 1))});
  }
  j2i::TextPainter tp(o.font, j2i::kLatinFont);
  write_png(fs::absolute(o.out), j2i::contact_sheet(items, tp));
  for (const auto& w : tp.warnings()) std::cerr << "json2img: [!] " << w << "\n";
  return 0;
}

}  // namespace

int json2img_main(const std::vector<std::string>& args) {
  Options o;
  for (const auto& a : args)
    if (a == "-h" || a == "--help") {
      std::cout << kUsage;
      return 0;
    }
  if (std::string err = parse(args, o); !err.empty()) {
    std::cerr << "json2img: " << err << "\n" << kUsage;
    return 2;
  }
  try {
    if (o.sheet) return sheet_main(o);
    layout::Layout lay = read_layout(o.layout);
    if (o.show_hidden) j2i::show_overlays(lay);
    if (o.full) {
      const long long most = kMaxCanvasPixels / lay.W;
      const bool complete = j2i::unroll_scrolling(lay, most);
      if (!complete || lay.H > most) throw std::runtime_error(full_height_refusal(lay, complete));
    }
    if (o.page.empty()) o.page = fs::path(o.layout).stem().string();

    // A font that cannot be used leaves the Latin font, and boxes for Chinese.
    j2i::TextPainter tp(o.font, j2i::kLatinFont);
    j2i::Pictures pics(o.images.empty() ? layout::images_dir_for(o.layout) : o.images);
    j2i::Canvas cv(lay.W, lay.H, j2i::ground_color(lay));
    j2i::paint_layout(lay, cv, tp, pics);

    fs::path out = fs::absolute(o.out);
    write_png(out, cv.image());

    for (const auto& w : tp.warnings()) std::cerr << "json2img: [!] " << w << "\n";
    for (const auto& r : pics.refused()) std::cerr << "json2img: [!] refused picture " << r << "\n";
    if (o.report) {
      int hidden = 0, clipped = 0;
      for (const auto& c : lay.controls) {
        hidden += !c.shown;
        clipped += c.shown && c.vis.empty();
      }
      std::cout << "== json2img " << o.page << " " << lay.W << "x" << lay.H << " -> " << out.string() << "\n";
      std::cout << "font: " << tp.describe() << "\n";
      for (const auto& line : j2i::inventory_lines(lay)) std::cout << line << "\n";
      std::cout << "controls " << lay.controls.size() << " (hidden " << hidden << ", clipped " << clipped
                << ") | pictures " << pics.loaded() << " drawn, " << pics.missing().size() << " missing"
                << " | glyph boxes " << tp.boxes_drawn() << "\n";
      for (const auto& w : tp.warnings()) std::cout << "[!] " << w << "\n";
      for (const auto& m : pics.missing()) std::cout << "[!] missing picture " << m << "\n";
      for (const auto& r : pics.refused()) std::cout << "[!] refused picture " << r << "\n";
    }
    return 0;
  } catch (const std::exception& e) {
    std::cerr << "json2img: " << e.what() << "\n";
    return 1;
  }
}

}  // namespace tools
