#include "readers.h"

#include <exception>
#include <sstream>

#include "assets/recipes.h"
#include "check_all/project.h"
#include "check_all/report.h"
#include "check_all/rules.h"
#include "compose.h"
#include "logic/logic.h"
#include "driver/installation.h"
#include "driver/paths.h"
#include "json2img/inventory.h"
#include "json2img/layout_reader.h"
#include "spec/spec_text.h"

namespace fuzz {

namespace {
// The installation beside the program, read once.
const ub::Installation& installation() {
  static const ub::Installation inst = ub::installation(ub::library_tokens());
  return inst;
}
}  // namespace

void setup(const std::string& ub_dir) {
  ub::init_paths(ub_dir);
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

namespace {
// True when the JSON library takes the text: the composer's reader, which the layout
// reader must agree with on what is JSON. The library takes a NUL byte as the end of the
// text, which the layout reader refuses: a NUL is never part of JSON.
bool valid_json(std::string_view text) {
  if (text.find('\0') != std::string_view::npos) return false;
  struct Validator : Json::json_sax_t {
    bool null() override { return true; }
    bool boolean(bool) override { return true; }
    bool number_integer(number_integer_t) override { return true; }
    bool number_unsigned(number_unsigned_t) override { return true; }
    bool number_float(number_float_t, const string_t&) override { return true; }
    bool string(string_t&) override { return true; }
    bool binary(binary_t&) override { return true; }
    bool start_object(std::size_t) override { return true; }
    bool key(string_t&) override { return true; }
    bool end_object() override { return true; }
    bool start_array(std::size_t) override { return true; }
    bool end_array() override { return true; }
    bool parse_error(std::size_t, const std::string&, const nlohmann::detail::exception&) override { return false; }
  } v;
  try {
    return Json::sax_parse(text, &v);
  } catch (const Json::exception&) {
    return false;
  }
}
}  // namespace

Outcome read_layout(const uint8_t* data, size_t size) {
  const std::string_view text(reinterpret_cast<const char*>(data), size);
  check::Project p;
  p.root = "/nonexistent/fuzz-project";
  check::LayoutFile lf;
  lf.rel = "ui/main.json";
  lf.page = "main";
  layout::ReadOptions o;
  o.text_findings = true;
  try {
    lf.lay = layout::read_layout_text(text, o);
  } catch (const layout::SyntaxError& e) {
    // Refused as no JSON: right unless the JSON library takes it, and then only for nesting
    // beyond the reader's bound.
    if (valid_json(text) && std::string(e.what()).find("nests deeper than") == std::string::npos)
      return {true, std::string("valid JSON refused: ") + e.what()};
    return {};
  } catch (const layout::LayoutError&) {
    // json2img and check_all report it as an unusable layout
    if (!valid_json(text)) return {true, "text that is no JSON read as a layout"};
    return {};
  } catch (const std::exception& e) {
    return {true, e.what()};
  }
  if (!valid_json(text)) return {true, "text that is no JSON read as a layout"};
  try {
    p.layouts.push_back(std::move(lf));
    check::LayoutFile& f = p.layouts.back();
    j2i::inventory_lines(f.lay);
    std::ostringstream sink;
    check::Report report(sink);
    for (check::Rule rule : check::all_rules()) {
      try {
        rule(p, report);
      } catch (const layout::LayoutError&) {
        // check_all reports it as a finding of the layout
      }
    }
    report.finish();
  } catch (const layout::LayoutError&) {
    // json2img reports it as an unusable layout
  } catch (const std::exception& e) {
    return {true, e.what()};
  }
  return {};
}

}  // namespace fuzz
