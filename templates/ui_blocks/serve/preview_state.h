// What the page shows, shared between the composing thread and the HTTP side: the last good
// controls and preview of each size, the notes and the stop message of the latest run. Each
// version is written out once, as one immutable snapshot that every answer shares; a
// snapshot lives while an answer still sends it.
#pragma once

#include <functional>
#include <memory>
#include <mutex>
#include <string>
#include <vector>

#include "serve/recompose.h"

namespace serve {

using Bytes = std::shared_ptr<const std::string>;

struct Snapshot {
  long version = 0;
  Bytes body;  // {"version", "sizes": [{label, ok, stop, notes, width, height, png, controls}]}
};

class PreviewState {
 public:
  explicit PreviewState(std::vector<std::string> labels);

  // Records the outcomes of views first, first+1, ... as one new version, then calls the
  // listener. A refused run keeps the view's last good controls and preview; "png" in the
  // snapshot is the preview's URL with its version, or null before a first preview.
  void update(size_t first, const std::vector<RunOutcome>& runs);
  void update(size_t i, const RunOutcome& r) { update(i, std::vector<RunOutcome>{r}); }

  std::shared_ptr<const Snapshot> snapshot() const;
  long version() const { return snapshot()->version; }

  // The preview bytes of view i, or nullptr.
  Bytes png(size_t i) const;

  // Called after every update, on the updating thread.
  void on_change(std::function<void()> listener);

 private:
  struct View {
    std::string label;
    bool ok = false;
    std::string stop;
    std::vector<std::string> notes;
    int width = 0, height = 0;
    std::string controls = "[]";  // the control boxes of the last good layout, as JSON text
    Bytes png;
    long png_version = 0;
  };
  std::shared_ptr<const Snapshot> write_snapshot(long version) const;

  mutable std::mutex mu_;
  std::vector<View> views_;
  std::shared_ptr<const Snapshot> current_;
  std::function<void()> listener_;
};

}  // namespace serve
