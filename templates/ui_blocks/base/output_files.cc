#include "base/output_files.h"

#include <dirent.h>
#include <fcntl.h>
#include <signal.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <cstring>
#include <filesystem>
#include <map>
#include <optional>
#include <set>

namespace base {

int FileOps::openat(int dir, const char* name, int flags, mode_t mode) { return ::openat(dir, name, flags, mode); }
ssize_t FileOps::write(int fd, const void* data, size_t n) { return ::write(fd, data, n); }
int FileOps::close(int fd) { return ::close(fd); }
int FileOps::mkdirat(int dir, const char* name, mode_t mode) { return ::mkdirat(dir, name, mode); }
int FileOps::linkat(int from_dir, const char* from, int to_dir, const char* to) {
  return ::linkat(from_dir, from, to_dir, to, 0);
}
int FileOps::renameat(int from_dir, const char* from, int to_dir, const char* to) {
  return ::renameat(from_dir, from, to_dir, to);
}
int FileOps::unlinkat(int dir, const char* name, int flags) { return ::unlinkat(dir, name, flags); }

FileOps& system_file_ops() {
  static FileOps ops;
  return ops;
}

ProjectLock::ProjectLock(const std::string& root) : root_(root) {
  while (root_.size() > 1 && root_.back() == '/') root_.pop_back();
  std::error_code ec;
  std::filesystem::create_directories(root, ec);
  fd_ = ::open(root.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC);
  if (fd_ < 0) throw OutputError("cannot open project " + root + ": " + std::strerror(errno));
  while (::flock(fd_, LOCK_EX) != 0) {
    if (errno == EINTR) continue;
    const int e = errno;
    ::close(fd_);
    throw OutputError("cannot lock project " + root + ": " + std::strerror(e));
  }
}

ProjectLock::~ProjectLock() {
  if (fd_ >= 0) ::close(fd_);  // closing releases the lock
}

namespace {
constexpr std::string_view kLeftoverHead = ".~compose-";

// The decimal number at the front of s, moved past; false when there is none.
bool take_number(std::string_view& s, long* value) {
  size_t n = 0;
  long v = 0;
  while (n < s.size() && n < 12 && s[n] >= '0' && s[n] <= '9') v = v * 10 + (s[n++] - '0');
  if (n == 0 || (n < s.size() && s[n] >= '0' && s[n] <= '9')) return false;
  if (value) *value = v;
  s.remove_prefix(n);
  return true;
}
}  // namespace

bool is_commit_leftover(std::string_view name, long* pid) {
  if (!name.starts_with(kLeftoverHead)) return false;
  name.remove_prefix(kLeftoverHead.size());
  for (int part = 0; part < 3; ++part) {
    if (!take_number(name, part == 0 ? pid : nullptr)) return false;
    if (part < 2) {
      if (!name.starts_with('-')) return false;
      name.remove_prefix(1);
    }
  }
  return name == ".tmp" || name == ".bak";
}

void OutputSet::add(std::string path, std::string bytes) { files_.push_back({std::move(path), std::move(bytes), {}}); }
void OutputSet::add_stream(std::string path, Producer produce) {
  files_.push_back({std::move(path), {}, std::move(produce)});
}
void OutputSet::add_directory(std::string path) { dirs_.push_back(std::move(path)); }
void OutputSet::require_unchanged(std::string path, std::optional<std::string> bytes) {
  unchanged_.push_back({std::move(path), std::move(bytes)});
}

namespace {

std::string errno_text() { return std::strerror(errno); }

// The components of a relative path, or an error text when it is not a plain path
// below the root.
std::vector<std::string> components(const std::string& path) {
  auto refuse = [&](const std::string& why) { throw OutputError("refusing output path \"" + path + "\": " + why); };
  if (path.empty()) refuse("empty");
  if (path.front() == '/') refuse("absolute");
  if (path.find('\0') != std::string::npos) refuse("holds a NUL byte");
  std::vector<std::string> parts;
  size_t start = 0;
  while (true) {
    const size_t slash = path.find('/', start);
    std::string part = path.substr(start, slash == std::string::npos ? std::string::npos : slash - start);
    if (part.empty()) refuse("empty component");
    if (part == "." || part == "..") refuse("\"" + part + "\" component");
    parts.push_back(std::move(part));
    if (slash == std::string::npos) break;
    start = slash + 1;
  }
  return parts;
}

struct Planned {
  std::string path, dir, name;
  const std::string* bytes = nullptr;
  const Producer* produce = nullptr;  // streamed: bytes stays null
  bool exists = false, unchanged = false;
  mode_t mode = 0;
  int dirfd = -1;
  std::string tmp, bak;
  bool tmp_made = false, bak_made = false, renamed = false;
};

// True when the regular file `name` in `dirfd` holds exactly `bytes`. Reading is not
// part of the FileOps seam: a file that cannot be read is simply rewritten.
bool same_bytes(int dirfd, const std::string& name, const std::string& bytes) {
  const int fd = ::openat(dirfd, name.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC, 0);
  if (fd < 0) return false;  // unreadable: simply rewritten
  // Compared a block at a time, so a large file is never held twice in memory.
  std::vector<char> buf(1 << 16);
  size_t got = 0;
  bool same = true;
  while (same) {
    const ssize_t n = ::read(fd, buf.data(), buf.size());
    if (n < 0 && errno == EINTR) continue;
    if (n <= 0) break;
    same = got + (size_t)n <= bytes.size() && std::memcmp(buf.data(), bytes.data() + got, (size_t)n) == 0;
    got += (size_t)n;
  }
  ::close(fd);
  return same && got == bytes.size();
}

// The file `name` in `dirfd`, compared with bytes as they come a block at a time, so it
// is never held whole. A file that cannot be read is not readable() and is simply rewritten.
class OldFile {
 public:
  OldFile(int dirfd, const std::string& name)
      : fd_(::openat(dirfd, name.c_str(), O_RDONLY | O_NOFOLLOW | O_NONBLOCK | O_CLOEXEC, 0)) {
    struct stat st;
    if (fd_ >= 0 && ::fstat(fd_, &st) == 0 && S_ISREG(st.st_mode)) size_ = (size_t)st.st_size;
    else size_ = 0, readable_ = false;
  }
  ~OldFile() {
    if (fd_ >= 0) ::close(fd_);
  }
  OldFile(const OldFile&) = delete;
  OldFile& operator=(const OldFile&) = delete;

