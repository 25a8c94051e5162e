#include "serve/preview_state.h"

#include "serve/control_boxes.h"

namespace serve {

using nlohmann::json;

PreviewState::PreviewState(std::vector<std::string> labels) {
  for (auto& l : labels) {
    View v;
    v.label = std::move(l);
    views_.push_back(std::move(v));
  }
}

void PreviewState::update(size_t i, const RunOutcome& r) {
  {
    std::lock_guard<std::mutex> lock(mu_);
    if (i >= views_.size()) return;
    View& v = views_[i];
    ++version_;
    v.ok = r.ok;
    v.stop = r.stop;
    v.notes = r.notes;
    if (r.ok) {
      v.layout = r.layout;
      if (!r.png.empty()) {
        v.png = r.png;
        v.png_version = version_;
      }
    }
  }
  cv_.notify_all();
}

json PreviewState::snapshot() const {
  std::lock_guard<std::mutex> lock(mu_);
  json sizes = json::array();
  for (size_t i = 0; i < views_.size(); ++i) {
    const View& v = views_[i];
    json s;
    s["label"] = v.label;
    s["ok"] = v.ok;
    s["stop"] = v.stop;
    s["notes"] = v.notes;
    const nlohmann::ordered_json res =
        v.layout.is_object() ? v.layout.value("resolution", nlohmann::ordered_json::object()) : nlohmann::ordered_json::object();
    s["width"] = res.value("width", 0);
    s["height"] = res.value("height", 0);
    s["png"] = v.png.empty() ? json(nullptr) : json("/preview/" + std::to_string(i) + ".png?v=" + std::to_string(v.png_version));
    s["controls"] = control_boxes(v.layout, v.notes);
    sizes.push_back(std::move(s));
  }
  return {{"version", version_}, {"sizes", sizes}};
}

std::optional<std::string> PreviewState::png(size_t i) const {
  std::lock_guard<std::mutex> lock(mu_);
  if (i >= views_.size() || views_[i].png.empty()) return std::nullopt;
  return views_[i].png;
}

long PreviewState::wait_newer(long after, std::chrono::milliseconds timeout) const {
  std::unique_lock<std::mutex> lock(mu_);
  cv_.wait_for(lock, timeout, [&] { return closed_ || version_ > after; });
  return version_;
}

long PreviewState::version() const {
  std::lock_guard<std::mutex> lock(mu_);
  return version_;
}

void PreviewState::close() {
  {
    std::lock_guard<std::mutex> lock(mu_);
    closed_ = true;
  }
  cv_.notify_all();
}

}  // namespace serve
