// The HTTP side of "compose serve": one thread answers every connection from an event loop
// (epoll), so no client, however slow or however long it waits for a new state, holds
// anything another client needs. Every connection is bounded in what it may send and in
// time: idle, half-sent and unread connections are closed, long polls are answered when the
// state changes or their time is up.
#pragma once

#include <chrono>
#include <memory>
#include <stdexcept>
#include <string>

#include "serve/http_request.h"
#include "serve/preview_state.h"

namespace serve {

struct ServerLimits {
  HttpLimits http;
  std::chrono::milliseconds idle_timeout{5000};      // a connection with no request begun
  std::chrono::milliseconds request_timeout{10000};  // a request, from its first byte to its end
  std::chrono::milliseconds write_timeout{10000};    // an answer the client stops reading
  std::chrono::milliseconds poll_timeout{20000};     // a long poll; then answered with the same version
  size_t max_connections = 512;                      // past it the longest idle one is closed
};

// The address cannot be listened on; what() says why and what to do.
struct ListenError : std::runtime_error {
  using std::runtime_error::runtime_error;
};

class HttpServer {
 public:
  // images_dir: the project's resources/images, the only directory files are served from.
  HttpServer(PreviewState& state, std::string images_dir, ServerLimits limits = {});
  ~HttpServer();
  HttpServer(const HttpServer&) = delete;
  HttpServer& operator=(const HttpServer&) = delete;

  // Listens on 127.0.0.1:port (0: any free port) and returns the port. A port in use is an
  // error, never shared with another listener. Throws ListenError.
  int listen(int port);
  // Answers until stop(); call after listen.
  void run();
  // From any thread, and from a signal handler.
  void stop();

 private:
  struct Loop;
  std::unique_ptr<Loop> loop_;
};

}  // namespace serve
