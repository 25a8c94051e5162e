#include "serve/http_server.h"

#include <arpa/inet.h>
#include <fcntl.h>
#include <netinet/in.h>
#include <netinet/tcp.h>
#include <sys/epoll.h>
#include <sys/eventfd.h>
#include <sys/socket.h>
#include <sys/uio.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <cstring>
#include <unordered_map>

#include "serve/site.h"

namespace serve {

namespace {

using Clock = std::chrono::steady_clock;

// After an answer that closes a connection whose request was not read to its end, what
// the client still sends is read and dropped for a while, so that closing does not reset
// the connection before the client has read the answer.
constexpr auto kLingerTime = std::chrono::seconds(2);
constexpr size_t kLingerBytes = 1 << 20;
constexpr size_t kReadChunk = 16 * 1024;

const char* reason(int status) {
  switch (status) {
    case 200: return "OK";
    case 400: return "Bad Request";
    case 403: return "Forbidden";
    case 404: return "Not Found";
    case 405: return "Method Not Allowed";
    case 408: return "Request Timeout";
    case 413: return "Content Too Large";
    case 414: return "URI Too Long";
    case 431: return "Request Header Fields Too Large";
    case 505: return "HTTP Version Not Supported";
  }
  return "Error";
}

enum class Phase {
  reading,   // a request head, or the wait for one
  body,      // passing over the body of a request
  waiting,   // a long poll
  writing,   // an answer
  draining,  // closed for writing, dropping what still comes
};

struct Conn {
  int fd = -1;
  uint32_t id = 0;  // tells a connection from a later one on the same descriptor
  Phase phase = Phase::reading;
  uint32_t events = 0;
  std::string in;           // received and not yet used
  bool started = false;     // a request has begun: its first byte came
  size_t body_left = 0;     // phase body
  size_t drained = 0;       // phase draining
  HttpRequest req;          // the request being answered
  long after = 0;           // phase waiting
  std::string head;         // phase writing: the answer's head and body, and how much is sent
  Bytes body;
  size_t sent = 0;
  bool close_after = false;  // close once the answer is written
  bool linger = false;       // and drain before closing
  bool peer_closed = false;  // the client sent all it will: answer what came, then close
  bool dead = false;         // to be closed
  Clock::time_point deadline, active;
};

uint64_t key_of(const Conn& c) { return static_cast<uint64_t>(c.id) << 32 | static_cast<uint32_t>(c.fd); }

}  // namespace

struct HttpServer::Loop {
  PreviewState& state;
  std::string images_dir;
  ServerLimits lim;
  std::unique_ptr<Site> site;
  int listen_fd = -1, epoll_fd = -1, wake_fd = -1, spare_fd = -1;
  std::atomic<bool> stopping{false};
  std::unordered_map<int, Conn> conns;
  uint32_t next_id = 1;
  Clock::time_point next_check = Clock::time_point::max();

  Loop(PreviewState& s, std::string dir, ServerLimits l) : state(s), images_dir(std::move(dir)), lim(l) {
    epoll_fd = epoll_create1(EPOLL_CLOEXEC);
    wake_fd = eventfd(0, EFD_NONBLOCK | EFD_CLOEXEC);
    spare_fd = open("/dev/null", O_RDONLY | O_CLOEXEC);
    if (epoll_fd < 0 || wake_fd < 0)
      throw std::runtime_error("cannot set up the event loop: " + std::string(strerror(errno)));
    watch(wake_fd, EPOLLIN, wake_fd);
    state.on_change([this] { notify(); });
  }

  ~Loop() {
    state.on_change(nullptr);
    for (auto& [fd, c] : conns) close(fd);
    for (int fd : {listen_fd, epoll_fd, wake_fd, spare_fd})
      if (fd >= 0) close(fd);
  }

  void watch(int fd, uint32_t events, uint64_t key) {
    epoll_event ev{};
    ev.events = events;
    ev.data.u64 = key;
    epoll_ctl(epoll_fd, EPOLL_CTL_ADD, fd, &ev);
  }

  void notify() {
    const uint64_t one = 1;
    [[maybe_unused]] ssize_t n = write(wake_fd, &one, sizeof one);
  }

