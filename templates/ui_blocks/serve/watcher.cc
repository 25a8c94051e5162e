#include "serve/watcher.h"

#include <poll.h>
#include <sys/inotify.h>
#include <unistd.h>

#include <filesystem>

namespace fs = std::filesystem;

namespace serve {

namespace {

// A save is taken as done once this long passes without another event of it: editors write
// a file and rename it within a millisecond or two, and each millisecond here delays the
// preview.
constexpr int kQuietMs = 5;

constexpr uint32_t kMask = IN_CLOSE_WRITE | IN_MOVED_TO | IN_CREATE | IN_DELETE | IN_MOVED_FROM;

bool ends_with(const std::string& s, const std::string& tail) {
  return s.size() >= tail.size() && s.compare(s.size() - tail.size(), tail.size(), tail) == 0;
}

}  // namespace

Watcher::Watcher(const std::string& spec, const std::string& blocks_dir, const std::string& theme) {
  fd_ = inotify_init1(IN_NONBLOCK | IN_CLOEXEC);
  if (fd_ < 0) return;
  for (const std::string& f : {spec, theme}) {
    if (f.empty()) continue;
    const fs::path p = fs::absolute(f);
    files_.emplace_back(inotify_add_watch(fd_, p.parent_path().c_str(), kMask), p.filename().string());
  }
  blocks_wd_ = inotify_add_watch(fd_, blocks_dir.c_str(), kMask);
}

Watcher::~Watcher() {
  if (fd_ >= 0) close(fd_);
}

bool Watcher::drain(int timeout_ms) {
  pollfd p{fd_, POLLIN, 0};
  if (poll(&p, 1, timeout_ms) <= 0) return false;
  bool relevant = false;
  alignas(inotify_event) char buf[8192];
  for (;;) {
    ssize_t n = read(fd_, buf, sizeof buf);
    if (n <= 0) break;
    for (char* at = buf; at < buf + n;) {
      auto* ev = reinterpret_cast<inotify_event*>(at);
      const std::string name = ev->len ? ev->name : "";
      // One directory may hold the spec, the theme and the library.
      for (const auto& [wd, file] : files_)
        if (ev->wd == wd && name == file) relevant = true;
      if (ev->wd == blocks_wd_ && ends_with(name, ".json")) relevant = true;
      at += sizeof(inotify_event) + ev->len;
    }
  }
  return relevant;
}

bool Watcher::wait(int timeout_ms) {
  if (fd_ < 0) {
    usleep(timeout_ms * 1000);
    return false;
  }
  if (!drain(timeout_ms)) return false;
  while (drain(kQuietMs)) {
  }
  return true;
}

}  // namespace serve
