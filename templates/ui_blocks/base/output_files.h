// The files of one run, written into a project together: every path is checked to stay
// inside the project before the first byte is written, each file goes to a temporary file
// in its own directory and all are renamed into place at the end, under a lock on the
// project. A failure leaves the project as it was; a file whose bytes are already on disk
// is not touched.
#pragma once

#include <sys/types.h>

#include <functional>
#include <optional>
#include <stdexcept>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace base {

// A refused or failed commit. Nothing of the run is left in the project.
struct OutputError : std::runtime_error {
  using std::runtime_error::runtime_error;
};

// The system calls a commit makes, so a test can make any one of them fail.
// Each returns what the system call returns (-1 with errno set on failure).
class FileOps {
 public:
  virtual ~FileOps() = default;
  virtual int openat(int dir, const char* name, int flags, mode_t mode);
  virtual ssize_t write(int fd, const void* data, size_t n);
  virtual int close(int fd);
  virtual int mkdirat(int dir, const char* name, mode_t mode);
  virtual int linkat(int from_dir, const char* from, int to_dir, const char* to);
  virtual int renameat(int from_dir, const char* from, int to_dir, const char* to);
  virtual int unlinkat(int dir, const char* name, int flags);
};

FileOps& system_file_ops();

// An exclusive lock on a project directory (flock on the directory itself), created if
// missing; held until destruction. Blocks while another run holds it.
class ProjectLock {
 public:
  explicit ProjectLock(const std::string& root);
  ~ProjectLock();
  ProjectLock(const ProjectLock&) = delete;
  ProjectLock& operator=(const ProjectLock&) = delete;
  int fd() const { return fd_; }
  // The directory locked, without a trailing '/'.
  const std::string& root() const { return root_; }

 private:
  std::string root_;
  int fd_ = -1;
};

// Temporary and backup files of a commit are named ".~compose-<pid>-<n>-<attempt>.tmp" (and
// ".bak"). True for such a name; pid gets the process that made it.
bool is_commit_leftover(std::string_view name, long* pid = nullptr);

struct CommitResult {
  int written = 0;    // files created or replaced
  int unchanged = 0;  // files whose bytes were already on disk, left untouched
};

// What writes a file's bytes at commit time, handing them to the sink in pieces.
using Sink = std::function<void(std::string_view)>;
using Producer = std::function<void(const Sink&)>;

class OutputSet {
 public:
  // `path` is relative to the project root, with '/' between components.
  void add(std::string path, std::string bytes);
  // A file whose bytes `produce` writes straight into its temporary file during the
  // commit, so they are never held whole in memory. Bytes equal to the file on disk
  // leave it untouched, as with add(); a producer that throws fails the commit.
  void add_stream(std::string path, Producer produce);
  // A directory that must exist after the commit, even when no file goes into it.
  void add_directory(std::string path);
  // A file read before the commit that must be as it was read (`bytes`; nullopt: absent)
  // when the files are renamed into place, or the commit fails and writes nothing: what
  // was merged from it is never written over a newer version.
  void require_unchanged(std::string path, std::optional<std::string> bytes);
  size_t size() const { return files_.size(); }

  // Writes every file into the project at `root` (created if missing), under its lock.
  // Throws OutputError, leaving the project as it was, when a path is not a plain path
  // inside the project (absolute, "..", ".", empty components, a symbolic link or a
  // non-directory along the way, a non-regular file at the end, a name given twice)
  // or when any write fails. Temporary and backup files that a killed commit left in the
  // directories this one opens are removed first (only those of processes that are gone).
  CommitResult commit(const std::string& root, FileOps& ops = system_file_ops()) const;
  // The same under a lock the caller holds, so that what it does next with the files
  // (drawing a preview of them, checking them) sees them as this commit left them.
  CommitResult commit(const ProjectLock& lock, FileOps& ops = system_file_ops()) const;

 private:
  struct File {
    std::string path, bytes;
    Producer produce;  // set for a streamed file
  };
  struct Plan {
    std::vector<std::pair<std::string, std::string>> files;  // directory and name of each file
    std::vector<std::string> dirs;
  };
  Plan plan() const;
  std::vector<File> files_;
  std::vector<std::string> dirs_;
  std::vector<std::pair<std::string, std::optional<std::string>>> unchanged_;
};

}  // namespace base