  bool readable() const { return readable_; }
  size_t size() const { return size_; }

  // True when the file holds `piece` at offset `at`.
  bool holds(size_t at, std::string_view piece) {
    if (!readable_ || at > size_ || piece.size() > size_ - at) return false;
    bool same = true;
    blocks(at, piece.size(), [&](size_t off, std::string_view have) {
      same = std::memcmp(have.data(), piece.data() + off, have.size()) == 0;
      return same;
    });
    return same && readable_;
  }

  // Hands the file's first n bytes to `put` in pieces; false when they cannot be read.
  template <class Put>
  bool copy_prefix(size_t n, Put put) {
    blocks(0, std::min(n, size_), [&](size_t, std::string_view have) {
      put(have);
      return true;
    });
    return n == 0 || readable_;
  }

 private:
  // Calls f(offset from `at`, bytes) over [at, at + n) a block at a time, while f is true.
  // A block small enough to stay in the cache: it is compared right after it is read.
  template <class F>
  void blocks(size_t at, size_t n, F f) {
    constexpr size_t kBlock = 256 << 10;
    if (buf_.empty()) buf_.resize(kBlock);
    for (size_t done = 0; done < n && readable_;) {
      const ssize_t got = ::pread(fd_, buf_.data(), std::min(n - done, kBlock), (off_t)(at + done));
      if (got < 0 && errno == EINTR) continue;
      if (got <= 0) {
        readable_ = false;
        return;
      }
      if (!f(done, std::string_view(buf_.data(), (size_t)got))) return;
      done += (size_t)got;
    }
  }

  int fd_;
  size_t size_ = 0;
  bool readable_ = fd_ >= 0;
  std::vector<char> buf_;
};

// One commit: the open directories, the directories it made, and the undo steps.
class Commit {
 public:
  Commit(const std::string& root, int rootfd, FileOps& ops) : root_(root), rootfd_(rootfd), ops_(ops) {}
  ~Commit() {
    for (auto& [dir, fd] : dirs_)
      if (fd != rootfd_) ::close(fd);
  }

