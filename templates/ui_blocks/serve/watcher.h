// Watches the spec, the block library and the theme for saves. Directories are watched, not files,
// since editors save by writing a new file and renaming it over the old one.
#pragma once

#include <string>
#include <utility>
#include <vector>

namespace serve {

class Watcher {
 public:
  // spec: the spec file; blocks_dir: the block library (any *.json in it counts); theme:
  // a tokens file, or empty.
  Watcher(const std::string& spec, const std::string& blocks_dir, const std::string& theme = "");
  ~Watcher();
  Watcher(const Watcher&) = delete;
  Watcher& operator=(const Watcher&) = delete;

  bool ok() const { return fd_ >= 0; }
  // Waits up to timeout_ms for a relevant change; true when one came. Changes that follow
  // within a few milliseconds (kQuietMs) are taken together.
  bool wait(int timeout_ms);

 private:
  bool drain(int timeout_ms);  // reads pending events; true if one was relevant
  int fd_ = -1;
  int blocks_wd_ = -1;
  std::vector<std::pair<int, std::string>> files_;  // watched directory, file name in it
};

}  // namespace serve
