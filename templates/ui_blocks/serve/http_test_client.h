// For the tests of the preview server: raw connections that send exactly the bytes given
// (hostile ones included) and read answers with a bound in seconds, and a "compose serve"
// child process on a free port.
#pragma once

#include <fcntl.h>
#include <netinet/in.h>
#include <poll.h>
#include <signal.h>
#include <spawn.h>
#include <sys/socket.h>
#include <sys/wait.h>
#include <unistd.h>

#include <arpa/inet.h>

#include <chrono>
#include <cstring>
#include <regex>
#include <string>
#include <vector>

extern char** environ;

namespace servetest {

using Clock = std::chrono::steady_clock;

// A connection to 127.0.0.1:port; -1 when it cannot be made.
inline int connect_to(int port) {
  const int fd = socket(AF_INET, SOCK_STREAM | SOCK_CLOEXEC, 0);
  sockaddr_in a{};
  a.sin_family = AF_INET;
  a.sin_port = htons(static_cast<uint16_t>(port));
  a.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
  if (fd >= 0 && connect(fd, reinterpret_cast<sockaddr*>(&a), sizeof a) == 0) return fd;
  if (fd >= 0) close(fd);
  return -1;
}

inline bool send_all(int fd, const std::string& bytes) {
  for (size_t at = 0; at < bytes.size();) {
    const ssize_t n = send(fd, bytes.data() + at, bytes.size() - at, MSG_NOSIGNAL);
    if (n <= 0) return false;
    at += static_cast<size_t>(n);
  }
  return true;
}

// Reads until the connection (or pipe) closes, `enough` bytes came, or `seconds` pass.
inline std::string read_for(int fd, double seconds, size_t enough = SIZE_MAX) {
  std::string out;
  const auto end = Clock::now() + std::chrono::duration<double>(seconds);
  while (out.size() < enough) {
    const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(end - Clock::now()).count();
    pollfd p{fd, POLLIN, 0};
    if (left <= 0 || poll(&p, 1, static_cast<int>(left)) <= 0) break;
    char buf[65536];
    const ssize_t n = read(fd, buf, sizeof buf);  // sockets and pipes
    if (n <= 0) break;
    out.append(buf, static_cast<size_t>(n));
  }
  return out;
}

// True when the server closed the connection within `seconds` (whatever it sent first).
inline bool closed_within(int fd, double seconds) {
  const auto end = Clock::now() + std::chrono::duration<double>(seconds);
  for (;;) {
    const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(end - Clock::now()).count();
    pollfd p{fd, POLLIN, 0};
    if (left <= 0 || poll(&p, 1, static_cast<int>(left)) <= 0) return false;
    char buf[4096];
    if (recv(fd, buf, sizeof buf, 0) <= 0) return true;
  }
}

// The status of the first answer in `bytes`, or -1.
inline int status_of(const std::string& bytes) {
  if (bytes.rfind("HTTP/1.1 ", 0) != 0 || bytes.size() < 12) return -1;
  return std::atoi(bytes.c_str() + 9);
}

// The body of an answer with a Content-Length.
inline std::string body_of(const std::string& bytes) {
  const size_t end = bytes.find("\r\n\r\n");
  return end == std::string::npos ? "" : bytes.substr(end + 4);
}

// The whole first answer in `bytes` has come (its head and Content-Length bytes of body).
inline bool answer_complete(const std::string& bytes) {
  const size_t head_end = bytes.find("\r\n\r\n");
  if (head_end == std::string::npos) return false;
  const size_t at = bytes.find("Content-Length: ");
  return at != std::string::npos && at < head_end && bytes.size() >= head_end + 4 + std::stoul(bytes.substr(at + 16));
}

// Reads one answer within `seconds`: as much of it as came.
inline std::string read_answer(int fd, double seconds) {
  std::string out;
  const auto end = Clock::now() + std::chrono::duration<double>(seconds);
  while (!answer_complete(out)) {
    const double left = std::chrono::duration<double>(end - Clock::now()).count();
    const std::string more = left > 0 ? read_for(fd, left, 1) : "";
    if (more.empty()) break;
    out += more;
  }
  return out;
}

// One request on a new connection, answered within `seconds`.
inline std::string ask(int port, const std::string& request, double seconds = 10) {
  const int fd = connect_to(port);
  if (fd < 0) return "";
  const std::string out = send_all(fd, request) ? read_answer(fd, seconds) : "";
  close(fd);
  return out;
}

inline std::string get(int port, const std::string& path, const std::string& host = "") {
  return ask(port, "GET " + path + " HTTP/1.1\r\nHost: " + (host.empty() ? "127.0.0.1:" + std::to_string(port) : host) +
                            "\r\nConnection: close\r\n\r\n");
}

// "compose serve ARGS --port 0" as a child process; stopped with SIGINT when destroyed.
class ServeProcess {
 public:
  explicit ServeProcess(const std::string& exe, std::vector<std::string> args) {
    int out[2], err[2];
    if (pipe2(out, O_CLOEXEC) != 0 || pipe2(err, O_CLOEXEC) != 0) return;
    posix_spawn_file_actions_t fa;
    posix_spawn_file_actions_init(&fa);
    posix_spawn_file_actions_adddup2(&fa, out[1], 1);
    posix_spawn_file_actions_adddup2(&fa, err[1], 2);
    args.insert(args.begin(), {exe, "serve"});
    std::vector<char*> argv;
    for (auto& a : args) argv.push_back(a.data());
    argv.push_back(nullptr);
    if (posix_spawn(&pid_, exe.c_str(), &fa, nullptr, argv.data(), environ) != 0) pid_ = -1;
    posix_spawn_file_actions_destroy(&fa);
    close(out[1]);
    close(err[1]);
    out_ = out[0];
    err_ = err[0];
  }
  ~ServeProcess() {
    if (pid_ > 0 && !exited_) {
      kill(pid_, SIGINT);
      wait(20);
      if (!exited_) {
        kill(pid_, SIGKILL);
        wait(20);
      }
    }
    if (out_ >= 0) close(out_);
    if (err_ >= 0) close(err_);
  }