  // The directory `dir` (components joined by '/', "" for the root) opened without following
  // any symbolic link; -1 when missing and `create` is false.
  int open_dir(const std::string& dir, bool create) {
    if (auto it = dirs_.find(dir); it != dirs_.end()) return it->second;
    if (dir.empty()) {
      remove_leftovers(rootfd_);
      return dirs_[dir] = rootfd_;
    }
    const size_t slash = dir.rfind('/');
    const std::string parent_dir = slash == std::string::npos ? "" : dir.substr(0, slash);
    const std::string name = slash == std::string::npos ? dir : dir.substr(slash + 1);
    const int parent = open_dir(parent_dir, create);
    if (parent < 0) return -1;
    int fd = ops_.openat(parent, name.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC, 0);
    if (fd < 0 && errno == ENOENT && create) {
      if (ops_.mkdirat(parent, name.c_str(), 0777) != 0) fail("cannot create directory " + full(dir));
      made_dirs_.push_back({parent, name});
      fd = ops_.openat(parent, name.c_str(), O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC, 0);
    }
    if (fd < 0) {
      if (errno == ENOENT && !create) return -1;
      if (errno == ELOOP || errno == ENOTDIR)
        throw OutputError(full(dir) + " is a symbolic link or not a directory; outputs stay inside the project");
      fail("cannot open directory " + full(dir));
    }
    remove_leftovers(fd);
    return dirs_[dir] = fd;
  }

  // Removes what a killed commit left in a directory: its temporary files and backups,
  // recognised by their names, when the process that made them is gone. The project lock
  // keeps every other commit into the project out meanwhile; the process check spares a
  // commit of a tool that locks only a folder of the project.
  void remove_leftovers(int dirfd) {
    const int scan = ::openat(dirfd, ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC);
    if (scan < 0) return;
    DIR* d = ::fdopendir(scan);
    if (!d) {
      ::close(scan);
      return;
    }
    std::vector<std::string> gone;
    while (const dirent* e = ::readdir(d)) {
      long pid = 0;
      if (is_commit_leftover(e->d_name, &pid) && pid > 0 && pid != ::getpid() &&
          ::kill((pid_t)pid, 0) != 0 && errno == ESRCH)
        gone.push_back(e->d_name);
    }
    ::closedir(d);
    for (const auto& name : gone) ops_.unlinkat(dirfd, name.c_str(), 0);  // best effort
  }

  // Looks at what is on disk at the file's place; refuses anything but a regular file.
  void inspect(Planned& f) {
    const int dirfd = open_dir(f.dir, false);
    if (dirfd < 0) return;
    struct stat st;
    if (::fstatat(dirfd, f.name.c_str(), &st, AT_SYMLINK_NOFOLLOW) != 0) {
      if (errno == ENOENT) return;
      fail("cannot inspect " + full(f.path));
    }
    if (S_ISLNK(st.st_mode)) throw OutputError(full(f.path) + " is a symbolic link; outputs are never written through one");
    if (!S_ISREG(st.st_mode)) throw OutputError(full(f.path) + " exists and is not a regular file");
    f.exists = true;
    f.mode = st.st_mode & 07777;
    f.unchanged = f.bytes && (size_t)st.st_size == f.bytes->size() && same_bytes(dirfd, f.name, *f.bytes);
  }

