#include "serve/site.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <charconv>

#include "json2img/picture_files.h"
#include "serve/control_boxes.h"
#include "serve/page_html.h"

namespace serve {

namespace {

constexpr off_t kMaxPictureBytes = 64 << 20;

Bytes text(std::string s) { return std::make_shared<const std::string>(std::move(s)); }

bool is_digits(std::string_view s) {
  return !s.empty() && s.find_first_not_of("0123456789") == std::string_view::npos;
}

// The file behind an open descriptor lies inside dir, every link resolved: what was opened,
// not what the name led to when it was looked at.
bool opened_inside(const std::string& dir, int fd) {
  return layout::resolves_inside(dir, "/proc/self/fd/" + std::to_string(fd));
}

// A regular file of at most kMaxPictureBytes inside dir, read whole.
bool read_inside(const std::string& dir, const std::string& path, std::string& out) {
  const int fd = open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY);
  if (fd < 0) return false;
  struct stat st {};
  bool ok = fstat(fd, &st) == 0 && S_ISREG(st.st_mode) && st.st_size <= kMaxPictureBytes && opened_inside(dir, fd);
  if (ok) {
    out.resize(static_cast<size_t>(st.st_size));
    size_t got = 0;
    while (got < out.size()) {
      const ssize_t n = read(fd, out.data() + got, out.size() - got);
      if (n <= 0) break;
      got += static_cast<size_t>(n);
    }
    out.resize(got);
  }
  close(fd);
  return ok;
}

}  // namespace

bool host_allowed(std::string_view host, int port) {
  const std::string suffix = ":" + std::to_string(port);
  std::string name(host);
  for (char& c : name)
    if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
  if (name.size() > suffix.size() && name.ends_with(suffix)) {
    name.resize(name.size() - suffix.size());
  } else if (port != 80) {
    return false;
  }
  return name == "127.0.0.1" || name == "localhost" || name == "[::1]";
}

Site::Site(const PreviewState& state, std::string images_dir, int port)
    : state_(state), images_dir_(std::move(images_dir)), port_(port) {}

Answer Site::error(int status) {
  Answer a;
  a.status = status;
  a.content_type = "text/plain; charset=utf-8";
  a.cache = "no-store";
  a.body = text(std::to_string(status) + "\n");
  return a;
}

Answer Site::state() const {
  Answer a;
  a.content_type = "application/json";
  a.cache = "no-store";
  a.body = state_.snapshot()->body;
  return a;
}

Answer Site::answer(const HttpRequest& req) const {
  const std::string* host = req.header("host");
  if (!host || !host_allowed(*host, port_)) return error(403);
  if (req.method != "GET" && req.method != "HEAD") return error(405);
  const std::string& path = req.path;
  if (path == "/") {
    static const Bytes page = text(page_html());
    Answer a;
    a.content_type = "text/html; charset=utf-8";
    a.cache = "no-store";
    a.body = page;
    return a;
  }
  if (path == "/state") {
    std::string after;
    if (!query_value(req.query, "after", after)) return state();
    long v = 0;
    const auto [end, ec] = std::from_chars(after.data(), after.data() + after.size(), v);
    if (ec != std::errc() || end != after.data() + after.size()) return error(400);
    if (state_.version() > v) return state();
    Answer a;
    a.wait = true;
    a.after = v;
    return a;
  }
  const std::string_view preview = "/preview/";
  if (path.starts_with(preview) && path.ends_with(".png")) {
    const std::string_view number = std::string_view(path).substr(preview.size(), path.size() - preview.size() - 4);
    if (!is_digits(number) || number.size() > 3) return error(404);
    Bytes png = state_.png(std::stoul(std::string(number)));
    if (!png) return error(404);
    Answer a;
    a.content_type = "image/png";
    a.cache = "max-age=3600";  // the URL of the page carries the version
    a.body = std::move(png);
    return a;
  }
  const std::string_view images = "/images/";
  if (path.starts_with(images)) return picture(path.substr(images.size()));
  return error(404);
}

// A picture the layout may name, by the rules json2img reads pictures with: inside
// resources/images once every link is resolved, a PNG, not too large.
Answer Site::picture(const std::string& name) const {
  if (picture_name(name) != name || !name.ends_with(".png")) return error(404);
  const layout::PictureProbe probe = layout::probe_picture(images_dir_, name);
  std::string bytes;
  if (probe.status != layout::PictureStatus::ok || !read_inside(images_dir_, probe.path, bytes)) return error(404);
  Answer a;
  a.content_type = "image/png";
  a.cache = "no-store";
  a.body = text(std::move(bytes));
  return a;
}

}  // namespace serve
