// Running the built executable on a page inside a temporary project.
#pragma once

#include <filesystem>
#include <string>
#include <vector>

#include "driver/toolchain.h"
#include "test_support.h"

namespace e2e {

namespace fs = std::filesystem;

struct Outcome {
  int status = 0;
  std::string out, err;
};

inline Outcome compose(const std::vector<std::string>& args) {
  std::vector<std::string> argv = {ubtest::compose_exe()};
  argv.insert(argv.end(), args.begin(), args.end());
  ub::ChildResult r = ub::run_captured(argv);
  return {r.status, r.out, r.err};
}

// A temporary project with the spec written into it as spec.json; removed on destruction.
struct Project {
  fs::path root = ubtest::temp_dir("e2e");
  fs::path spec = root / "spec.json";
  explicit Project(const Json& s) { write(s.dump(2)); }
  explicit Project(const std::string& text) { write(text); }
  ~Project() { fs::remove_all(root); }
  void write(const std::string& text) const { ub::write_file_atomic(spec.string(), text); }
  Outcome run(std::vector<std::string> extra = {}) const {
    std::vector<std::string> args = {spec.string(), "--project", (root / "proj").string()};
    args.insert(args.end(), extra.begin(), extra.end());
    return compose(args);
  }
  fs::path proj() const { return root / "proj"; }
};

inline std::string expected_path(const std::string& name) {
  return ubtest::source_dir() + "/tests/expected/" + name;
}

}  // namespace e2e