  // Writes the file's bytes to a fresh temporary file beside it. A streamed file that
  // exists is compared as it is produced and its temporary file is only made at the first
  // difference (from the bytes that matched so far): an unchanged file costs no writing.
  void write_temp(Planned& f, int serial) {
    f.dirfd = open_dir(f.dir, true);
    std::optional<OldFile> old;
    if (f.produce && f.exists) old.emplace(f.dirfd, f.name);
    size_t matched = 0;  // bytes produced so far, all equal to the old file's
    int fd = -1;
    auto start_writing = [&] {
      fd = open_temp(f, serial);
      if (old && !old->copy_prefix(matched, [&](std::string_view bytes) { put(fd, f, bytes); }))
        fail("cannot read " + full(f.path));
    };
    try {
      if (!f.produce) {
        start_writing();
        put(fd, f, *f.bytes);
      } else {
        if (!old || !old->readable()) start_writing();
        (*f.produce)([&](std::string_view piece) {
          if (fd < 0 && old->holds(matched, piece)) {
            matched += piece.size();
            return;
          }
          if (fd < 0) start_writing();
          put(fd, f, piece);
        });
        if (fd < 0 && matched == old->size()) {
          f.unchanged = true;  // the bytes were on disk already: the file stays as it was
          return;
        }
        if (fd < 0) start_writing();
      }
    } catch (...) {
      if (fd >= 0) ops_.close(fd);
      throw;
    }
    if (ops_.close(fd) != 0) fail("cannot write " + full(f.path));
  }

  // A fresh temporary file beside `f`, with the permissions of the file it replaces.
  int open_temp(Planned& f, int serial) {
    int fd = -1;
    for (int attempt = 0; fd < 0; ++attempt) {
      f.tmp = std::string(kLeftoverHead) + std::to_string(::getpid()) + "-" + std::to_string(serial) + "-" + std::to_string(attempt) + ".tmp";
      fd = ops_.openat(f.dirfd, f.tmp.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0666);
      if (fd < 0 && (errno != EEXIST || attempt == 20)) fail("cannot write " + full(f.path));
    }
    f.tmp_made = true;
    if (f.exists) ::fchmod(fd, f.mode);
    return fd;
  }

  // Writes all of `bytes` to the open temporary file of `f`.
  void put(int fd, const Planned& f, std::string_view bytes) {
    const char* p = bytes.data();
    size_t left = bytes.size();
    while (left > 0) {
      const ssize_t n = ops_.write(fd, p, left);
      if (n < 0 && errno == EINTR) continue;
      if (n <= 0) {
        if (n == 0) errno = ENOSPC;
        fail("cannot write " + full(f.path));
      }
      p += n;
      left -= (size_t)n;
    }
  }

  // A hard link to the old file, so a failed rename further on can put it back.
  void keep_backup(Planned& f, int serial) {
    if (!f.exists) return;
    for (int attempt = 0;; ++attempt) {
      f.bak = std::string(kLeftoverHead) + std::to_string(::getpid()) + "-" + std::to_string(serial) + "-" + std::to_string(attempt) + ".bak";
      if (ops_.linkat(f.dirfd, f.name.c_str(), f.dirfd, f.bak.c_str()) == 0) {
        f.bak_made = true;
        return;
      }
      if (errno == EEXIST && attempt < 20) continue;  // a leftover of a killed run
      // A file system without hard links: the old file cannot be restored, the run goes on.
      if (errno == EPERM || errno == EOPNOTSUPP || errno == EMLINK || errno == ENOSYS) return;
      fail("cannot keep a backup of " + full(f.path));
    }
  }

  // Refuses the commit when the file at `path` no longer holds `bytes` (nullopt: absent).
  void require(const std::string& path, const std::optional<std::string>& bytes) {
    const std::vector<std::string> parts = components(path);
    std::string dir;
    for (size_t i = 0; i + 1 < parts.size(); ++i) dir += (i ? "/" : "") + parts[i];
    const int dirfd = open_dir(dir, false);
    struct stat st;
    const bool exists = dirfd >= 0 && ::fstatat(dirfd, parts.back().c_str(), &st, AT_SYMLINK_NOFOLLOW) == 0;
    const bool same = bytes ? exists && S_ISREG(st.st_mode) && (size_t)st.st_size == bytes->size() &&
                                  same_bytes(dirfd, parts.back(), *bytes)
                            : !exists;
    if (!same) throw OutputError(full(path) + " changed while compose ran; nothing was written, run again");
  }

  void rename_in(Planned& f) {
    if (ops_.renameat(f.dirfd, f.tmp.c_str(), f.dirfd, f.name.c_str()) != 0) fail("cannot replace " + full(f.path));
    f.renamed = true;
    f.tmp_made = false;
  }

