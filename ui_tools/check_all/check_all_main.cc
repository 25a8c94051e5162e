#include <filesystem>
#include <iostream>
#include <memory>
#include <vector>

#include "check_all/check_all.h"
#include "check_all/rules.h"

namespace tools {

namespace {

const char* kUsage =
    "usage: check_all PROJECT\n"
    "  Runs the project-wide static checks over PROJECT/ui, PROJECT/resources/images and\n"
    "  PROJECT/src/logic; prints [OK] / [X] / [!] lines and exits 1 on any [X].\n";


}  // namespace

int check_all_main(const std::vector<std::string>& args, const lint::Settings& lint) {
  for (const auto& a : args)
    if (a == "-h" || a == "--help") {
      std::cout << kUsage;
      return 0;
    }
  if (args.size() != 1 || args[0].empty() || args[0][0] == '-') {
    std::cerr << "check_all: expected exactly one PROJECT directory\n" << kUsage;
    return 2;
  }
  std::error_code ec;
  if (!std::filesystem::is_directory(args[0], ec)) {
    std::cout << "[X] check_all：项目目录不存在：" << args[0] << "\n";
    return 1;
  }
  // The project is left to the process's exit: freeing a large one control by control
  // costs a tenth of the run.
  static auto* kept = new std::vector<std::unique_ptr<check::Project>>();
  kept->push_back(std::make_unique<check::Project>(check::load_project(args[0])));
  kept->back()->lint = lint;
  const check::Project& project = *kept->back();
  std::cout << "== check_all " << project.root << " ==\n";
  check::Report report(std::cout);
  for (check::Rule rule : check::all_rules()) {
    try {
      rule(project, report);
    } catch (const std::exception& e) {
      // A record the rule cannot read (a text where a number belongs...) is a finding.
      report.fail(std::string("读不了的布局内容：") + e.what());
    }
  }
  int status = report.finish();
  std::cout.flush();
  return status;
}

}  // namespace tools
