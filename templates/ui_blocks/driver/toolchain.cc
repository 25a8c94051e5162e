#include "driver/toolchain.h"

#include <fcntl.h>
#include <poll.h>
#include <spawn.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <stdexcept>

#include "driver/console_text.h"
#include "driver/paths.h"

extern char** environ;

namespace fs = std::filesystem;

namespace ub {

namespace {

// Sorted *.ttf files directly in dir (none when dir is missing).
std::vector<std::string> ttf_in(const fs::path& dir) {
  std::vector<std::string> out;
  std::error_code ec;
  if (!fs::is_directory(dir, ec)) return out;
  for (const auto& e : fs::directory_iterator(dir, ec)) {
    const std::string name = e.path().filename().string();
    if (name.size() >= 4 && name.compare(name.size() - 4, 4, ".ttf") == 0 && name[0] != '.')
      out.push_back(e.path().string());
  }
  std::sort(out.begin(), out.end());
  return out;
}

// Captured bytes as text: lenient UTF-8, and \r\n or a lone \r read as \n.
std::string text_mode(const std::string& bytes) {
  std::string s = decode_replace(bytes), out;
  out.reserve(s.size());
  for (size_t i = 0; i < s.size(); ++i) {
    if (s[i] != '\r') out += s[i];
    else {
      out += '\n';
      if (i + 1 < s.size() && s[i + 1] == '\n') ++i;
    }
  }
  return out;
}

}  // namespace

std::optional<std::string> find_render_font(const std::string& project_root) {
  for (const char* sub : {"font", "fonts"}) {
    auto hits = ttf_in(fs::path(project_root) / "resources" / sub);
    if (!hits.empty()) return hits.front();
  }
  fs::path common = fs::path(paths().repo) / "components" / "fonts" / "fonts" / "torvo-hans-common.ttf";
  std::error_code ec;
  if (fs::exists(common, ec)) return common.string();
  return std::nullopt;
}

std::string self_exe() {
  std::error_code ec;
  fs::path p = fs::read_symlink("/proc/self/exe", ec);
  if (ec) throw std::runtime_error("cannot find the program's own executable: " + ec.message());
  return p.string();
}

std::vector<std::string> tool_argv(const std::string& name, const std::vector<std::string>& args) {
  std::vector<std::string> argv = {self_exe(), name};
  argv.insert(argv.end(), args.begin(), args.end());
  return argv;
}

ChildResult run_captured(const std::vector<std::string>& argv) {
  int out_pipe[2], err_pipe[2];
  if (pipe2(out_pipe, O_CLOEXEC) != 0) throw std::runtime_error(std::string("pipe: ") + std::strerror(errno));
  if (pipe2(err_pipe, O_CLOEXEC) != 0) {
    close(out_pipe[0]);
    close(out_pipe[1]);
    throw std::runtime_error(std::string("pipe: ") + std::strerror(errno));
  }
  posix_spawn_file_actions_t fa;
  posix_spawn_file_actions_init(&fa);
  posix_spawn_file_actions_adddup2(&fa, out_pipe[1], 1);
  posix_spawn_file_actions_adddup2(&fa, err_pipe[1], 2);
  std::vector<char*> cargv;
  for (const auto& a : argv) cargv.push_back(const_cast<char*>(a.c_str()));
  cargv.push_back(nullptr);
  pid_t pid = 0;
  int rc = posix_spawn(&pid, cargv[0], &fa, nullptr, cargv.data(), environ);
  posix_spawn_file_actions_destroy(&fa);
  close(out_pipe[1]);
  close(err_pipe[1]);
  if (rc != 0) {
    close(out_pipe[0]);
    close(err_pipe[0]);
    throw std::runtime_error("cannot start " + argv[0] + ": " + std::strerror(rc));
  }

  // Drain both pipes together so neither can fill up and block the child.
  std::string out, err;
  pollfd fds[2] = {{out_pipe[0], POLLIN, 0}, {err_pipe[0], POLLIN, 0}};
  std::string* bufs[2] = {&out, &err};
  int open_fds = 2;
  char chunk[65536];
  while (open_fds > 0) {
    if (poll(fds, 2, -1) < 0) {
      if (errno == EINTR) continue;
      break;
    }
    for (int i = 0; i < 2; ++i) {
      if (fds[i].fd < 0 || !(fds[i].revents & (POLLIN | POLLHUP | POLLERR))) continue;
      ssize_t n = read(fds[i].fd, chunk, sizeof chunk);
      if (n > 0) {
        bufs[i]->append(chunk, (size_t)n);
      } else if (n == 0 || errno != EINTR) {
        close(fds[i].fd);
        fds[i].fd = -1;
        --open_fds;
      }
    }
  }
  for (auto& f : fds)
    if (f.fd >= 0) close(f.fd);

  int wstatus = 0;
  while (waitpid(pid, &wstatus, 0) < 0 && errno == EINTR) {
  }
  ChildResult r;
  r.status = WIFEXITED(wstatus) ? WEXITSTATUS(wstatus) : WIFSIGNALED(wstatus) ? -WTERMSIG(wstatus) : 1;
  r.out = text_mode(out);
  r.err = text_mode(err);
  return r;
}

}  // namespace ub
