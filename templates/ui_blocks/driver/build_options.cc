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
  out += wrap_text("Composes every page of a Moraine project at every size its project file names, in parallel, "
                   "and commits all files together; pages whose inputs did not change are left as they are. Then "
                   "runs the project checks once and prints a summary.");
  out += "\npositional arguments:\n";
  out += help_item("PROJECT", "the project folder holding compose.json, or the project file itself (default: the current folder)");
  out += "\noptions:\n";
  out += help_item("-h, --help", "show this help message and exit");
  out += help_item("-j N, --jobs N", "compose at most N pages at once (default: one per core; -j 1 composes one after another, with the same result)");
  out += help_item("--prune", "remove the pictures in resources/images that a build wrote and no layout of the project names any more");
  out += help_item("--force", "compose every page, also those that are up to date");
  out += help_item("--render", "draw a preview <page>.render.png beside each layout that was composed or has none");
  out += help_item("--font FONT", "font of the previews, as for compose --font");
  out += help_item("--no-check", "do not run the project checks (check_all)");
  out += help_item("-v, --verbose", "print the whole report of every composed page");
  out += help_item("--write-conflicts", "as for compose: a logic file whose hand edits conflict with the new skeleton is written with conflict markers instead of refusing the build");
  out += "\n";
  out += wrap_text("The project file compose.json: {\"pages\": [{\"spec\": \"pages/oven.json\", \"page\": \"oven\", "
                   "\"sizes\": [\"480x272\", \"800x480\"]}], \"theme\": \"theme/dark.json\"}; compose schema "
                   "--project-file prints its schema.");
  out += wrap_text("Exit status: 0 the project was written (also when the checks fail), 1 a refused page or a bad "
                   "project file (nothing written), 2 a usage error.");
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
