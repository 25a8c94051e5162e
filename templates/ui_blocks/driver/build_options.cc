#include "driver/build_options.h"

#include "base/values.h"
#include "driver/cli.h"

namespace ub {

namespace {

int jobs_value(const std::string& v) {
  const bool digits = !v.empty() && v.size() <= 4 && v.find_first_not_of("0123456789") == std::string::npos;
  const int n = digits ? std::stoi(v) : 0;
  if (n < 1) throw UsageError("argument -j/--jobs: expected a whole number of 1 or more, got '" + v + "'");
  return n;
}

}  // namespace

std::string build_usage() {
  return "usage: compose build [-h] [-j N] [--prune] [--force] [--render] [--font FONT] [--no-check] [--verbose]\n"
         "                     [--write-conflicts] [PROJECT]\n";
}

std::string build_help() {
  std::string out = build_usage();
  out += "\n";
  out += wrap_text("按工程文件列出的尺寸并行出整个 Moraine 工程的每个页面，所有文件一起提交；输入未变的页面不重出。"
                   "之后跑一次全工程检查并打印汇总。");
  out += "\npositional arguments:\n";
  out += help_item("PROJECT", "含 compose.json 的工程目录，或工程文件本身（默认当前目录）");
  out += "\noptions:\n";
  out += help_item("-h, --help", "显示本帮助并退出");
  out += help_item("-j N, --jobs N", "同时最多出 N 个页面（默认每核一个；-j 1 逐个出，结果相同）");
  out += help_item("--prune", "删除 resources/images 里由构建写出、而工程中已没有布局引用的图片");
  out += help_item("--force", "出全部页面，未变的也重出");
  out += help_item("--render", "在每个重出的（或还没有渲染图的）布局旁画渲染图 <page>.render.png");
  out += help_item("--font FONT", "渲染字体，同 compose --font");
  out += help_item("--no-check", "不跑全工程检查（check_all）");
  out += help_item("-v, --verbose", "打印每个重出页面的完整报告");
  out += help_item("--write-conflicts", "同 compose：手改与新骨架冲突的 logic 文件带冲突标记写出，而不是拒绝构建");
  out += "\n";
  out += wrap_text("工程文件 compose.json：{\"pages\": [{\"spec\": \"pages/oven.json\", \"page\": \"oven\", "
                   "\"sizes\": [\"480x272\", \"800x480\"]}], \"theme\": \"theme/dark.json\"}；"
                   "compose schema --project-file 打印它的 schema。theme 是叠在块库 token 之上的主题文件（同 compose --tokens），"
                   "每个页面都用它出，改了它就重出全部页面。");
  out += wrap_text("退出码：0 工程已写出（全检失败也是 0）；1 有页面被拒或工程文件有误（什么都没写）；2 用法错误。");
  return out;
}

BuildParse parse_build_args(const std::vector<std::string>& args) {
  BuildParse r;
  BuildOptions& o = r.opts;
  // Help wins over any mistake on the same line.
  for (const std::string& a : args) {
    if (a == "--") break;
    if (a == "-h" || a == "--help") {
      r.help = true;
      return r;
    }
  }
  std::vector<std::string> positional;
  bool only_positional = false;
  for (size_t i = 0; i < args.size(); ++i) {
    const std::string& a = args[i];
    if (only_positional || a.size() < 2 || a[0] != '-') {
      positional.push_back(a);
      continue;
    }
    if (a == "--") {
      only_positional = true;
      continue;
    }
    const size_t eq = a.find('=');
    const std::string name = starts_with(a, "--") ? a.substr(0, eq) : a;
    auto value = [&]() -> std::string {
      if (starts_with(a, "--") && eq != std::string::npos) return a.substr(eq + 1);
      if (i + 1 >= args.size()) throw UsageError("argument " + name + ": expected one argument");
      return args[++i];
    };
    auto flag = [&](bool& f) {
      if (eq != std::string::npos && starts_with(a, "--"))
        throw UsageError("argument " + name + ": ignored explicit argument '" + a.substr(eq + 1) + "'");
      f = true;
    };
    if (name == "-j" || name == "--jobs") o.jobs = jobs_value(value());
    else if (starts_with(a, "-j") && !starts_with(a, "--")) o.jobs = jobs_value(a.substr(2));
    else if (name == "--prune") flag(o.prune);
    else if (name == "--force") flag(o.force);
    else if (name == "--render") flag(o.render);
    else if (name == "--font") o.font = value();
    else if (name == "--no-check") {
      bool off = false;
      flag(off);
      o.check = false;
    } else if (name == "-v" || name == "--verbose") flag(o.verbose);
    else if (name == "--write-conflicts") flag(o.write_conflicts);
    else throw UsageError("unrecognized arguments: " + a);
  }
  if (positional.size() > 1) throw UsageError("unrecognized arguments: " + join({positional.begin() + 1, positional.end()}, " "));
  if (!positional.empty()) o.project = positional.front();
  return r;
}

}  // namespace ub
