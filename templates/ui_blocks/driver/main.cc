// compose: the page assembler, and the preview renderer and project checks as its
// subcommands ("compose json2img ...", "compose check_all ..."), the live preview
// ("compose serve ..."), the JSON Schemas of spec.json and compose.json ("compose schema")
// and the build of a whole project ("compose build").
#include <malloc.h>
#include <unistd.h>

#include <cerrno>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <filesystem>
#include <iostream>
#include <string>
#include <vector>

#include "check_all/check_all.h"
#include "driver/build_options.h"
#include "driver/build_project.h"
#include "driver/cli.h"
#include "driver/compose_run.h"
#include "driver/exit_status.h"
#include "driver/installation.h"
#include "driver/paths.h"
#include "driver/project_file.h"
#include "driver/toolchain.h"
#include "json2img/json2img.h"
#include "base/values.h"
#include "kinds/registry.h"
#include "kinds/schema.h"
#include "spec/library.h"
#include "spec/theme.h"

namespace {

// A large page makes hundreds of thousands of small allocations; with the heap in 2 MB pages
// (malloc's own setting, read only at start) the time spent faulting pages in drops by
// about a third. For a spec of some 1,500 blocks and more the process starts again once
// with the setting (a restart costs about 15 ms), unless the caller chose malloc settings
// of their own; the tool children inherit it.
void use_large_heap_pages(const std::string& spec, char** argv) {
  constexpr std::uintmax_t kLargeSpec = 256 * 1024;
  std::error_code ec;
  const std::uintmax_t size = std::filesystem::file_size(spec, ec);
  if (ec || size < kLargeSpec || std::getenv("GLIBC_TUNABLES") != nullptr) return;
  if (::setenv("GLIBC_TUNABLES", "glibc.malloc.hugetlb=1", 0) != 0) return;
  ::execv("/proc/self/exe", argv);
  ::unsetenv("GLIBC_TUNABLES");  // not restarted: go on as we are
}

// "compose serve ..." is the server program beside this one (the name of this one plus
// "-serve"): only it carries the server and the preview renderer, which every run would
// otherwise load. Returns only when the server cannot be started.
int run_server(int argc, char** argv) {
  const std::string server = ub::self_exe() + "-serve";
  std::vector<char*> args{const_cast<char*>(server.c_str())};
  for (int i = 2; i < argc; ++i) args.push_back(argv[i]);
  args.push_back(nullptr);
  ::execv(server.c_str(), args.data());
  std::cerr << "compose: error: cannot start the preview server " << server << ": " << std::strerror(errno)
            << " (it is built with compose)\n";
  return 1;
}

bool is_help(const std::string& a) { return a == "-h" || a == "--help"; }

int schema_command(const std::vector<std::string>& args) {
  bool project_file = false, tokens = false;
  for (const std::string& a : args) {
    if (is_help(a)) {
      std::cout << ub::schema_help();
      return 0;
    }
    if (a == "--project-file") {
      project_file = true;
      continue;
    }
    if (a == "--tokens") {
      tokens = true;
      continue;
    }
    std::cerr << ub::schema_usage() << "compose: error: unrecognized arguments: " << a << "\n";
    return 2;
  }
  if (project_file && tokens) {
    std::cerr << ub::schema_usage() << "compose: error: --project-file and --tokens name two schemas; ask for one\n";
    return 2;
  }
  const Json schema = project_file ? ub::project_file_schema()
                      : tokens     ? ub::tokens_schema(ub::library_tokens())
                                   : ub::spec_schema(ub::block_kinds(), ub::load_block_library(ub::blocks_dir()));
  std::cout << ub::dump_layout(schema);
  return 0;
}

int build_command(const std::vector<std::string>& args) {
  ub::BuildParse parsed;
  try {
    parsed = ub::parse_build_args(args);
  } catch (const ub::UsageError& e) {
    std::cerr << ub::build_usage() << "compose: error: " << e.what() << "\n";
    return 2;
  }
  if (parsed.help) {
    std::cout << ub::build_help();
    return 0;
  }
  if (auto problem = ub::font_problem(parsed.opts.font)) {
    std::cerr << ub::build_usage() << "compose: error: " << *problem << "\n";
    return 1;
  }
  return ub::build_project(parsed.opts, std::cout, std::cerr, ::isatty(STDOUT_FILENO) == 1);
}

// The design lint's settings from the block library's tokens; none when they cannot be read
// (the lint's touch rule is then left out, the other checks run as ever).
lint::Settings check_all_lint() {
  try {
    return lint::settings_from_tokens(ub::library_tokens());
  } catch (const std::exception&) {
    return {};
  }
}

}  // namespace

int main(int argc, char** argv) {
  // Pictures and control trees come and go in large blocks: memory freed stays with the
  // process for the next one and the heap grows in steps of 16 MB, instead of being handed
  // back and faulted in afresh (on the bench page about a quarter fewer cycles).
  ::mallopt(M_MMAP_THRESHOLD, 256 << 20);
  ::mallopt(M_TRIM_THRESHOLD, 256 << 20);
  ::mallopt(M_TOP_PAD, 16 << 20);
  std::ios::sync_with_stdio(true);
  const std::vector<std::string> args(argv + 1, argv + argc);
  return ub::exit_status_of([&] {
    if (!args.empty() && (args[0] == "json2img" || args[0] == "check_all")) {
      std::vector<std::string> rest(args.begin() + 1, args.end());
      if (args[0] == "json2img") return tools::json2img_main(rest);
      return tools::check_all_main(rest, check_all_lint());
    }
    if (!args.empty() && args[0] == "serve") {
      if (args.size() > 1 && is_help(args[1])) {
        std::cout << ub::serve_help();
        return 0;
      }
      return run_server(argc, argv);
    }
    if (!args.empty() && args[0] == "schema") return schema_command({args.begin() + 1, args.end()});
    if (!args.empty() && args[0] == "build") return build_command({args.begin() + 1, args.end()});
    ub::ParseResult parsed;
    try {
      parsed = ub::parse_args(args);
    } catch (const ub::UsageError& e) {
      std::cerr << ub::usage_text() << "compose: error: " << e.what() << "\n";
      return 2;
    }
    if (parsed.help) {
      std::cout << ub::help_text();
      return 0;
    }
    // A font that is not there is a mistake of the command line, found before anything is written.
    if (auto problem = ub::font_problem(parsed.opts.font)) {
      std::cerr << ub::usage_text() << "compose: error: " << *problem << "\n";
      return 1;
    }
    use_large_heap_pages(parsed.opts.spec, argv);
    return ub::compose_run(parsed.opts, std::cout);
  });
}
