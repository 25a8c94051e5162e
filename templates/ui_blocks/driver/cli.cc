// Hand-written option parser: long options with a value as "--opt v" or "--opt=v",
// unique prefixes of long options, "--" ending the options, one positional spec.
#include "driver/cli.h"

#include <functional>

#include "base/values.h"

namespace ub {

namespace {

const char* const kDescription = "界面块片段库组装器：spec → json + 切图 (+渲染/全检)";

struct OptDef {
  std::string name;     // "--project"
  std::string metavar;  // empty for flags
  std::string help;
  bool required = false;
};

const std::vector<OptDef>& opt_defs() {
  static const std::vector<OptDef> defs = {
      {"--project", "PROJECT", "Moraine 项目根（产物落到 ui/ 与 resources/images/）", true},
      {"--page", "PAGE", "页面名（json 文件名 / 渲染图名），默认 main"},
      {"--render", "", "调 ui_tools/json2img 出渲染图"},
      {"--check", "", "调 ui_tools/check_all 全检"},
      {"--font", "FONT",
       "渲染字体 TTF（缺省自动找：<工项目>/resources/font/*.ttf → "
       "components/fonts/fonts/torvo-hans-common.ttf）；不传时渲染器无中文字体，中文会画成方块（只影响渲染图，json/"
       "真机不受影响）"},
      {"--json-only", "", "只写 json（不出图 / 不写 logic 骨架）"},
      {"--no-logic", "", "不生成 src/logic/<page>Logic.cc 骨架"},
      {"--ui-layout", "{auto,flat,res}",
       "json 落点：auto（工程已有 ui/<W>x<H>/ → res，否则 flat）/ flat（ui/x.json）/ res（ui/<W>x<H>/x.json）。⚠️ "
       "check_all #9 的 mrn pack 只认扁平单分辨率布局，多分辨率工程用 res 时 #9 会误报（既有工具的已知限制）"},
      {"--sizes", "WxH[,WxH...]",
       "compose the page at each size (the spec's resolution replaced) into ui/<W>x<H>/; with --render also a "
       "contact sheet ui/<page>.sizes.png. Sizes may also follow as separate words"},
      {"--render-full", "", "render the whole scroll content (a long screenshot) instead of the first screen; implies --render"},
      {"--show-hidden", "", "render hidden dialogs and toasts as shown; implies --render"},
      {"--write-conflicts", "",
       "when hand edits of src/logic/<page>Logic.cc and the new skeleton change the same lines, write the merge "
       "with conflict markers (<<<<<<< 手改 / ======= / >>>>>>> 新骨架) instead of refusing the run"},
  };
  return defs;
}

const char* const kSpecHelp = "spec.json（分辨率 + page.title + page.blocks）";

const OptDef& find_option(const std::string& name) {
  for (const auto& d : opt_defs())
    if (d.name == name) return d;
  std::vector<const OptDef*> hits;
  for (const auto& d : opt_defs())
    if (starts_with(d.name, name)) hits.push_back(&d);
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
         "               [--show-hidden] [--write-conflicts]\n"
         "               spec\n";
}

std::string help_text() {
  // Appended piece by piece: g++ 12 reports a false -Warray-bounds on string + string here.
  std::string out = usage_text();
  out += "\n";
  out += kDescription;
  out += "\n\npositional arguments:\n";
  auto item = [&](const std::string& head, const std::string& help) {
    out += "  ";
    out += head;
    if (head.size() + 2 < 24) {
      out.append(24 - head.size() - 2, ' ');
    } else {
      out += "\n";
      out.append(24, ' ');
    }
    out += help;
    out += "\n";
  };
  item("spec", kSpecHelp);
  out += "\noptions:\n";
  item("-h, --help", "show this help message and exit");
  for (const auto& d : opt_defs()) item(d.metavar.empty() ? d.name : d.name + " " + d.metavar, d.help);
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
    if (o.ui_layout == "flat") throw UsageError("argument --sizes: not allowed with --ui-layout flat");
  }
  return r;
}

}  // namespace ub
