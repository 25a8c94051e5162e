// Watches the spec and the block library for saves. Directories are watched, not files,
// since editors save by writing a new file and renaming it over the old one.
#pragma once

#include <string>

namespace serve {

class Watcher {
 public:
  // spec: the spec file; blocks_dir: the block library (any *.json in it counts).
  Watcher(const std::string& spec, const std::string& blocks_dir);
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
  int spec_wd_ = -1, blocks_wd_ = -1;
  std::string spec_name_;
};

}  // namespace serve
