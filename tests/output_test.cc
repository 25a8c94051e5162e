// What a run leaves in a project when it cannot write, and what a rerun rewrites.
#include <fcntl.h>
#include <sys/stat.h>
#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

#include <fstream>

#include <gtest/gtest.h>

#include "base/output_files.h"
#include "e2e.h"
#include "gen_res/image.h"

using namespace e2e;

namespace {

// One setting row per icon.
Json sample_page(const std::vector<std::string>& icons = {"wifi"}, const std::string& primary = "保存") {
  Json rows = Json::array();
  for (const auto& icon : icons) rows.push_back({{"type", "setting_row"}, {"label", "行 " + icon}, {"icon", icon}});
  Json spec = ubtest::page_spec(800, 480, rows);
  spec["page"]["footer"]["primary"] = primary;
  return spec;
}

// The run, as a user without the right to write where permissions forbid it: root keeps
// its rights unless the override capabilities are dropped.
Outcome run_unprivileged(const Project& p) {
  std::vector<std::string> argv;
  if (::geteuid() == 0) argv = {"/usr/bin/setpriv", "--bounding-set", "-dac_override,-dac_read_search", "--"};
  argv.insert(argv.end(), {COMPOSE_EXE, p.spec.string(), "--project", p.proj().string()});
  ub::ChildResult r = ub::run_captured(argv);
  return {r.status, r.out, r.err};
}

std::vector<std::string> listing(const fs::path& dir) {
  std::vector<std::string> names;
  for (const auto& e : fs::recursive_directory_iterator(dir)) names.push_back(fs::relative(e.path(), dir).string());
  std::sort(names.begin(), names.end());
  return names;
}

}  // namespace

TEST(Output, AnUnwritableDirectoryExitsOneAndLeavesTheProjectAsItWas) {
  for (const char* dir : {"resources/images", "src/logic"}) {
    Project p(sample_page());
    ASSERT_EQ(p.run().status, 0);
    const std::string layout = ub::read_file((p.proj() / "ui/main.json").string());
    const std::vector<std::string> before = listing(p.proj());
    // A new row brings a new picture and a new callback: both folders would be written to.
    p.write(sample_page({"wifi", "bluetooth"}).dump());
    fs::permissions(p.proj() / dir, fs::perms::owner_write | fs::perms::group_write | fs::perms::others_write,
                    fs::perm_options::remove);
    Outcome r = run_unprivileged(p);
    fs::permissions(p.proj() / dir, fs::perms::owner_write, fs::perm_options::add);
    EXPECT_EQ(r.status, 1) << dir;
    EXPECT_EQ(r.err.rfind("compose: error: cannot write " + (p.proj() / dir).string() + "/", 0), 0u) << r.err;
    EXPECT_EQ(r.out, "") << dir;
    EXPECT_EQ(ub::read_file((p.proj() / "ui/main.json").string()), layout) << dir;
    EXPECT_EQ(listing(p.proj()), before) << dir;
  }
}

TEST(Output, ARerunLeavesEqualFilesAloneAndSaysHowMany) {
  Project p(sample_page());
  Outcome first = p.run();
  ASSERT_EQ(first.status, 0) << first.err;
  EXPECT_EQ(first.out.find("未变"), std::string::npos);
  const fs::path picture = p.proj() / "resources/images" / fs::directory_iterator(p.proj() / "resources/images")->path().filename();
  const timespec old_times[2] = {{1000000000, 0}, {1000000000, 0}};
  ASSERT_EQ(::utimensat(AT_FDCWD, picture.c_str(), old_times, 0), 0);

  Outcome second = p.run();
  ASSERT_EQ(second.status, 0) << second.err;
  // The pictures, the layout, the logic file and its base, the data header.
  const size_t files = std::distance(fs::directory_iterator(p.proj() / "resources/images"), fs::directory_iterator()) + 4;
  const std::string layout_line = "  → " + (p.proj() / "ui/main.json").string() + "\n";
  std::string want = first.out;
  want.insert(want.find("\n", want.find("  logic 骨架 → ")), "：未变");
  want.insert(want.find(layout_line) + layout_line.size(),
              "  未变 " + std::to_string(files) + " 个文件（内容相同，未重写）\n");
  EXPECT_EQ(second.out, want);
  struct stat st;
  ASSERT_EQ(::stat(picture.c_str(), &st), 0);
  EXPECT_EQ(st.st_mtim.tv_sec, 1000000000);

  // A changed button text rewrites the layout alone.
  p.write(sample_page({"wifi"}, "确定").dump());
  Outcome third = p.run();
  ASSERT_EQ(third.status, 0) << third.err;
  EXPECT_NE(third.out.find("  未变 " + std::to_string(files - 1) + " "), std::string::npos) << third.out;
}


