// What the preview server answers to one request: the page, its state (at once or, as a
// long poll, once the state is newer), the previews and the pictures of the project's
// resources/images. Only requests that name the server itself as their host are answered:
// a page of another site that a browser reaches through a rebound name gets 403.
#pragma once

#include <string>
#include <string_view>

#include "serve/http_request.h"
#include "serve/preview_state.h"

namespace serve {

struct Answer {
  int status = 200;
  std::string content_type;  // with a body
  std::string cache;         // Cache-Control
  Bytes body;
  bool wait = false;  // a long poll: answer state() once the version is above `after`
  long after = 0;
};

// True when a Host header names 127.0.0.1, [::1] or localhost with this port (the port may
// be left out only when it is 80).
bool host_allowed(std::string_view host, int port);

class Site {
 public:
  // images_dir: the project's resources/images, the only directory files are served from.
  Site(const PreviewState& state, std::string images_dir, int port);

  Answer answer(const HttpRequest& req) const;
  Answer state() const;  // the current state
  static Answer error(int status);

 private:
  Answer picture(const std::string& name) const;

  const PreviewState& state_;
  std::string images_dir_;
  int port_;
};

}  // namespace serve
