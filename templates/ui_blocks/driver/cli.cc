// Hand-written option parser: long options with a value as "--opt v" or "--opt=v",
// unique prefixes of long options, "--" ending the options, one positional spec.
#include "driver/cli.h"

#include <filesystem>
#include <functional>

#include "base/values.h"

namespace ub {

namespace {

const char* const kDescription =
    "Composes one page of a Moraine project: spec.json in, the page layout JSON, its PNG pictures and a logic "
    "skeleton out (and on request a preview and the project checks).";

struct OptDef {
  std::string name;     // "--project"
  std::string metavar;  // empty for flags
  std::string help;     // empty: not shown in the help (options compose build gives its children)
  bool required = false;
};

const std::vector<OptDef>& opt_defs() {
  static const std::vector<OptDef> defs = {
      {"--project", "PROJECT",
       "the Moraine project root: the layout goes to ui/, the pictures to resources/images/, the logic skeleton to "
       "src/logic/",
       true},
      {"--page", "PAGE", "the page name: the file name of the layout, the preview and the logic skeleton (default: main)"},
      {"--render", "", "draw a preview <page>.render.png beside the layout (json2img)"},
      {"--check", "", "run the project-wide checks (check_all) once the page is written"},
      {"--font", "FONT",
       "font of the preview (default: the first PROJECT/resources/font/*.ttf, else PROJECT/resources/fonts/*.ttf, "
       "else components/fonts/fonts/torvo-hans-common.ttf); a file that does not exist is an error, an empty value "
       "counts as not given"},
      {"--json-only", "", "write the layout only: no pictures, no logic skeleton"},
      {"--no-logic", "", "do not write the logic skeleton src/logic/<page>Logic.cc"},
      {"--ui-layout", "{auto,flat,res}",
       "where the layout goes: flat -> ui/<page>.json, res -> ui/<W>x<H>/<page>.json, auto (default) -> res when "
       "ui/<W>x<H>/ exists, else flat. check_all #9 only understands flat single-resolution projects"},
      {"--sizes", "WxH[,WxH...]",
       "compose the page at each size (the spec's resolution replaced) into ui/<W>x<H>/; with --render also a "
       "contact sheet ui/<page>.sizes.png. Sizes may also follow as separate words"},
      {"--render-full", "", "render the whole scroll content (a long screenshot) instead of the first screen; implies --render"},
      {"--show-hidden", "", "render hidden dialogs and toasts as shown; implies --render"},
      {"--write-conflicts", "",
       "when hand edits of src/logic/<page>Logic.cc and the new skeleton change the same lines, write the merge "
       "with conflict markers (<<<<<<< 手改 / ======= / >>>>>>> 新骨架) instead of refusing the run"},
      {"--depfile", "FILE",
       "also write a Make-style depfile: the layout file as the target, every file the run read (spec, block "
       "library, required-keys table, icon index and icons, render font) as its dependencies"},
      {"--stage", "DIR", ""},
      {"--run-record", "FILE", ""},
  };
  return defs;
}

const char* const kSpecHelp = "the page: resolution, page.title and page.blocks (see README, \"spec.json\")";

const OptDef& find_option(const std::string& name) {
  for (const auto& d : opt_defs())
    if (d.name == name) return d;
  std::vector<const OptDef*> hits;
  for (const auto& d : opt_defs())
    if (starts_with(d.name, name) && !d.help.empty()) hits.push_back(&d);  // hidden options: whole names only
  if (hits.size() == 1) return *hits.front();
  if (hits.empty()) throw UsageError("unrecognized arguments: " + name);
  std::vector<std::string> names;
  for (const auto* d : hits) names.push_back(d->name);
  throw UsageError("ambiguous option: " + name + " could match " + join(names, ", "));
}

bool looks_like_option(const std::string& s) { return s.size() > 1 && s[0] == '-'; }

void set_value(Options& o, const std::string& name, const std::string& v) {
  if (name == "--project") o.project = v;
  else if (name == "--page") o.page = v;
  else if (name == "--font") o.font = v;
  else if (name == "--depfile") o.depfile = v;
  else if (name == "--stage") o.stage = v;
  else if (name == "--run-record") o.run_record = v;
  else if (name == "--ui-layout") {
    if (v != "auto" && v != "flat" && v != "res")
      throw UsageError("argument --ui-layout: invalid choice: '" + v + "' (choose from 'auto', 'flat', 'res')");
    o.ui_layout = v;
  }
}

// The preview flags (--render-full, --show-hidden) ask for a preview too.
void set_flag(Options& o, const std::string& name) {
  if (name == "--render") o.render = true;
  else if (name == "--check") o.check = true;
  else if (name == "--json-only") o.json_only = true;
  else if (name == "--no-logic") o.no_logic = true;
  else if (name == "--render-full") o.render = o.render_full = true;
  else if (name == "--show-hidden") o.render = o.show_hidden = true;
  else if (name == "--write-conflicts") o.write_conflicts = true;
}

}  // namespace

std::string usage_text() {
  return "usage: compose [-h] --project PROJECT [--page PAGE] [--render] [--check] [--font FONT] [--json-only]\n"
         "               [--no-logic] [--ui-layout {auto,flat,res}] [--sizes WxH[,WxH...]] [--render-full]\n"
         "               [--show-hidden] [--write-conflicts] [--depfile FILE]\n"
         "               spec\n"
         "       compose {build,serve,schema,json2img,check_all} ...\n";
}

std::string wrap_text(const std::string& text, size_t indent, size_t col) {
  constexpr size_t kWidth = 100;
  std::string out;
  bool first = true;
  size_t start = 0;
  while (start < text.size()) {
    size_t end = text.find(' ', start);
    if (end == std::string::npos) end = text.size();
    const std::string word = text.substr(start, end - start);
    if (!first && col + 1 + cp_len(word) > kWidth) {
      out += "\n";
      out.append(indent, ' ');
      col = indent;
      first = true;
    }
    if (!first) {
      out += ' ';
      ++col;
    }
    out += word;
    col += cp_len(word);
    first = false;
    start = end + 1;
  }
  return out + "\n";
}

std::string help_item(const std::string& head, const std::string& help) {
  constexpr size_t kColumn = 24;
  std::string out = "  " + head;
  const size_t col = 2 + cp_len(head);
  if (col + 2 <= kColumn) {
    out.append(kColumn - col, ' ');
  } else {
    out += "\n";
    out.append(kColumn, ' ');
  }
  return out + wrap_text(help, kColumn, kColumn);
}

std::string help_text() {
  // Appended piece by piece: g++ 12 reports a false -Warray-bounds on string + string here.
  std::string out = usage_text();
  out += "\n";
  out += wrap_text(kDescription);
  out += "\npositional arguments:\n";
  out += help_item("spec", kSpecHelp);
  out += "\noptions:\n";
  out += help_item("-h, --help", "show this help message and exit");
  for (const auto& d : opt_defs())
    if (!d.help.empty()) out += help_item(d.metavar.empty() ? d.name : d.name + " " + d.metavar, d.help);
  out += "\nsubcommands (each with its own --help):\n";
  out += help_item("build [PROJECT]", "compose every page of a project (its compose.json) at every size, in parallel and only what changed");
  out += help_item("serve spec.json ...", "live preview of a page in the browser, recomposed on every save");
  out += help_item("schema", "the JSON Schema of spec.json (--project-file: of compose.json)");
  out += help_item("json2img LAYOUT ...", "draw a layout JSON to a PNG");
  out += help_item("check_all PROJECT", "the project-wide static checks");
  out += "\n";
  out += wrap_text("Exit status: 0 the page was written (also when the preview or the checks fail), 1 a refused page "
                   "or bad input (nothing written), 2 a usage error.");
  return out;
}

std::optional<std::string> font_problem(const std::optional<std::string>& font) {
  if (!font || font->empty()) return std::nullopt;
  std::error_code ec;
  const auto st = std::filesystem::status(*font, ec);
  if (!std::filesystem::exists(st)) return "argument --font: no such file: " + *font;
  if (!std::filesystem::is_regular_file(st)) return "argument --font: not a file: " + *font;
  return std::nullopt;
}

std::string schema_usage() { return "usage: compose schema [-h] [--project-file]\n"; }

std::string schema_help() {
  std::string out = schema_usage();
  out += "\nPrints a JSON Schema (draft 2020-12) for editors and validators.\n\noptions:\n";
  out += help_item("-h, --help", "show this help message and exit");
  out += help_item("--project-file", "the schema of the project file compose.json (compose build) instead of spec.json's");
  return out;
}

std::string serve_help() {
  std::string out = "usage: compose serve spec.json --project ROOT [--page NAME] [--sizes WxH[,WxH...]] [--port N]\n";
  out += "\n";
  out += wrap_text("Composes the page, then serves a live preview on 127.0.0.1 and recomposes on every save of the "
                   "spec or the block library; Ctrl-C stops it.");
  out += "\npositional arguments:\n";
  out += help_item("spec", "the page, as for compose");
  out += "\noptions:\n";
  out += help_item("-h, --help", "show this help message and exit");
  out += help_item("--project ROOT", "the Moraine project the page is written into, as for compose");
  out += help_item("--page NAME", "the page name (default: main)");
  out += help_item("--sizes WxH[,WxH...]", "compose and show the page at each size, side by side");
  out += help_item("--port N", "the port on 127.0.0.1 (default: 8765; 0 takes any free port)");
  return out;
}

ParseResult parse_args(const std::vector<std::string>& args) {
  ParseResult r;
  Options& o = r.opts;
  std::vector<std::string> positional, unknown, size_words;
  bool seen_project = false, only_positional = false;
  for (size_t i = 0; i < args.size(); ++i) {
    const std::string& a = args[i];
    if (only_positional || !looks_like_option(a)) {
      positional.push_back(a);
      continue;
    }
    if (a == "--") {
      only_positional = true;
      continue;
    }
    if (a == "-h" || a == "--help" || (a.size() > 2 && starts_with("--help", a) && a.find('=') == std::string::npos)) {
      r.help = true;
      return r;
    }
    if (!starts_with(a, "--")) {
      unknown.push_back(a);
      continue;
    }
    const size_t eq = a.find('=');
    const std::string name_part = a.substr(0, eq);
    const OptDef* def = nullptr;
    try {
      def = &find_option(name_part);
    } catch (const UsageError& e) {
      if (contains(e.what(), "ambiguous")) throw;
      unknown.push_back(a);
      continue;
    }
    if (def->metavar.empty()) {
      if (eq != std::string::npos)
        throw UsageError("argument " + def->name + ": ignored explicit argument '" + a.substr(eq + 1) + "'");
      set_flag(o, def->name);
      continue;
    }
    std::string value;
    if (eq != std::string::npos) {
      value = a.substr(eq + 1);
    } else {
      if (i + 1 >= args.size() || looks_like_option(args[i + 1]))
        throw UsageError("argument " + def->name + ": expected one argument");
      value = args[++i];
    }
    if (def->name == "--sizes") {
      // "--sizes 800x480,480x272" or "--sizes 800x480 480x272".
      size_words.push_back(value);
      while (eq == std::string::npos && i + 1 < args.size() && looks_like_sizes(args[i + 1]))
        size_words.push_back(args[++i]);
      continue;
    }
    set_value(o, def->name, value);
    if (def->name == "--project") seen_project = true;
  }
  std::vector<std::string> missing;
  if (positional.empty()) missing.push_back("spec");
  if (!seen_project) missing.push_back("--project");
  if (!missing.empty()) throw UsageError("the following arguments are required: " + join(missing, ", "));
  for (size_t i = 1; i < positional.size(); ++i) unknown.push_back(positional[i]);
  if (!unknown.empty()) throw UsageError("unrecognized arguments: " + join(unknown, " "));
  o.spec = positional.front();
  if (!size_words.empty()) {
    o.sizes = parse_sizes(size_words);
    // One size may go to ui/<page>.json; several need a folder each.
    if (o.ui_layout == "flat" && o.sizes.size() > 1)
      throw UsageError("argument --sizes: several sizes are not allowed with --ui-layout flat");
  }
  if (!o.stage.empty() && o.render)
    throw UsageError("argument --stage: not allowed with --render (a staged page is drawn once it is committed)");
  return r;
}

}  // namespace ub