  int listen_on(int port) {
    listen_fd = socket(AF_INET, SOCK_STREAM | SOCK_NONBLOCK | SOCK_CLOEXEC, 0);
    if (listen_fd < 0) throw ListenError("cannot open a socket: " + std::string(strerror(errno)));
    // Lets a restarted server bind while connections of the last one linger in TIME_WAIT;
    // a port with a listener on it stays refused. No SO_REUSEPORT: one listener per port.
    const int one = 1;
    setsockopt(listen_fd, SOL_SOCKET, SO_REUSEADDR, &one, sizeof one);
    sockaddr_in addr{};
    addr.sin_family = AF_INET;
    addr.sin_port = htons(static_cast<uint16_t>(port));
    addr.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    const std::string where = "127.0.0.1:" + std::to_string(port);
    if (bind(listen_fd, reinterpret_cast<sockaddr*>(&addr), sizeof addr) != 0) {
      if (errno == EADDRINUSE)
        throw ListenError("port " + std::to_string(port) + " is in use on 127.0.0.1 (another compose serve?); "
                          "stop that program or choose another port with --port (0 takes any free one)");
      throw ListenError("cannot listen on " + where + ": " + strerror(errno));
    }
    if (::listen(listen_fd, 128) != 0) throw ListenError("cannot listen on " + where + ": " + strerror(errno));
    socklen_t len = sizeof addr;
    getsockname(listen_fd, reinterpret_cast<sockaddr*>(&addr), &len);
    const int bound = ntohs(addr.sin_port);
    site = std::make_unique<Site>(state, images_dir, bound);
    watch(listen_fd, EPOLLIN, static_cast<uint64_t>(listen_fd));
    return bound;
  }

  // ---- the loop ----

  void run() {
    epoll_event events[64];
    while (!stopping) {
      int timeout = 1000;
      const auto now = Clock::now();
      if (next_check != Clock::time_point::max())
        timeout = static_cast<int>(std::clamp<long long>(
            std::chrono::ceil<std::chrono::milliseconds>(next_check - now).count(), 0, 1000));
      const int n = epoll_wait(epoll_fd, events, 64, timeout);
      if (n < 0 && errno != EINTR) break;
      for (int i = 0; i < n; ++i) {
        const uint64_t key = events[i].data.u64;
        if (key == static_cast<uint64_t>(wake_fd)) {
          uint64_t count;
          [[maybe_unused]] ssize_t r = read(wake_fd, &count, sizeof count);
          wake_waiters();
        } else if (key == static_cast<uint64_t>(listen_fd)) {
          accept_all();
        } else {
          auto it = conns.find(static_cast<int>(key & 0xffffffffu));
          if (it == conns.end() || key_of(it->second) != key) continue;
          on_event(it->second, events[i].events);
          if (it->second.dead) drop(it);
        }
      }
      if (Clock::now() >= next_check) expire();
    }
  }

  void accept_all() {
    for (;;) {
      const int fd = accept4(listen_fd, nullptr, nullptr, SOCK_NONBLOCK | SOCK_CLOEXEC);
      if (fd < 0) {
        if (errno == EINTR || errno == ECONNABORTED) continue;
        if ((errno == EMFILE || errno == ENFILE) && evict_one()) continue;
        if ((errno == EMFILE || errno == ENFILE) && spare_fd >= 0) {
          // Nothing to give up: refuse this one, or the listener stays ready for ever.
          close(spare_fd);
          const int refused = accept4(listen_fd, nullptr, nullptr, SOCK_CLOEXEC);
          if (refused >= 0) close(refused);
          spare_fd = open("/dev/null", O_RDONLY | O_CLOEXEC);
          continue;
        }
        return;
      }
      if (conns.size() >= lim.max_connections && !evict_one()) {
        close(fd);
        continue;
      }
      const int one = 1;
      setsockopt(fd, IPPROTO_TCP, TCP_NODELAY, &one, sizeof one);
      Conn& c = conns[fd];
      c = Conn();
      c.fd = fd;
      c.id = next_id++;
      c.active = Clock::now();
      set_deadline(c, lim.idle_timeout);
      c.events = EPOLLIN | EPOLLRDHUP;
      watch(fd, c.events, key_of(c));
    }
  }

  // Closes the connection that matters least: the longest idle one without a request, else
  // the one whose request has been coming the longest. Long polls and answers stay.
  bool evict_one() {
    auto victim = conns.end();
    auto rank = [](const Conn& c) {
      if (c.phase == Phase::draining || (c.phase == Phase::reading && !c.started)) return 0;
      return c.phase == Phase::reading ? 1 : 2;
    };
    for (auto it = conns.begin(); it != conns.end(); ++it) {
      const int r = rank(it->second);
      if (r == 2) continue;
      if (victim == conns.end() || r < rank(victim->second) ||
          (r == rank(victim->second) && it->second.active < victim->second.active))
        victim = it;
    }
    if (victim == conns.end()) return false;
    drop(victim);
    return true;
  }

  void drop(std::unordered_map<int, Conn>::iterator it) {
    close(it->first);  // also leaves the epoll set
    conns.erase(it);
  }

