// What the page shows, shared between the composing thread and the HTTP handlers: the last
// good layout and preview of each size, the notes and the stop message of the latest run.
#pragma once

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <optional>
#include <string>
#include <vector>

#include <nlohmann/json.hpp>

#include "serve/recompose.h"

namespace serve {

class PreviewState {
 public:
  explicit PreviewState(std::vector<std::string> labels);

  // Records the outcome of size i's latest run and wakes every waiter. A refused run keeps the
  // last good layout and preview.
  void update(size_t i, const RunOutcome& r);

  // The state as JSON: {"version", "sizes": [{label, ok, stop, notes, width, height, png,
  // controls}]}; "png" is the preview's URL, versioned, or null before a first good run.
  nlohmann::json snapshot() const;

  // The preview bytes of size i, if any.
  std::optional<std::string> png(size_t i) const;

  // Blocks until the version is above `after`, the timeout passes or close() is called; returns
  // the version then.
  long wait_newer(long after, std::chrono::milliseconds timeout) const;

  long version() const;
  void close();  // releases every waiter for good

 private:
  struct View {
    std::string label;
    bool ok = false;
    std::string stop;
    std::vector<std::string> notes;
    nlohmann::ordered_json layout;
    std::string png;
    long png_version = 0;
  };
  mutable std::mutex mu_;
  mutable std::condition_variable cv_;
  std::vector<View> views_;
  long version_ = 0;
  bool closed_ = false;
};

}  // namespace serve