  // Reads standard output until the address is printed; the port, or -1.
  int port(double seconds = 60) {
    const std::regex address(R"(serving http://127\.0\.0\.1:(\d+)/)");
    const auto end = Clock::now() + std::chrono::duration<double>(seconds);
    std::smatch m;
    while (!std::regex_search(out_text_, m, address)) {
      const double left = std::chrono::duration<double>(end - Clock::now()).count();
      const std::string more = left > 0 ? read_for(out_, left, 1) : "";
      if (more.empty()) return -1;
      out_text_ += more;
    }
    return std::stoi(m[1].str());
  }
  // Lines of standard output that came so far, and more within `seconds`.
  std::string output(double seconds) {
    out_text_ += read_for(out_, seconds);
    return out_text_;
  }
  // Waits for the exit; the status, or -1 when still running after `seconds`.
  int wait(double seconds) {
    const auto end = Clock::now() + std::chrono::duration<double>(seconds);
    while (!exited_ && Clock::now() < end) {
      int st = 0;
      if (waitpid(pid_, &st, WNOHANG) == pid_) {
        exited_ = true;
        status_ = WIFEXITED(st) ? WEXITSTATUS(st) : 128 + WTERMSIG(st);
      } else {
        usleep(20 * 1000);
      }
    }
    return exited_ ? status_ : -1;
  }
  std::string errors() { return read_for(err_, 1); }
  pid_t pid() const { return pid_; }

 private:
  pid_t pid_ = -1;
  int out_ = -1, err_ = -1;
  bool exited_ = false;
  int status_ = -1;
  std::string out_text_;
};

}  // namespace servetest
