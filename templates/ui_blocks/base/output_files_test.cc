#include "base/output_files.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <sys/wait.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <chrono>
#include <filesystem>
#include <fstream>
#include <map>
#include <thread>

#include <gtest/gtest.h>

#include "base/values.h"
#include "test_support.h"

namespace fs = std::filesystem;

namespace {

// Everything below a directory: files with their bytes, directories, and link targets.
std::map<std::string, std::string> tree(const fs::path& root) {
  std::map<std::string, std::string> t;
  for (auto it = fs::recursive_directory_iterator(root); it != fs::recursive_directory_iterator(); ++it) {
    const std::string rel = fs::relative(it->path(), root).string();
    if (it->is_symlink()) {
      t[rel] = "-> " + fs::read_symlink(it->path()).string();
    } else if (it->is_directory()) {
      t[rel] = "<dir>";
    } else {
      t[rel] = ub::read_file(it->path().string());
    }
  }
  return t;
}

void put(const fs::path& p, const std::string& text) {
  fs::create_directories(p.parent_path());
  std::ofstream(p, std::ios::binary) << text;
}

struct OutputFilesTest : ::testing::Test {
  fs::path dir = ubtest::temp_dir("outfiles");
  fs::path root = dir / "proj";
  void SetUp() override { fs::create_directories(root); }
  void TearDown() override { fs::remove_all(dir); }
};

TEST_F(OutputFilesTest, RefusesPathsThatLeaveTheProjectBeforeWritingAnything) {
  for (const std::string bad : {"", "/etc/x", "../x", "ui/../../x", "./ui/a.json", "ui//a.json", "ui/", "ui/."}) {
    base::OutputSet set;
    set.add("ui/main.json", "{}");
    set.add(bad, "x");
    EXPECT_THROW(set.commit(root.string()), base::OutputError) << bad;
    EXPECT_TRUE(tree(dir) == (std::map<std::string, std::string>{{"proj", "<dir>"}})) << bad;
  }
  // A name given twice, and one longer than the file system holds, are refused the same way.
  for (const std::string& bad : {std::string("ui/main.json"), "resources/images/" + std::string(300, 'a') + ".png"}) {
    base::OutputSet set;
    set.add("ui/main.json", "{}");
    set.add(bad, "x");
    EXPECT_THROW(set.commit(root.string()), base::OutputError) << bad;
    EXPECT_FALSE(fs::exists(root / "ui")) << bad;
  }
}

TEST_F(OutputFilesTest, NeverWritesThroughASymbolicLink) {
  put(dir / "elsewhere" / "victim.png", "keep");
  fs::create_directories(root / "resources" / "images");
  fs::create_symlink(dir / "elsewhere" / "victim.png", root / "resources" / "images" / "a.png");
  const auto before = tree(dir);
  base::OutputSet set;
  set.add("ui/main.json", "{}");
  set.add("resources/images/a.png", "new");
  try {
    set.commit(root.string());
    FAIL() << "a planted link was written through";
  } catch (const base::OutputError& e) {
    EXPECT_NE(std::string(e.what()).find("resources/images/a.png is a symbolic link"), std::string::npos) << e.what();
  }
  EXPECT_EQ(tree(dir), before);

  // A linked directory along the way is refused the same way, as is a directory in a file's place.
  fs::remove_all(root / "resources");
  fs::create_directory_symlink(dir / "elsewhere", root / "resources");
  EXPECT_THROW(set.commit(root.string()), base::OutputError);
  fs::remove(root / "resources");
  fs::create_directories(root / "resources" / "images" / "a.png");
  EXPECT_THROW(set.commit(root.string()), base::OutputError);
  EXPECT_FALSE(fs::exists(root / "ui"));
}

TEST_F(OutputFilesTest, EqualBytesAreLeftUntouchedAndCounted) {
  put(root / "ui" / "main.json", "same");
  put(root / "src" / "logic" / "mainLogic.cc", "old");
  const timespec old_times[2] = {{1000000000, 0}, {1000000000, 0}};
  for (const char* p : {"ui/main.json", "src/logic/mainLogic.cc"})
    ASSERT_EQ(::utimensat(AT_FDCWD, (root / p).c_str(), old_times, 0), 0);
  ::chmod((root / "src" / "logic" / "mainLogic.cc").c_str(), 0600);

  base::OutputSet set;
  set.add("ui/main.json", "same");
  set.add("src/logic/mainLogic.cc", "new");
  set.add("resources/images/a.png", "png");
  const base::CommitResult r = set.commit(root.string());
  EXPECT_EQ(r.unchanged, 1);
  EXPECT_EQ(r.written, 2);
  struct stat st;
  ASSERT_EQ(::stat((root / "ui" / "main.json").c_str(), &st), 0);
  EXPECT_EQ(st.st_mtim.tv_sec, 1000000000);
  ASSERT_EQ(::stat((root / "src" / "logic" / "mainLogic.cc").c_str(), &st), 0);
  EXPECT_NE(st.st_mtim.tv_sec, 1000000000);
  EXPECT_EQ(st.st_mode & 0777, 0600u) << "a replaced file keeps its permissions";
  // Nothing but the outputs is left: no temporary, no backup.
  EXPECT_EQ(tree(root).size(), 8u);
  EXPECT_EQ(tree(root)["resources/images/a.png"], "png");
}

// Fails the k-th system call of a commit (counting from 1); writes at most a few bytes
// a call, so the write loop is exercised too.
struct FailingOps : base::FileOps {
  int fail_at = 0, calls = 0;
  bool hit() { return ++calls == fail_at; }
  int openat(int d, const char* n, int f, mode_t m) override { return hit() ? (errno = EACCES, -1) : FileOps::openat(d, n, f, m); }
  ssize_t write(int fd, const void* p, size_t n) override {
    return hit() ? (errno = ENOSPC, -1) : FileOps::write(fd, p, std::min<size_t>(n, 5));
  }
  int close(int fd) override {
    const int r = FileOps::close(fd);
    return hit() ? (errno = EIO, -1) : r;
  }
  int mkdirat(int d, const char* n, mode_t m) override { return hit() ? (errno = EROFS, -1) : FileOps::mkdirat(d, n, m); }
  int linkat(int a, const char* b, int c, const char* d) override { return hit() ? (errno = EIO, -1) : FileOps::linkat(a, b, c, d); }
  int renameat(int a, const char* b, int c, const char* d) override {
    return hit() ? (errno = EIO, -1) : FileOps::renameat(a, b, c, d);
  }
  int unlinkat(int d, const char* n, int f) override { return hit() ? (errno = EIO, -1) : FileOps::unlinkat(d, n, f); }
};

TEST_F(OutputFilesTest, AFailureAtAnyCallLeavesTheProjectAsItWas) {
  auto start = [&] {
    fs::remove_all(root);
    put(root / "ui" / "main.json", "old layout");
    put(root / "resources" / "images" / "kept.png", "kept");
    put(root / "resources" / "images" / "b.png", "old b");
    put(root / "ui" / "same.json", "same, streamed");
    return tree(root);
  };
  base::OutputSet set;
  set.add("ui/main.json", "new layout, longer than a few bytes");
  set.add("resources/images/a.png", "new a");
  set.add("resources/images/b.png", "new b");
  set.add("resources/images/kept.png", "kept");
  set.add("src/logic/mainLogic.cc", "logic");
  set.add("src/logic/empty.cc", "");
  set.add_directory("ui/800x480");
  set.add_stream("ui/streamed.json", [](const base::Sink& put) { put("written "); put(""); put("in pieces"); });
  set.add_stream("ui/same.json", [](const base::Sink& put) { put("same, "); put("streamed"); });
  std::map<std::string, std::string> want = start();
  want["ui/streamed.json"] = "written in pieces";
  want["ui/main.json"] = "new layout, longer than a few bytes";
  want["resources/images/a.png"] = "new a";
  want["resources/images/b.png"] = "new b";
  want["src"] = want["src/logic"] = want["ui/800x480"] = "<dir>";
  want["src/logic/mainLogic.cc"] = "logic";
  want["src/logic/empty.cc"] = "";

  int failures = 0;
  for (int k = 1;; ++k) {
    ASSERT_LT(k, 500);
    const auto before = start();
    FailingOps ops;
    ops.fail_at = k;
    try {
      const base::CommitResult r = set.commit(root.string(), ops);
      EXPECT_EQ(r.written, 6);
      EXPECT_EQ(r.unchanged, 2);
      auto after = tree(root);
      // Only removing a backup after every rename succeeded may fail unnoticed; it leaves the backup.
      std::erase_if(after, [](const auto& kv) { return kv.first.ends_with(".bak"); });
      ASSERT_EQ(after, want) << "after a failure at call " << k;
      if (k > ops.calls) break;
    } catch (const base::OutputError&) {
      ++failures;
      ASSERT_EQ(tree(root), before) << "after a failure at call " << k;
    }
  }
  EXPECT_GT(failures, 20);
}

TEST_F(OutputFilesTest, AStreamedFileIsComparedWholeAndAThrowingProducerLeavesNothing) {
  put(root / "ui" / "main.json", "old");
  const auto before = tree(root);
  for (const char* bytes : {"ol", "old!", "new"}) {  // a prefix, a longer text, other bytes: rewritten
    base::OutputSet set;
    set.add_stream("ui/main.json", [&](const base::Sink& put) {  // in two pieces: "o" matches, then the rest
      put(std::string_view(bytes).substr(0, 1));
      put(std::string_view(bytes).substr(1));
    });
    EXPECT_EQ(set.commit(root.string()).written, 1) << bytes;
    EXPECT_EQ(tree(root)["ui/main.json"], bytes);
    put(root / "ui" / "main.json", "old");
  }
  base::OutputSet set;
  set.add("resources/images/a.png", "png");
  set.add_stream("ui/main.json", [](const base::Sink& put) {
    put("half");
    throw std::runtime_error("refused");
  });
  EXPECT_THROW(set.commit(root.string()), std::runtime_error);
  EXPECT_EQ(tree(root), before);
}

TEST_F(OutputFilesTest, AFileChangedSinceItWasReadIsNotWrittenOver) {
  put(root / "src" / "a.cc", "mine");
  {
    base::OutputSet set;
    set.add("src/a.cc", "merged");
    set.require_unchanged("src/a.cc", "mine");
    set.add("base/a.cc", "base");
    set.require_unchanged("base/a.cc", std::nullopt);
    EXPECT_EQ(set.commit(root.string()).written, 2);
  }
  // Saved again by its author while the run was making its files: the run writes nothing.
  put(root / "src" / "a.cc", "mine");
  base::OutputSet set;
  set.add_stream("ui/main.json", [&](const base::Sink& sink) {
    put(root / "src" / "a.cc", "newer");
    sink("{}");
  });
  set.add("src/a.cc", "merged");
  set.require_unchanged("src/a.cc", "mine");
  EXPECT_THROW(set.commit(root.string()), base::OutputError);
  EXPECT_EQ(tree(root), (std::map<std::string, std::string>{
                            {"base", "<dir>"}, {"base/a.cc", "base"}, {"src", "<dir>"}, {"src/a.cc", "newer"}}));
  // A file that was missing when read and exists now has changed too.
  base::OutputSet again;
  again.add("base/b.cc", "b");
  again.require_unchanged("base/a.cc", std::nullopt);
  EXPECT_THROW(again.commit(root.string()), base::OutputError);
  EXPECT_FALSE(fs::exists(root / "base" / "b.cc"));
}

TEST_F(OutputFilesTest, ACommitWaitsForTheProjectLock) {
  base::OutputSet set;
  set.add("ui/main.json", "{}");
  std::atomic<bool> done = false;
  std::thread run;
  {
    base::ProjectLock held(root.string());
    run = std::thread([&] {
      set.commit(root.string());
      done = true;
    });
    std::this_thread::sleep_for(std::chrono::milliseconds(200));
    EXPECT_FALSE(done);
    EXPECT_FALSE(fs::exists(root / "ui" / "main.json"));
  }
  run.join();
  EXPECT_TRUE(done);
  EXPECT_TRUE(fs::exists(root / "ui" / "main.json"));
}

}  // namespace