  // Puts back what the renames replaced and removes every file and directory the commit made.
  void undo(std::vector<Planned>& files) {
    for (auto it = files.rbegin(); it != files.rend(); ++it) {
      Planned& f = *it;
      if (f.renamed) {
        if (f.bak_made) {
          if (ops_.renameat(f.dirfd, f.bak.c_str(), f.dirfd, f.name.c_str()) == 0) f.bak_made = false;
        } else if (!f.exists) {
          ops_.unlinkat(f.dirfd, f.name.c_str(), 0);
        }
      }
      if (f.tmp_made) ops_.unlinkat(f.dirfd, f.tmp.c_str(), 0);
      // A backup whose restore failed stays: it is the only copy of the old bytes.
      if (f.bak_made && !f.renamed) ops_.unlinkat(f.dirfd, f.bak.c_str(), 0);
    }
    for (auto it = made_dirs_.rbegin(); it != made_dirs_.rend(); ++it)
      ops_.unlinkat(it->first, it->second.c_str(), AT_REMOVEDIR);
  }

  void drop_backups(std::vector<Planned>& files) {
    for (auto& f : files)
      if (f.bak_made) ops_.unlinkat(f.dirfd, f.bak.c_str(), 0);
  }

 private:
  [[noreturn]] void fail(const std::string& what) { throw OutputError(what + ": " + errno_text()); }
  std::string full(const std::string& rel) const { return rel.empty() ? root_ : root_ + "/" + rel; }

  std::string root_;
  int rootfd_;
  FileOps& ops_;
  std::map<std::string, int> dirs_;
  std::vector<std::pair<int, std::string>> made_dirs_;
};

}  // namespace

CommitResult OutputSet::commit(const std::string& root, FileOps& ops) const {
  plan();  // refusals of the paths themselves come before the project is created or locked
  ProjectLock lock(root);
  return commit(lock, ops);
}

// Every file's place, and the directories to make, checked to be plain paths.
OutputSet::Plan OutputSet::plan() const {
  Plan plan;
  std::set<std::string> seen;
  for (const auto& f : files_) {
    const std::vector<std::string> parts = components(f.path);
    if (!seen.insert(f.path).second) throw OutputError("output path given twice: " + f.path);
    std::string dir;
    for (size_t i = 0; i + 1 < parts.size(); ++i) dir += (i ? "/" : "") + parts[i];
    plan.files.push_back({std::move(dir), parts.back()});
  }
  for (const auto& d : dirs_) {
    std::string joined;
    for (const auto& part : components(d)) joined += (joined.empty() ? "" : "/") + part;
    plan.dirs.push_back(std::move(joined));
  }
  return plan;
}

CommitResult OutputSet::commit(const ProjectLock& lock, FileOps& ops) const {
  Plan plan = this->plan();
  std::vector<Planned> files;
  for (size_t i = 0; i < files_.size(); ++i) {
    const File& f = files_[i];
    Planned p;
    p.path = f.path;
    p.dir = std::move(plan.files[i].first);
    p.name = std::move(plan.files[i].second);
    p.bytes = f.produce ? nullptr : &f.bytes;
    p.produce = f.produce ? &f.produce : nullptr;
    files.push_back(std::move(p));
  }
  const std::vector<std::string>& dirs = plan.dirs;

  Commit c(lock.root(), lock.fd(), ops);
  for (const auto& d : dirs) c.open_dir(d, false);  // refusals: nothing written yet
  for (auto& f : files) c.inspect(f);

  CommitResult result;
  try {
    for (const auto& d : dirs) c.open_dir(d, true);
    int serial = 0;
    for (auto& f : files)
      if (!f.unchanged) c.write_temp(f, serial++);
    for (const auto& [path, bytes] : unchanged_) c.require(path, bytes);
    serial = 0;
    for (auto& f : files)
      if (!f.unchanged) c.keep_backup(f, serial++);
    for (auto& f : files)
      if (!f.unchanged) c.rename_in(f);
  } catch (...) {
    c.undo(files);
    throw;
  }
  c.drop_backups(files);
  for (const auto& f : files) ++(f.unchanged ? result.unchanged : result.written);
  return result;
}

}  // namespace base
