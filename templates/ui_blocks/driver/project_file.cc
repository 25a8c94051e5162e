#include "driver/project_file.h"

#include <filesystem>
#include <map>

#include "base/closest_name.h"
#include "driver/paths.h"
#include "spec/library.h"
#include "spec/page_limits.h"
#include "spec/spec_text.h"
#include "spec/theme.h"

namespace fs = std::filesystem;

namespace ub {

namespace {

const std::vector<std::string> kTopKeys = {"$schema", "pages", "theme", "ui_layout"};
const std::vector<std::string> kPageKeys = {"spec", "page", "sizes"};
const char* const kDefaultPage = "main";  // a single run's default --page

// A problem at one place of the file.
struct Place {
  const std::string& file;
  [[noreturn]] void fail(const std::string& where, const std::string& what) const {
    throw InputError(file + ": " + (where.empty() ? "" : where + ": ") + what);
  }
};

void check_keys(const Json& obj, const std::vector<std::string>& known, const std::string& where, const Place& at) {
  for (auto it = obj.begin(); it != obj.end(); ++it) {
    if (std::find(known.begin(), known.end(), it.key()) != known.end()) continue;
    std::string what = "unknown key " + literal_form(Json(it.key()));
    if (auto near = closest_name(it.key(), known)) what += " (did you mean \"" + *near + "\"?)";
    else what += " (known: " + join(known, ", ") + ")";
    at.fail(where, what);
  }
}

const std::string& text_at(const Json& v, const std::string& where, const Place& at) {
  if (!v.is_string() || v.get_ref<const std::string&>().empty())
    at.fail(where, "expected a non-empty text, got " + shown_value(v));
  return v.get_ref<const std::string&>();
}

// "800x480" with each side in the screen limits, or nothing.
std::optional<ScreenSize> size_of(const std::string& s) {
  const size_t x = s.find('x');
  if (x == std::string::npos) return std::nullopt;
  auto side = [](const std::string& d) -> int {
    if (d.empty() || d.size() > 4 || d[0] == '0') return -1;
    for (char c : d)
      if (c < '0' || c > '9') return -1;
    const int v = std::stoi(d);
    return v >= kMinScreenSide && v <= kMaxScreenSide ? v : -1;
  };
  const int w = side(s.substr(0, x)), h = side(s.substr(x + 1));
  if (w < 0 || h < 0) return std::nullopt;
  return ScreenSize{w, h};
}

std::string absolute_in(const std::string& root, const std::string& p) {
  return (fs::path(root) / p).lexically_normal().string();
}

PageEntry page_entry(const Json& e, size_t i, const std::string& root, const Place& at) {
  const std::string where = cat("pages[", i, "]");
  if (!e.is_object()) at.fail(where, "expected a page (a mapping with \"spec\"), got " + shown_value(e));
  check_keys(e, kPageKeys, where, at);
  PageEntry p;
  p.index = i;
  if (!has(e, "spec")) at.fail(where, "missing key \"spec\" (the page's spec.json, relative to the project)");
  p.spec = text_at(e["spec"], where + ".spec", at);
  p.spec_path = absolute_in(root, p.spec);
  p.page = kDefaultPage;
  if (has(e, "page")) {
    p.page = text_at(e["page"], where + ".page", at);
    if (!is_identifier(p.page))
      at.fail(where + ".page", literal_form(e["page"]) + " is not an identifier: letters, digits and underscores, "
                                                        "not starting with a digit, at most " +
                                   std::to_string(kMaxIdentifierLength) + " characters");
    p.named = true;
  }
  if (has(e, "sizes")) {
    const Json& sizes = e["sizes"];
    if (!sizes.is_array() || sizes.empty())
      at.fail(where + ".sizes", "expected a non-empty list of sizes \"WxH\", got " + shown_value(sizes));
    for (size_t k = 0; k < sizes.size(); ++k) {
      const std::string here = cat(where, ".sizes[", k, "]");
      const std::optional<ScreenSize> s = sizes[k].is_string() ? size_of(sizes[k].get<std::string>()) : std::nullopt;
      if (!s)
        at.fail(here, cat("expected a size \"WxH\" with each side ", kMinScreenSide, " to ", kMaxScreenSide, ", got ",
                          shown_value(sizes[k])));
      if (std::find(p.sizes.begin(), p.sizes.end(), *s) != p.sizes.end()) at.fail(here, "size " + size_label(*s) + " given twice");
      p.sizes.push_back(*s);
    }
  }
  return p;
}

}  // namespace

ProjectFile project_from_json(const Json& doc, const std::string& path, const std::string& root) {
  const Place at{path};
  if (!doc.is_object()) at.fail("", "expected a mapping with \"pages\", got " + shown_value(doc));
  check_keys(doc, kTopKeys, "", at);
  ProjectFile pf;
  pf.path = path;
  pf.root = root;
  if (has(doc, "$schema") && !doc["$schema"].is_string()) at.fail("$schema", "expected a text, got " + shown_value(doc["$schema"]));
  if (!has(doc, "pages")) at.fail("", "missing key \"pages\" (the list of pages to compose)");
  const Json& pages = doc["pages"];
  if (!pages.is_array() || pages.empty()) at.fail("pages", "expected a non-empty list of pages, got " + shown_value(pages));
  std::map<std::string, size_t> taken;  // page name -> index of its entry
  for (size_t i = 0; i < pages.size(); ++i) {
    PageEntry p = page_entry(pages[i], i, root, at);
    if (auto [it, fresh] = taken.emplace(p.page, i); !fresh)
      at.fail(p.named ? cat("pages[", i, "].page") : cat("pages[", i, "]"),
              cat("page name ", literal_form(Json(p.page)), p.named ? "" : " (the default)", " is taken by pages[",
                  it->second, "]; every page needs a name of its own (\"page\"), as it names ui/<page>.json and "
                  "src/logic/<page>Logic.cc"));
    pf.pages.push_back(std::move(p));
  }
  if (has(doc, "theme")) pf.theme = absolute_in(root, text_at(doc["theme"], "theme", at));
  if (has(doc, "ui_layout")) {
    const Json& v = doc["ui_layout"];
    if (!v.is_string() || (v != "auto" && v != "flat" && v != "res"))
      at.fail("ui_layout", "expected \"auto\", \"flat\" or \"res\", got " + shown_value(v));
    pf.ui_layout = v.get<std::string>();
  }
  if (pf.ui_layout == "flat")
    for (const PageEntry& p : pf.pages)
      if (p.sizes.size() > 1)
        at.fail(cat("pages[", p.index, "].sizes"), "several sizes need ui/<W>x<H>/ folders, but \"ui_layout\" is \"flat\"");
  return pf;
}

ProjectFile read_project_file(const std::string& path) {
  const std::string abs = fs::absolute(path).lexically_normal().string();
  std::error_code ec;
  if (!fs::is_regular_file(abs, ec)) throw InputError("no project file " + abs + " (see compose build --help)");
  const ProjectFile pf = project_from_json(parse_spec_text(read_file(abs), abs), abs, fs::path(abs).parent_path().string());
  const Place at{abs};
  for (const PageEntry& p : pf.pages)
    if (!fs::is_regular_file(p.spec_path, ec)) at.fail(cat("pages[", p.index, "].spec"), "no such file: " + p.spec);
  if (pf.theme) {
    const std::string rel = fs::path(*pf.theme).lexically_relative(pf.root).string();
    if (!fs::is_regular_file(*pf.theme, ec)) at.fail("theme", "no such file: " + rel);
    Json theme;
    try {
      theme = parse_spec_text(read_file(*pf.theme), *pf.theme);
    } catch (const InputError& e) {
      at.fail("theme", e.what());
    }
    try {
      lay_theme(load_json(blocks_dir() + "/_tokens.json"), theme, rel);
    } catch (const InputError& e) {
      at.fail("theme", e.what());
    }
  }
  return pf;
}

Json project_file_schema() {
  Json size = object_of("type", "string", "pattern", "^[1-9][0-9]{1,3}x[1-9][0-9]{1,3}$", "description",
                        cat("a screen size WxH, each side ", kMinScreenSide, " to ", kMaxScreenSide, " px"));
  Json page_props = Json::object();
  page_props["spec"] = object_of("type", "string", "minLength", 1, "description",
                                 "the page's spec.json, relative to the project");
  page_props["page"] = object_of("type", "string", "minLength", 1, "maxLength", kMaxIdentifierLength, "description",
                                 cat("the page name: the file name of ui/<page>.json and src/logic/<page>Logic.cc, "
                                     "an identifier (letters, digits, underscores, not starting with a digit); "
                                     "default \"", kDefaultPage, "\", so every page but one needs it"));
  page_props["sizes"] = object_of("type", "array", "minItems", 1, "uniqueItems", true, "items", std::move(size),
                                  "description",
                                  "the sizes to compose the page at, each replacing the spec's resolution; "
                                  "default: the spec's own resolution");
  Json page = object_of("type", "object", "description", "one page: a spec composed at one or more sizes",
                        "properties", std::move(page_props), "required", Json::array({"spec"}),
                        "additionalProperties", false);
  Json props = Json::object();
  props["$schema"] = object_of("type", "string", "description", "schema of this file for editors; compose ignores it");
  props["pages"] = object_of("type", "array", "minItems", 1, "description", "the pages of the product, in order",
                             "items", std::move(page));
  props["theme"] = object_of("type", "string", "minLength", 1, "description",
                             "a theme: a JSON file of design tokens laid over the block library's "
                             "(see compose schema --tokens), relative to the project");
  props["ui_layout"] = object_of("enum", Json::array({"auto", "flat", "res"}), "default", "auto", "description",
                                 "where layouts go: flat -> ui/<page>.json, res -> ui/<W>x<H>/<page>.json, "
                                 "auto -> flat when the whole project has one size, else res");
  Json s = Json::object();
  s["$schema"] = "https://json-schema.org/draft/2020-12/schema";
  s["$id"] = "https://schemas.moraine.example/compose/project.schema.json";
  s["title"] = "compose project file (compose.json)";
  s["type"] = "object";
  s["properties"] = std::move(props);
  s["required"] = Json::array({"pages"});
  s["additionalProperties"] = false;
  return s;
}

}  // namespace ub
