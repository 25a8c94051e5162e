#include "serve/http_server.h"

#include <httplib.h>

#include <filesystem>
#include <fstream>
#include <sstream>

#include "serve/control_boxes.h"
#include "serve/page_html.h"

namespace fs = std::filesystem;

namespace serve {

namespace {

void no_store(httplib::Response& res) { res.set_header("Cache-Control", "no-store"); }

}  // namespace

HttpServer::HttpServer(PreviewState& state, std::string images_dir, std::chrono::milliseconds poll_timeout)
    : state_(state), images_dir_(std::move(images_dir)), poll_timeout_(poll_timeout),
      svr_(std::make_unique<httplib::Server>()) {
  svr_->set_keep_alive_timeout(1);
  svr_->Get("/", [](const httplib::Request&, httplib::Response& res) {
    no_store(res);
    res.set_content(page_html(), "text/html; charset=utf-8");
  });
  // Long polling: with ?after=N the answer waits until the state is newer than N.
  svr_->Get("/state", [this](const httplib::Request& req, httplib::Response& res) {
    if (req.has_param("after")) {
      long after = std::strtol(req.get_param_value("after").c_str(), nullptr, 10);
      state_.wait_newer(after, poll_timeout_);
    }
    no_store(res);
    res.set_content(state_.snapshot().dump(), "application/json");
  });
  svr_->Get(R"(/preview/(\d{1,3})\.png)", [this](const httplib::Request& req, httplib::Response& res) {
    auto png = state_.png(std::stoul(req.matches[1].str()));
    if (!png) {
      res.status = 404;
      return;
    }
    res.set_header("Cache-Control", "max-age=3600");  // the URL carries the version
    res.set_content(*png, "image/png");
  });
  svr_->Get(R"(/images/([^/]+))", [this](const httplib::Request& req, httplib::Response& res) {
    const std::string name = req.matches[1].str();
    const fs::path file = fs::path(images_dir_) / name;
    std::error_code ec;
    if (picture_name(name) != name || file.extension() != ".png" || !fs::is_regular_file(file, ec)) {
      res.status = 404;
      return;
    }
    std::ifstream in(file, std::ios::binary);
    std::ostringstream ss;
    ss << in.rdbuf();
    no_store(res);
    res.set_content(ss.str(), "image/png");
  });
}

HttpServer::~HttpServer() = default;

int HttpServer::bind(int port) {
  if (port == 0) return svr_->bind_to_any_port("127.0.0.1");
  return svr_->bind_to_port("127.0.0.1", port) ? port : -1;
}

void HttpServer::run() { svr_->listen_after_bind(); }

void HttpServer::stop() { svr_->stop(); }

}  // namespace serve
