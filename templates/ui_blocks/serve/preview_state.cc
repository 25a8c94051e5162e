#include "serve/preview_state.h"

#include "serve/control_boxes.h"

namespace serve {

using nlohmann::json;

namespace {

// JSON text that survives bytes that are not UTF-8 (a child's output, a layout's text).
std::string text_of(const json& j) { return j.dump(-1, ' ', false, json::error_handler_t::replace); }

int resolution_of(const nlohmann::ordered_json& layout, const char* key) {
  if (!layout.is_object()) return 0;
  auto res = layout.find("resolution");
  if (res == layout.end() || !res->is_object()) return 0;
  auto v = res->find(key);
  return v != res->end() && v->is_number_integer() ? v->get<int>() : 0;
}

}  // namespace

PreviewState::PreviewState(std::vector<std::string> labels) {
  for (auto& l : labels) {
    View v;
    v.label = std::move(l);
    views_.push_back(std::move(v));
  }
  current_ = write_snapshot(0);
}

void PreviewState::update(size_t first, const std::vector<RunOutcome>& runs) {
  // The control boxes are the heavy part: made before the lock is taken.
  std::vector<std::string> controls(runs.size());
  for (size_t i = 0; i < runs.size(); ++i)
    if (runs[i].ok) {
      controls[i] = text_of(control_boxes(runs[i].layout, runs[i].notes));
      controls[i].shrink_to_fit();  // kept until the next good run
    }
  std::function<void()> listener;
  {
    std::lock_guard<std::mutex> lock(mu_);
    const long version = current_->version + 1;
    for (size_t i = 0; i < runs.size() && first + i < views_.size(); ++i) {
      const RunOutcome& r = runs[i];
      View& v = views_[first + i];
      v.ok = r.ok;
      v.stop = r.stop;
      v.notes = r.notes;
      if (!r.ok) continue;
      v.controls = std::move(controls[i]);
      v.width = resolution_of(r.layout, "width");
      v.height = resolution_of(r.layout, "height");
      if (!r.png.empty()) {
        v.png = std::make_shared<const std::string>(r.png);
        v.png_version = version;
      }
    }
    current_ = write_snapshot(version);
    listener = listener_;
  }
  if (listener) listener();
}

std::shared_ptr<const Snapshot> PreviewState::write_snapshot(long version) const {
  // Each view's fields before its controls, then the whole text in one piece of its exact size.
  std::vector<std::string> heads;
  size_t size = 64;
  for (size_t i = 0; i < views_.size(); ++i) {
    const View& v = views_[i];
    const json png = v.png ? json("/preview/" + std::to_string(i) + ".png?v=" + std::to_string(v.png_version)) : json();
    heads.push_back((i ? ",{\"label\":" : "{\"label\":") + text_of(v.label) + ",\"ok\":" + (v.ok ? "true" : "false") +
                    ",\"stop\":" + text_of(v.stop) + ",\"notes\":" + text_of(v.notes) + ",\"width\":" +
                    std::to_string(v.width) + ",\"height\":" + std::to_string(v.height) + ",\"png\":" + png.dump() +
                    ",\"controls\":");
    size += heads.back().size() + v.controls.size() + 1;
  }
  std::string out;
  out.reserve(size);
  out += "{\"version\":" + std::to_string(version) + ",\"sizes\":[";
  for (size_t i = 0; i < views_.size(); ++i) {
    out += heads[i];
    out += views_[i].controls;
    out += '}';
  }
  out += "]}";
  auto s = std::make_shared<Snapshot>();
  s->version = version;
  s->body = std::make_shared<const std::string>(std::move(out));
  return s;
}

std::shared_ptr<const Snapshot> PreviewState::snapshot() const {
  std::lock_guard<std::mutex> lock(mu_);
  return current_;
}

Bytes PreviewState::png(size_t i) const {
  std::lock_guard<std::mutex> lock(mu_);
  return i < views_.size() ? views_[i].png : nullptr;
}

void PreviewState::on_change(std::function<void()> listener) {
  std::lock_guard<std::mutex> lock(mu_);
  listener_ = std::move(listener);
}

}  // namespace serve
