#include "readers.h"

#include "base/json_reader.h"

#include <exception>
#include <sstream>

#include "assets/recipes.h"
#include "check_all/project.h"
#include "check_all/report.h"
#include "check_all/rules.h"
#include "compose.h"
#include "logic/logic.h"
#include "driver/paths.h"
#include "iconlib/iconlib.h"
#include "json2img/inventory.h"
#include "json2img/layout_reader.h"
#include "spec/spec_text.h"

namespace fuzz {

namespace {
// The installation beside the program, read once.
const ub::Installation& installation() {
  static const ub::Installation inst{ub::blocks_dir(),
                                     ub::load_emit_layer(ub::paths().ui_tools + "/ui_emit/required_keys.json")};
  return inst;
}
}  // namespace

void setup(const std::string& ub_dir) {
  ub::init_paths(ub_dir);
  iconlib::set_root(ub::paths().repo + "/components/icons");
}

Outcome read_page(const uint8_t* data, size_t size) {
  try {
    ub::Composer c(ub::parse_spec_text(std::string(reinterpret_cast<const char*>(data), size), "fuzz.json"), "main", installation());
    const Json doc = c.document();
    ub::dump_layout(doc);
    ub::collect_button_caps(doc);
    ub::collect_edittext_caps(doc);
    for (const auto& [name, a] : c.pictures().all())
      if (a.kind == "chart") ub::chart_image(a);
  } catch (const ub::StopError&) {
  } catch (const ub::InputError&) {
  } catch (const std::exception& e) {
    return {true, e.what()};
  }
  return {};
}

Outcome read_layout(const uint8_t* data, size_t size) {
  try {
    check::Project p;
    p.root = "/nonexistent/fuzz-project";
    check::LayoutFile lf;
    lf.rel = "ui/main.json";
    lf.page = "main";
    layout::ReadOptions o;
    o.text_findings = true;
    lf.lay = layout::read_layout_text(std::string_view(reinterpret_cast<const char*>(data), size), o);
    p.layouts.push_back(std::move(lf));
    check::LayoutFile& f = p.layouts.back();
    j2i::inventory_lines(f.lay);
    std::ostringstream sink;
    check::Report report(sink);
    for (check::Rule rule : check::all_rules()) {
      try {
        rule(p, report);
      } catch (const std::exception&) {
        // check_all reports it as a finding of the layout
      }
    }
    report.finish();
  } catch (const std::exception&) {
    // json2img and check_all report it as unreadable input
  }
  return {};
}

}  // namespace fuzz
