// The HTTP side of "compose serve": the page, its state, the previews and the project's
// pictures. Every other path is 404.
#pragma once

#include <chrono>
#include <memory>
#include <string>

#include "serve/preview_state.h"

namespace httplib {
class Server;
}

namespace serve {

class HttpServer {
 public:
  // images_dir: the project's resources/images, the only directory files are served from.
  HttpServer(PreviewState& state, std::string images_dir,
             std::chrono::milliseconds poll_timeout = std::chrono::seconds(20));
  ~HttpServer();

  // Binds 127.0.0.1:port (0: any free port); returns the port, or -1 when it cannot.
  int bind(int port);
  // Serves until stop(); call after bind.
  void run();
  void stop();

 private:
  PreviewState& state_;
  std::string images_dir_;
  std::chrono::milliseconds poll_timeout_;
  std::unique_ptr<httplib::Server> svr_;
};

}  // namespace serve