// A run killed at any moment of its writing leaves at most its own temporary files, which
// the next run into the project removes; nothing else of the project is touched by that.
TEST(Output, TheNextRunRemovesWhatAKilledRunLeft) {
  std::vector<std::string> icons;
  for (const char* icon : {"wifi", "bluetooth", "info", "lock", "user", "home", "search", "settings"})
    for (int i = 0; i < 24; ++i) icons.push_back(icon);  // below the 999 textview ids a page holds
  Project p(sample_page(icons));
  auto leftovers = [&] {
    std::vector<std::string> names;
    for (const auto& e : fs::recursive_directory_iterator(p.proj()))
      if (base::is_commit_leftover(e.path().filename().string())) names.push_back(e.path().string());
    return names;
  };
  fs::create_directories(p.proj() / "ui");
  std::ofstream(p.proj() / "ui" / "notes.tmp") << "mine";
  for (int delay_ms : {5, 20, 40, 80}) {
    const std::string exe = COMPOSE_EXE, spec = p.spec.string(), proj = p.proj().string();
    const pid_t pid = ::fork();
    if (pid == 0) {
      ::execl(exe.c_str(), exe.c_str(), spec.c_str(), "--project", proj.c_str(), "--render", (char*)nullptr);
      ::_exit(127);
    }
    ::usleep((useconds_t)delay_ms * 1000);
    ::kill(pid, SIGKILL);
    int status = 0;
    ::waitpid(pid, &status, 0);
    // What a kill between writing and renaming leaves, should this one have come too early or late.
    std::ofstream(p.proj() / "ui" / (".~compose-" + std::to_string(pid) + "-0-0.tmp")) << "half";
    ASSERT_FALSE(leftovers().empty());
    const Outcome r = p.run();
    ASSERT_EQ(r.status, 0) << r.err;
    EXPECT_EQ(leftovers(), std::vector<std::string>()) << "after a kill at " << delay_ms << " ms";
  }
  EXPECT_EQ(ub::read_file((p.proj() / "ui" / "notes.tmp").string()), "mine");
}

// A run that draws a long preview, and a second run into the same project started while
// the first one draws: the preview left beside the layout is that layout's. The second run
// waits until the first has drawn, as a run keeps the project until its preview is made.
TEST(Output, APreviewIsOfTheLayoutBesideIt) {
  Project a(sample_page(std::vector<std::string>(240, "wifi")));  // within the textview ids
  const std::string proj = a.proj().string();
  Json other = sample_page({"info"}, "确定");
  other["page"]["title"] = "另一页";
  const fs::path spec_b = a.root / "b.json";
  ub::write_file_atomic(spec_b.string(), other.dump());
  const std::string font = ubtest::source_dir() + "/components/fonts/fonts/torvo-hans-common.ttf";
  auto start = [&](const std::string& spec, const char* render) {
    const pid_t pid = ::fork();
    if (pid == 0) {
      const int null = ::open("/dev/null", O_WRONLY);
      ::dup2(null, 1);
      ::execl(COMPOSE_EXE, COMPOSE_EXE, spec.c_str(), "--project", proj.c_str(), render, (char*)nullptr);
      ::_exit(127);
    }
    return pid;
  };
  auto finish = [](pid_t pid) {
    int status = 0;
    ::waitpid(pid, &status, 0);
    return WIFEXITED(status) && WEXITSTATUS(status) == 0;
  };
  {
    const pid_t first = start(a.spec.string(), "--render-full");
    int status = 0;
    while (!fs::exists(a.proj() / "ui/main.json")) {  // committed: drawing now
      ASSERT_EQ(::waitpid(first, &status, WNOHANG), 0) << "the first run ended without writing its layout";
      ::usleep(2000);
    }
    const pid_t second = start(spec_b.string(), "--render");
    ASSERT_TRUE(finish(first));
    ASSERT_TRUE(finish(second));
    const std::string again = (a.root / "again.png").string();
    const Outcome r = compose({"json2img", proj + "/ui/main.json", "--out", again, "--font", font});
    ASSERT_EQ(r.status, 0) << r.err;
    EXPECT_EQ(gen_res::load_png(proj + "/ui/main.render.png").px, gen_res::load_png(again).px);
  }
}
