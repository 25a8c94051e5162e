// Hand-written option parser: long options with a value as "--opt v" or "--opt=v",
// unique prefixes of long options, "--" ending the options, one positional spec.
#include "driver/cli.h"

#include <filesystem>
#include <functional>

#include "base/values.h"

namespace ub {

namespace {

const char* const kDescription = "界面块片段库组装器：spec → json + 切图 (+渲染/全检)";

struct OptDef {
  std::string name;     // "--project"
  std::string metavar;  // empty for flags
  std::string help;     // empty: not shown in the help (options compose build gives its children)
  bool required = false;
};

// The help texts of the first nine options are the tool's own, word for word; the later
// options' help is written in the same language.
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
       "一次按多个尺寸出页（各自替换 spec 的分辨率），json 落到 ui/<W>x<H>/；配 --render 另出对照图 "
       "ui/<page>.sizes.png。尺寸也可作为独立参数跟在后面"},
      {"--render-full", "", "渲染图画出整段滚动内容（长截图），不只第一屏；隐含 --render"},
      {"--show-hidden", "", "渲染图把隐藏的对话框与提示条画成显示状态；隐含 --render"},
      {"--write-conflicts", "",
       "手改的 src/logic/<page>Logic.cc 与新骨架改了同几行时，不拒绝本次运行，而是带冲突标记写出合并结果（<<<<<<< "
       "手改 / ======= / >>>>>>> 新骨架）"},
      {"--depfile", "FILE",
       "另写一份 Make 式依赖文件：目标是布局 json，依赖是本次读过的每个文件（spec、块库、主题、必填键表、图标索引与图标、渲染字体）"},
      {"--tokens", "FILE",
       "主题：一份设计 token 文件，叠在块库的 _tokens.json 之上（映射逐键合并，只需写要改的 token）；token "
       "名未知、类型不对或颜色不是颜色时报出文件与位置，什么都不写"},
      {"--stage", "DIR", ""},
      {"--run-record", "FILE", ""},
  };
  return defs;
}

const char* const kSpecHelp = "spec.json（分辨率 + page.title + page.blocks）";

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
  else if (name == "--tokens") o.tokens = v;
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
         "               [--show-hidden] [--write-conflicts] [--depfile FILE] [--tokens FILE]\n"
         "               spec\n"
         "       compose {build,serve,schema,json2img,check_all} ...\n";
}

namespace {

// Terminal columns of a code point: CJK ideographs, kana, hangul and full-width forms take two.
size_t columns(char32_t c) {
  const bool wide = (c >= 0x1100 && c <= 0x115F) || (c >= 0x2E80 && c <= 0xA4CF && c != 0x303F) ||
                    (c >= 0xAC00 && c <= 0xD7A3) || (c >= 0xF900 && c <= 0xFAFF) || (c >= 0xFE30 && c <= 0xFE4F) ||
                    (c >= 0xFF00 && c <= 0xFF60) || (c >= 0xFFE0 && c <= 0xFFE6);
  return wide ? 2 : 1;
}

}  // namespace

size_t display_width(const std::string& s) {
  size_t n = 0;
  for (char32_t c : utf8_decode(s)) n += columns(c);
  return n;
}

std::string wrap_text(const std::string& text, size_t indent, size_t col) {
  constexpr size_t kWidth = 100;
  // Pieces a line may break between: words at blanks, and each wide character on its own.
  std::vector<std::pair<std::u32string, bool>> pieces;  // text, blank before it
  bool blank = false;
  for (char32_t c : utf8_decode(text)) {
    if (c == U' ') {
      blank = true;
      continue;
    }
    const bool wide = columns(c) == 2;
    if (pieces.empty() || blank || wide || columns(pieces.back().first.back()) == 2) pieces.push_back({U"", blank});
    pieces.back().first += c;
    blank = false;
  }
  std::u32string out;
  bool first = true;
  for (const auto& [piece, blank_before] : pieces) {
    size_t w = 0;
    for (char32_t c : piece) w += columns(c);
    const size_t gap = first || !blank_before ? 0 : 1;
    if (!first && col + gap + w > kWidth) {
      out += U'\n';
      out.append(indent, U' ');
      col = indent;
      first = true;
    } else if (gap) {
      out += U' ';
      col += gap;
    }
    out += piece;
    col += w;
    first = false;
  }
  return utf8_encode(out) + "\n";
}

std::string help_item(const std::string& head, const std::string& help) {
  constexpr size_t kColumn = 24;
  std::string out = "  " + head;
  const size_t col = 2 + display_width(head);
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
  out += help_item("-h, --help", "显示本帮助并退出");
  for (const auto& d : opt_defs())
    if (!d.help.empty()) out += help_item(d.metavar.empty() ? d.name : d.name + " " + d.metavar, d.help);
  out += "\nsubcommands:\n";
  out += help_item("build [PROJECT]", "按工程文件 compose.json 出全部页面的全部尺寸：并行，只重出有变化的");
  out += help_item("serve spec.json ...", "浏览器里的实时预览，每次保存即重出");
  out += help_item("schema", "spec.json 的 JSON Schema（--project-file：compose.json 的；--tokens：token 文件的）");
  out += help_item("json2img LAYOUT ...", "把布局 json 画成 PNG");
  out += help_item("check_all PROJECT", "全工程静态检查");
  out += "\n";
  out += wrap_text("退出码：0 页面已写出（渲染或全检失败也是 0）；1 页面被拒或输入有误（什么都没写）；2 用法错误。");
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

std::string schema_usage() { return "usage: compose schema [-h] [--project-file | --tokens]\n"; }

std::string schema_help() {
  std::string out = schema_usage();
  out += "\n打印 JSON Schema（draft 2020-12），供编辑器与校验器使用。\n\noptions:\n";
  out += help_item("-h, --help", "显示本帮助并退出");
  out += help_item("--project-file", "改为打印工程文件 compose.json（compose build 用）的 schema");
  out += help_item("--tokens", "改为打印设计 token 文件（块库的 _tokens.json 与叠在其上的主题）的 schema");
  return out;
}

std::string serve_help() {
  // The server's own usage (serve/serve_options.cc) says the same; compose answers --help
  // itself so that the help does not start the server program.
  std::string out =
      "usage: compose serve spec.json --project ROOT [--page NAME] [--sizes WxH[,WxH...]] [--port N]\n"
      "                     [--no-logic] [--tokens FILE]\n";
  out += "\n";
  out += wrap_text("先出一次页面，再在 127.0.0.1 上提供实时预览；spec 或块库每次保存都重出。Ctrl-C 停止。");
  out += "\npositional arguments:\n";
  out += help_item("spec", "页面 spec，同 compose");
  out += "\noptions:\n";
  out += help_item("-h, --help", "显示本帮助并退出");
  out += help_item("--project ROOT", "Moraine 项目根，同 compose");
  out += help_item("--page NAME", "页面名，默认 main");
  out += help_item("--sizes WxH[,WxH...]", "按各尺寸出页，并排显示");
  out += help_item("--port N", "127.0.0.1 上的端口（默认 8765；0 取任一空闲端口）");
  out += help_item("--no-logic", "不生成也不合并 src/logic/<page>Logic.cc，同 compose --no-logic");
  out += help_item("--tokens FILE", "主题 token 文件，同 compose --tokens；保存它也会重出");
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