  void set_deadline(Conn& c, std::chrono::milliseconds after) {
    c.deadline = Clock::now() + after;
    next_check = std::min(next_check, c.deadline);
  }

  void set_events(Conn& c, uint32_t events) {
    if (c.events == events) return;
    c.events = events;
    epoll_event ev{};
    ev.events = events;
    ev.data.u64 = key_of(c);
    epoll_ctl(epoll_fd, EPOLL_CTL_MOD, c.fd, &ev);
  }

  void on_event(Conn& c, uint32_t events) {
    if (c.phase == Phase::waiting) {
      // A long poll reads nothing more: this is the client going away.
      if (events & (EPOLLRDHUP | EPOLLHUP | EPOLLERR)) c.dead = true;
      return;
    }
    if (events & EPOLLERR) {
      c.dead = true;
      return;
    }
    if (c.phase == Phase::writing) {
      if (events & (EPOLLOUT | EPOLLHUP)) advance(c);
      return;
    }
    if (events & (EPOLLIN | EPOLLRDHUP | EPOLLHUP)) receive(c);
    if (!c.dead) advance(c);
  }

  // Reads what the client sent, bounded: a head larger than the limits is refused by the
  // parser before more is read, a body and a lingering close are dropped as they come.
  void receive(Conn& c) {
    const size_t head_cap = lim.http.max_request_line + lim.http.max_header_bytes + kReadChunk;
    char buf[kReadChunk];
    for (;;) {
      if (c.peer_closed || (c.phase == Phase::reading && c.in.size() >= head_cap)) return;
      const ssize_t n = recv(c.fd, buf, sizeof buf, 0);
      if (n < 0 && errno == EINTR) continue;
      if (n < 0 && (errno == EAGAIN || errno == EWOULDBLOCK)) return;
      if (n == 0 && c.phase == Phase::reading && !c.in.empty()) {
        c.peer_closed = true;  // a request, then the end of what the client sends
        set_events(c, 0);
        return;
      }
      if (n <= 0) {  // closed by the client, or broken
        c.dead = true;
        return;
      }
      c.active = Clock::now();
      if (c.phase == Phase::draining) {
        c.drained += static_cast<size_t>(n);
        if (c.drained > kLingerBytes) c.dead = true;
        if (c.dead) return;
        continue;
      }
      c.in.append(buf, static_cast<size_t>(n));
      if (c.phase == Phase::body) take_body(c);
      if (c.phase == Phase::reading && !c.started) {
        c.started = true;
        set_deadline(c, lim.request_timeout);
      }
    }
  }

  void take_body(Conn& c) {
    const size_t n = std::min(c.body_left, c.in.size());
    c.in.erase(0, n);
    c.body_left -= n;
  }

  // Does everything the connection's bytes allow now.
  void advance(Conn& c) {
    while (!c.dead) {
      switch (c.phase) {
        case Phase::reading:
          if (!take_request(c)) {
            if (c.peer_closed) c.dead = true;
            return;
          }
          break;
        case Phase::body:
          take_body(c);
          if (c.body_left > 0) return;
          c.phase = Phase::reading;
          dispatch(c);
          break;
        case Phase::writing:
          if (!flush(c)) return;
          answered(c);
          break;
        case Phase::waiting:
        case Phase::draining:
          return;
      }
    }
  }

  // A whole request head in the buffer: taken, and its body or its answer begun.
  bool take_request(Conn& c) {
    if (c.in.empty()) return false;
    if (!c.started) {
      c.started = true;
      set_deadline(c, lim.request_timeout);
    }
    ParseResult r = parse_request(c.in, lim.http);
    if (r.state == ParseState::incomplete) return false;
    if (r.state == ParseState::bad) {
      c.req = HttpRequest();
      respond(c, Site::error(r.status), true, true);
      return true;
    }
    c.in.erase(0, r.head_size);
    c.req = std::move(r.request);
    c.body_left = c.req.content_length;
    if (c.body_left > 0) {
      c.phase = Phase::body;
      return true;
    }
    dispatch(c);
    return true;
  }

  void dispatch(Conn& c) {
    const Answer a = site->answer(c.req);
    if (a.wait) {
      c.phase = Phase::waiting;
      c.after = a.after;
      set_deadline(c, lim.poll_timeout);
      set_events(c, EPOLLRDHUP);
      return;
    }
    respond(c, a, !c.req.keep_alive || c.peer_closed, false);
  }

