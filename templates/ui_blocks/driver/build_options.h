// The command line of `compose build`.
#pragma once

#include <optional>
#include <string>
#include <vector>

namespace ub {

struct BuildOptions {
  std::string project = ".";  // the project folder, or its project file
  int jobs = 0;               // pages composed at once; 0: one per available core
  bool prune = false;         // remove the tool's pictures that no layout names
  bool force = false;         // compose every page, changed or not
  bool render = false;        // previews of the composed pages
  std::optional<std::string> font;
  bool check = true;          // check_all once at the end
  bool verbose = false;       // every composed page's whole report
  bool write_conflicts = false;  // as compose --write-conflicts, for every page
};

struct BuildParse {
  bool help = false;
  BuildOptions opts;
};

// The arguments after "build". Throws UsageError.
BuildParse parse_build_args(const std::vector<std::string>& args);

std::string build_usage();
std::string build_help();

}  // namespace ub