namespace {

// The id of a process that has ended.
pid_t ended_process() {
  const pid_t pid = ::fork();
  if (pid == 0) ::_exit(0);
  int status = 0;
  ::waitpid(pid, &status, 0);
  return pid;
}

}  // namespace

TEST(CommitLeftovers, OnlyOurOwnNamesAreRecognised) {
  long pid = 0;
  EXPECT_TRUE(base::is_commit_leftover(".~compose-4321-0-0.tmp", &pid));
  EXPECT_EQ(pid, 4321);
  EXPECT_TRUE(base::is_commit_leftover(".~compose-7-12-3.bak"));
  for (const char* other : {".~4321-0-0.tmp", ".~compose-4321-0-0.tmp~", ".~compose-4321-0.tmp", ".~compose--0-0.tmp",
                            ".~compose-43a1-0-0.tmp", "x.~compose-1-0-0.tmp", ".~compose-1-0-0.png",
                            ".~compose-1234567890123-0-0.tmp", "main.json"})
    EXPECT_FALSE(base::is_commit_leftover(other)) << other;
}

// A run killed between writing its temporary files and renaming them leaves them behind;
// the next commit into the project removes them, but not those of a process still running,
// nor anything that only looks similar.
TEST_F(OutputFilesTest, LeftoversOfAKilledRunAreRemovedByTheNext) {
  const std::string dead = std::to_string(ended_process()), alive = std::to_string(::getppid());
  const std::vector<std::string> removed = {"ui/.~compose-" + dead + "-0-0.tmp", "ui/.~compose-" + dead + "-1-0.bak",
                                            "resources/images/.~compose-" + dead + "-3-2.tmp",
                                            ".~compose-" + dead + "-0-0.tmp"};
  const std::vector<std::string> kept = {"ui/.~compose-" + alive + "-0-0.tmp", "ui/.~" + dead + "-0-0.tmp",
                                         "ui/notes.tmp", "other/.~compose-" + dead + "-0-0.tmp"};
  for (const auto& f : removed) put(root / f, "half");
  for (const auto& f : kept) put(root / f, "keep");
  base::OutputSet set;
  set.add("ui/main.json", "{}");
  set.add("resources/images/a.png", "png");
  set.commit(root.string());
  for (const auto& f : removed) EXPECT_FALSE(fs::exists(root / f)) << f;
  for (const auto& f : kept) EXPECT_EQ(ub::read_file((root / f).string()), "keep") << f;
  EXPECT_EQ(ub::read_file((root / "ui/main.json").string()), "{}");
}

// A commit under a lock the caller holds keeps it: another commit waits until the caller
// has done what it does with the files (compose draws the preview then).
TEST_F(OutputFilesTest, ACommitUnderAHeldLockKeepsItUntilReleased) {
  std::atomic<bool> done = false;
  std::thread other;
  {
    base::ProjectLock held(root.string() + "/");
    EXPECT_EQ(held.root(), root.string());
    base::OutputSet mine;
    mine.add("ui/main.json", "mine");
    EXPECT_EQ(mine.commit(held).written, 1);
    other = std::thread([&] {
      base::OutputSet theirs;
      theirs.add("ui/main.json", "theirs");
      theirs.commit(root.string());
      done = true;
    });
    std::this_thread::sleep_for(std::chrono::milliseconds(200));
    EXPECT_FALSE(done);
    EXPECT_EQ(ub::read_file((root / "ui/main.json").string()), "mine");
  }
  other.join();
  EXPECT_EQ(ub::read_file((root / "ui/main.json").string()), "theirs");
}