  void respond(Conn& c, const Answer& a, bool close_after, bool linger) {
    const size_t length = a.body ? a.body->size() : 0;
    std::string& h = c.head;
    h = "HTTP/1.1 " + std::to_string(a.status) + " " + reason(a.status) + "\r\n";
    if (!a.content_type.empty()) h += "Content-Type: " + a.content_type + "\r\n";
    h += "Content-Length: " + std::to_string(length) + "\r\n";
    if (!a.cache.empty()) h += "Cache-Control: " + a.cache + "\r\n";
    if (a.status == 405) h += "Allow: GET, HEAD\r\n";
    h += "X-Content-Type-Options: nosniff\r\n";
    h += close_after ? "Connection: close\r\n" : c.req.minor == 0 ? "Connection: keep-alive\r\n" : "";
    h += "\r\n";
    c.body = c.req.method == "HEAD" ? nullptr : a.body;
    c.sent = 0;
    c.close_after = close_after;
    c.linger = linger || (close_after && !c.in.empty());
    c.phase = Phase::writing;
    set_deadline(c, lim.write_timeout);
  }

  // Writes what the socket takes; true once the whole answer is out.
  bool flush(Conn& c) {
    const size_t body_size = c.body ? c.body->size() : 0;
    while (c.sent < c.head.size() + body_size) {
      iovec iov[2];
      int count = 0;
      if (c.sent < c.head.size()) iov[count++] = {c.head.data() + c.sent, c.head.size() - c.sent};
      const size_t body_at = c.sent > c.head.size() ? c.sent - c.head.size() : 0;
      if (body_at < body_size) iov[count++] = {const_cast<char*>(c.body->data()) + body_at, body_size - body_at};
      msghdr msg{};
      msg.msg_iov = iov;
      msg.msg_iovlen = static_cast<size_t>(count);
      const ssize_t n = sendmsg(c.fd, &msg, MSG_NOSIGNAL | MSG_DONTWAIT);
      if (n < 0 && errno == EINTR) continue;
      if (n < 0 && (errno == EAGAIN || errno == EWOULDBLOCK)) {
        set_events(c, EPOLLOUT);
        return false;
      }
      if (n <= 0) {
        c.dead = true;
        return false;
      }
      c.sent += static_cast<size_t>(n);
      c.active = Clock::now();
      set_deadline(c, lim.write_timeout);
    }
    return true;
  }

  void answered(Conn& c) {
    c.head.clear();
    c.body = nullptr;
    if (c.close_after) {
      if (!c.linger) {
        c.dead = true;
        return;
      }
      shutdown(c.fd, SHUT_WR);
      c.in.clear();
      c.phase = Phase::draining;
      set_deadline(c, std::chrono::duration_cast<std::chrono::milliseconds>(kLingerTime));
      set_events(c, EPOLLIN | EPOLLRDHUP);
      return;
    }
    c.phase = Phase::reading;
    c.started = false;
    c.req = HttpRequest();
    set_deadline(c, lim.idle_timeout);
    set_events(c, EPOLLIN | EPOLLRDHUP);
  }

  void answer_poll(Conn& c) {
    respond(c, site->state(), !c.req.keep_alive, false);
    advance(c);
  }

  void wake_waiters() {
    const long version = state.version();
    for (auto it = conns.begin(); it != conns.end();) {
      Conn& c = it->second;
      if (c.phase == Phase::waiting && version > c.after) answer_poll(c);
      if (c.dead) {
        auto gone = it++;
        drop(gone);
      } else {
        ++it;
      }
    }
  }

  // Acts on every deadline passed and finds the next one.
  void expire() {
    const auto now = Clock::now();
    next_check = Clock::time_point::max();
    for (auto it = conns.begin(); it != conns.end();) {
      Conn& c = it->second;
      if (c.deadline <= now) {
        if (c.phase == Phase::waiting) {
          answer_poll(c);  // the same version: the client asks again
        } else if ((c.phase == Phase::reading && c.started) || c.phase == Phase::body) {
          c.req = HttpRequest();
          respond(c, Site::error(408), true, true);
          advance(c);
        } else {
          c.dead = true;  // idle, an unread answer, or done lingering
        }
      }
      if (c.dead) {
        auto gone = it++;
        drop(gone);
        continue;
      }
      next_check = std::min(next_check, c.deadline);
      ++it;
    }
  }
};

HttpServer::HttpServer(PreviewState& state, std::string images_dir, ServerLimits limits)
    : loop_(std::make_unique<Loop>(state, std::move(images_dir), limits)) {}

HttpServer::~HttpServer() = default;

int HttpServer::listen(int port) { return loop_->listen_on(port); }

void HttpServer::run() { loop_->run(); }

void HttpServer::stop() {
  loop_->stopping = true;
  loop_->notify();
}

}  // namespace serve
