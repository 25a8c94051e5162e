// compose build as a product team meets it: a project file of several pages at several
// sizes, built in parallel and again, with a page refused, pictures pruned and a clash of
// picture names between pages.
#include <gtest/gtest.h>
#include <sys/stat.h>

#include <map>
#include <regex>

#include "driver/build_state.h"
#include "gen_res/image.h"
#include "e2e.h"

using namespace e2e;

namespace {

// The example pages of the repository as the pages of one product.
struct BuildProject {
  fs::path root = ubtest::temp_dir("build");
  BuildProject() {
    fs::create_directories(root / "pages");
    for (const char* name : {"settings_800x480", "controls_480x272", "status_320x240", "dashboard_1024x600"})
      fs::copy_file(ubtest::source_dir() + "/examples/" + name + ".json", root / "pages" / (std::string(name) + ".json"));
    write_project(R"({"pages": [
      {"spec": "pages/settings_800x480.json", "page": "settings", "sizes": ["480x272", "800x480"]},
      {"spec": "pages/controls_480x272.json", "page": "controls"},
      {"spec": "pages/status_320x240.json", "page": "status", "sizes": ["800x480", "1024x600"]},
      {"spec": "pages/dashboard_1024x600.json", "page": "dashboard"}
    ]})");
  }
  ~BuildProject() { fs::remove_all(root); }
  void write_project(const std::string& text) const { ub::write_file_atomic((root / "compose.json").string(), text); }
  Outcome build(std::vector<std::string> extra = {}) const {
    std::vector<std::string> args = {"build", root.string(), "--no-check"};
    args.insert(args.end(), extra.begin(), extra.end());
    return compose(args);
  }
  Json spec(const std::string& name) const { return Json::parse(ub::read_file((root / "pages" / name).string())); }
  void put_spec(const std::string& name, const Json& s) const {
    ub::write_file_atomic((root / "pages" / name).string(), s.dump(2));
    touch(root / "pages" / name);
  }
  // A time later than every file written so far, whatever the clock's resolution.
  static void touch(const fs::path& p) {
    fs::last_write_time(p, fs::file_time_type::clock::now() + std::chrono::seconds(2));
  }
};

// Every file the build writes (all but the tool folder and the specs), with its bytes.
std::map<std::string, std::string> tree(const fs::path& root) {
  std::map<std::string, std::string> out;
  for (auto it = fs::recursive_directory_iterator(root); it != fs::recursive_directory_iterator(); ++it) {
    const std::string rel = it->path().lexically_relative(root).string();
    if (rel == ".compose" || rel == "pages") it.disable_recursion_pending();
    else if (it->is_regular_file()) out[rel] = ub::read_file(it->path().string());
  }
  return out;
}

std::map<std::string, fs::file_time_type> times(const fs::path& root) {
  std::map<std::string, fs::file_time_type> out;
  for (const auto& e : fs::recursive_directory_iterator(root))
    if (e.is_regular_file()) out[e.path().lexically_relative(root).string()] = e.last_write_time();
  return out;
}

// The pages the summary table lists as composed, in order.
std::vector<std::string> composed(const std::string& out) {
  std::vector<std::string> pages;
  static const std::regex row(R"(^(\w+) +(\d+x\d+) +\d+ +\d+ +\d+ +[0-9.]+ s$)");
  const size_t at = out.find("-- summary --\n");
  std::istringstream in(at == std::string::npos ? "" : out.substr(at));
  for (std::string line; std::getline(in, line);) {
    std::smatch m;
    if (std::regex_match(line, m, row) && (pages.empty() || pages.back() != m[1].str())) pages.push_back(m[1]);
  }
  return pages;
}

}  // namespace

TEST(BuildProjectFile, ErrorsNameTheFileAndThePlaceAndWriteNothing) {
  BuildProject p;
  const std::string file = (p.root / "compose.json").string();
  const std::vector<std::pair<std::string, std::string>> cases = {  // project file, start of the message
      {R"({"pages": [{"spec": "pages/status_320x240.json"},)", "malformed JSON in " + file + ": "},
      {R"({"pages": [{"spec": "pages/nope.json", "page": "a"}]})", file + ": pages[0].spec: no such file: pages/nope.json"},
      {R"({"pages": [{"spec": "pages/status_320x240.json"}, {"spec": "pages/controls_480x272.json"}]})",
       file + ": pages[1]: page name 'main' (the default) is taken by pages[0]"},
      {R"({"pages": [{"spec": "pages/status_320x240.json", "page": "9lives"}]})", file + ": pages[0].page: '9lives' is not an identifier"},
      {R"({"pages": [{"spec": "pages/status_320x240.json", "sises": ["800x480"]}]})",
       file + ": pages[0]: unknown key 'sises' (did you mean \"sizes\"?)"},
      {R"({"pages": [{"spec": "pages/status_320x240.json"}], "theme": "theme/none.json"})", file + ": theme: no such file: theme/none.json"},
      {R"({"pages": [{"spec": "pages/status_320x240.json", "sizes": ["480x272", "800x480"]}], "ui_layout": "flat"})",
       file + ": pages[0].sizes: several sizes need ui/<W>x<H>/ folders"},
  };
  for (const auto& [text, head] : cases) {
    p.write_project(text);
    Outcome r = p.build();
    EXPECT_EQ(r.status, 1) << text;
    EXPECT_EQ(r.err.rfind("compose: error: " + head, 0), 0u) << r.err;
    EXPECT_FALSE(fs::exists(p.root / "ui")) << text;
    EXPECT_FALSE(fs::exists(p.root / "resources")) << text;
  }
  // The folder without a project file, and a theme that is no mapping.
  Outcome none = compose({"build", (p.root / "pages").string()});
  EXPECT_EQ(none.status, 1);
  EXPECT_NE(none.err.find("no project file " + (p.root / "pages/compose.json").string()), std::string::npos);
  fs::create_directories(p.root / "theme");
  ub::write_file_atomic((p.root / "theme/dark.json").string(), "[1]");
  p.write_project(R"({"pages": [{"spec": "pages/status_320x240.json"}], "theme": "theme/dark.json"})");
  EXPECT_NE(p.build().err.find(": theme: theme/dark.json: expected a mapping"), std::string::npos);
}

TEST(Build, ParallelAndSerialBuildsWriteTheSameTree) {
  BuildProject serial, parallel;
  Outcome a = serial.build({"-j", "1"});
  Outcome b = parallel.build({"-j4"});
  ASSERT_EQ(a.status, 0) << a.err;
  ASSERT_EQ(b.status, 0) << b.err;
  const auto ta = tree(serial.root), tb = tree(parallel.root);
  EXPECT_EQ(ta.size(), tb.size());
  for (const auto& [rel, bytes] : ta) {
    auto it = tb.find(rel);
    ASSERT_NE(it, tb.end()) << rel;
    EXPECT_TRUE(it->second == bytes) << rel << " differs";
  }
  // Several sizes go to one folder each, and the summary lists every page at every size.
  EXPECT_TRUE(fs::exists(serial.root / "ui/480x272/settings.json"));
  EXPECT_TRUE(fs::exists(serial.root / "ui/1024x600/status.json"));
  EXPECT_TRUE(fs::exists(serial.root / "ui/1024x600/dashboard.json"));
  EXPECT_TRUE(fs::exists(serial.root / "src/logic/statusLogic.cc"));
  EXPECT_EQ(composed(a.out), (std::vector<std::string>{"settings", "controls", "status", "dashboard"})) << a.out;
  EXPECT_NE(a.out.find("4 pages, 6 layouts: 4 composed, 0 up to date"), std::string::npos) << a.out;
}

TEST(Build, OneSizedProjectIsFlatAndSingleRunsAgree) {
  BuildProject p;
  p.write_project(R"({"pages": [{"spec": "pages/controls_480x272.json", "page": "controls"},
                                {"spec": "pages/status_320x240.json", "page": "status", "sizes": ["480x272"]}]})");
  ASSERT_EQ(p.build().status, 0);
  // What a single run of the same page writes, byte for byte.
  const fs::path single = p.root / "single";
  ASSERT_EQ(compose({(p.root / "pages/controls_480x272.json").string(), "--project", single.string(), "--page", "controls"}).status, 0);
  EXPECT_EQ(ub::read_file((p.root / "ui/controls.json").string()), ub::read_file((single / "ui/controls.json").string()));
  EXPECT_EQ(ub::read_file((p.root / "src/logic/controlsLogic.cc").string()),
            ub::read_file((single / "src/logic/controlsLogic.cc").string()));
  EXPECT_EQ(Json::parse(ub::read_file((p.root / "ui/status.json").string()))["resolution"],
            Json::parse(R"({"width": 480, "height": 272})"));
}

TEST(Build, SecondBuildDoesNothingAndOneTouchedSpecRecomposesOnePage) {
  BuildProject p;
  ASSERT_EQ(p.build().status, 0);
  const auto before = times(p.root);
  Outcome again = p.build();
  ASSERT_EQ(again.status, 0) << again.err;
  EXPECT_EQ(composed(again.out), std::vector<std::string>{});
  EXPECT_TRUE(std::regex_search(again.out, std::regex("\nsettings +480x272 +up to date\n"))) << again.out;
  EXPECT_NE(again.out.find("0 composed, 4 up to date"), std::string::npos);
  EXPECT_EQ(times(p.root), before);  // not one file rewritten, the tool's own state included

  BuildProject::touch(p.root / "pages/status_320x240.json");
  Outcome touched = p.build();
  ASSERT_EQ(touched.status, 0) << touched.err;
  EXPECT_EQ(composed(touched.out), std::vector<std::string>{"status"}) << touched.out;
  EXPECT_EQ(fs::last_write_time(p.root / "ui/480x272/settings.json"), before.at("ui/480x272/settings.json"));

  // A page whose layout was removed is composed again; --force composes every page.
  fs::remove(p.root / "ui/1024x600/dashboard.json");
  EXPECT_EQ(composed(p.build().out), std::vector<std::string>{"dashboard"});
  EXPECT_EQ(composed(p.build({"--force"}).out).size(), 4u);
}

TEST(Build, RefusedPageRefusesTheBuildAndLeavesEveryPageAsItWas) {
  BuildProject p;
  ASSERT_EQ(p.build().status, 0);
  const auto before = tree(p.root);
  // One page changes for the better, another is refused at one of its sizes.
  Json settings = p.spec("settings_800x480.json");
  settings["page"]["title"] = "设置 2";
  p.put_spec("settings_800x480.json", settings);
  Json status = p.spec("status_320x240.json");
  status["page"].erase("footer");
  p.put_spec("status_320x240.json", status);
  Outcome r = p.build({"-j", "2"});
  EXPECT_EQ(r.status, 1);
  EXPECT_NE(r.err.find("[X] 缺 bottom_actions（底部固定带必须有，否则视口高度没法定）\n"
                       "  in page status at 800x480 (pages/status_320x240.json)\n"),
            std::string::npos)
      << r.err;
  EXPECT_NE(r.err.find("compose build: 1 of 4 pages refused the build; nothing was written\n"), std::string::npos);
  EXPECT_TRUE(tree(p.root) == before);
  EXPECT_FALSE(fs::exists(p.root / ".compose/stage"));
  // Mended, the build writes both pages.
  status["page"]["footer"] = {{"primary", "好"}};
  p.put_spec("status_320x240.json", status);
  Outcome ok = p.build();
  ASSERT_EQ(ok.status, 0) << ok.err;
  EXPECT_EQ(composed(ok.out), (std::vector<std::string>{"settings", "status"}));
  EXPECT_NE(ub::read_file((p.root / "ui/800x480/settings.json").string()).find("设置 2"), std::string::npos);
}

TEST(Build, PruneRemovesOnlyTheToolsPicturesThatNoLayoutNames) {
  BuildProject p;
  ASSERT_EQ(p.build().status, 0);
  const fs::path images = p.root / "resources/images";
  ub::write_file_atomic((images / "logo_by_hand.png").string(), "not the tool's");
  // The controls page loses its card: pictures only it named become orphans.
  Json controls = p.spec("controls_480x272.json");
  controls["page"]["blocks"] = Json::array({controls["page"]["blocks"][0]});
  p.put_spec("controls_480x272.json", controls);
  ASSERT_EQ(p.build().status, 0);
  ASSERT_TRUE(fs::exists(images / "card_448x132.png"));  // kept until asked
  // A picture the tool wrote and someone changed since is no longer the tool's.
  ub::write_file_atomic((images / "cb_16_off.png").string(), "edited");

  Outcome r = p.build({"--prune"});
  ASSERT_EQ(r.status, 0) << r.err;
  EXPECT_NE(r.out.find("pruned 2 pictures that no layout names: card_448x132.png, cb_16_on.png\n"), std::string::npos)
      << r.out;
  EXPECT_FALSE(fs::exists(images / "card_448x132.png"));
  EXPECT_TRUE(fs::exists(images / "logo_by_hand.png"));
  EXPECT_TRUE(fs::exists(images / "cb_16_off.png"));
  // Every picture a layout names is still there.
  Outcome check = compose({"check_all", p.root.string()});
  EXPECT_NE(check.out.find("[OK] #21 "), std::string::npos) << check.out;
  EXPECT_NE(p.build({"--prune"}).out.find("pruned 0 pictures"), std::string::npos);
}

TEST(Build, PagesWithDifferentPicturesOfOneNameKeepTheirOwn) {
  BuildProject p;
  p.write_project(R"({"pages": [{"spec": "pages/controls_480x272.json", "page": "controls"},
                                {"spec": "pages/settings_800x480.json", "page": "settings", "sizes": ["480x272"]}]})");
  ASSERT_EQ(p.build().status, 0);
  // The state says the controls page drew a different picture under a name both pages
  // use: as if an earlier page's picture of that name had other pixels.
  const std::string state_path = (p.root / ".compose/build.json").string();
  Json state = Json::parse(ub::read_file(state_path));
  std::string name;
  for (auto& [pic, digest] : state["pages"]["controls"]["pictures"].items())
    if (state["pages"]["settings"]["pictures"].contains(pic)) name = pic;
  ASSERT_FALSE(name.empty()) << "the pages share no picture";
  state["pages"]["controls"]["pictures"][name] = "0000000000000000";
  ub::write_file_atomic(state_path, ub::dump_layout(state));
  const std::string original = ub::read_file((p.root / "resources/images" / name).string());

  BuildProject::touch(p.root / "pages/settings_800x480.json");
  Outcome r = p.build();
  ASSERT_EQ(r.status, 0) << r.err;
  const std::string renamed = name.substr(0, name.size() - 4) + "_2.png";
  EXPECT_NE(r.out.find("  [NOTE] picture " + name + " of page settings differs from page controls's of that name → "
                       "written as " + renamed),
            std::string::npos)
      << r.out;
  const std::string layout = ub::read_file((p.root / "ui/settings.json").string());
  EXPECT_NE(layout.find("\"images/" + renamed + "\""), std::string::npos);
  EXPECT_EQ(layout.find("\"images/" + name + "\""), std::string::npos);
  EXPECT_EQ(ub::read_file((p.root / "resources/images" / renamed).string()), original);
  EXPECT_NE(ub::read_file((p.root / "ui/controls.json").string()).find("\"images/" + name + "\""), std::string::npos);
}

TEST(Depfile, NamesTheLayoutAndEveryInputRead) {
  const fs::path root = ubtest::temp_dir("dep");
  const fs::path dep = root / "deps dir" / "page #1.d";  // blanks and '#' are escaped
  Outcome r = compose({ubtest::source_dir() + "/examples/settings_800x480.json", "--project", (root / "p").string(),
                       "--depfile", dep.string()});
  ASSERT_EQ(r.status, 0) << r.err;
  const std::string text = ub::read_file(dep.string());
  const std::string repo = ubtest::source_dir();
  // The data header is an output as well; the logic file, the author's to edit, is not.
  EXPECT_EQ(text.rfind((root / "p/ui/main.json").string() + " " + (root / "p/src/logic/mainData.h").string() + ": \\\n  " +
                           repo + "/examples/settings_800x480.json \\\n",
                       0),
            0u)
      << text;
  for (const char* input :
       {"/templates/ui_blocks/blocks/_tokens.json", "/templates/ui_blocks/blocks/setting_row.json",
        "/templates/ui_blocks/blocks/wheel_picker.json", "/ui_tools/ui_emit/required_keys.json",
        "/components/icons/index.json", "/components/icons/24/wifi_off.png", "/components/icons/24/bluetooth_off.png"})
    EXPECT_TRUE(std::regex_search(text, std::regex("\n  " + repo + input + "( \\\\)?\n"))) << input << "\n" << text;
  EXPECT_EQ(text.find("/components/icons/24/alarm_off.png"), std::string::npos);  // an icon the page does not use
  EXPECT_EQ(text.find(".ttf"), std::string::npos);  // no preview, no font
  EXPECT_EQ(text.back(), '\n');

  // With a preview the font is read too; with several sizes every layout is a target.
  fs::create_directories(root / "font dir");
  fs::copy_file(repo + "/components/fonts/fonts/torvo-hans-common.ttf", root / "font dir/a.ttf");
  r = compose({repo + "/examples/settings_800x480.json", "--project", (root / "p").string(), "--depfile", dep.string(),
               "--sizes", "480x272,800x480", "--render", "--font", (root / "font dir/a.ttf").string()});
  ASSERT_EQ(r.status, 0) << r.err;
  const std::string sized = ub::read_file(dep.string());
  EXPECT_EQ(sized.rfind((root / "p/ui/480x272/main.json").string() + " " + (root / "p/ui/800x480/main.json").string() + " " +
                            (root / "p/src/logic/mainData.h").string() + ": ",
                        0),
            0u)
      << sized;
  EXPECT_NE(sized.find("  " + (root / "font\\ dir/a.ttf").string() + "\n"), std::string::npos) << sized;
  fs::remove_all(root);
}

// A picture the project ships for an image block is an input: changing it recomposes.
TEST(Depfile, NamesThePicturesTheProjectShips) {
  const fs::path root = ubtest::temp_dir("dep_image");
  fs::create_directories(root / "p/resources/photos");
  gen_res::save_png(gen_res::Image(8, 6, {10, 20, 30, 255}), (root / "p/resources/photos/logo.png").string());
  Json spec = ubtest::page_spec(800, 480, Json::array({{{"type", "image"}, {"src", "photos/logo.png"}}}));
  ub::write_file_atomic((root / "page.json").string(), spec.dump());
  const fs::path dep = root / "page.d";
  const Outcome r = compose({(root / "page.json").string(), "--project", (root / "p").string(), "--depfile", dep.string()});
  ASSERT_EQ(r.status, 0) << r.err;
  EXPECT_NE(ub::read_file(dep.string()).find((root / "p/resources/photos/logo.png").string()), std::string::npos)
      << ub::read_file(dep.string());
  fs::remove_all(root);
}

TEST(Help, EverySubcommandHasItsHelp) {
  for (const std::vector<std::string>& args : std::vector<std::vector<std::string>>{
           {"--help"}, {"build", "--help"}, {"build", "-h"}, {"schema", "--help"}, {"serve", "--help"},
           {"json2img", "--help"}, {"check_all", "--help"}}) {
    Outcome r = compose(args);
    EXPECT_EQ(r.status, 0) << args[0];
    EXPECT_TRUE(r.out.rfind("usage: ", 0) == 0) << r.out;
    EXPECT_EQ(r.err, "");
  }
  // The option help is in one language: the tool's own texts, word for word.
  const std::string help = compose({"--help"}).out;
  EXPECT_NE(help.find("界面块片段库组装器：spec → json + 切图 (+渲染/全检)"), std::string::npos) << help;
  EXPECT_NE(help.find("  --check               调 ui_tools/check_all 全检\n"), std::string::npos) << help;
  EXPECT_EQ(help.find("the page name"), std::string::npos) << help;
  EXPECT_NE(help.find("build [PROJECT]"), std::string::npos);
  // Usage errors of the subcommands exit 2 with their own usage.
  Outcome bad = compose({"build", "-j", "0"});
  EXPECT_EQ(bad.status, 2);
  EXPECT_EQ(bad.err.rfind("usage: compose build", 0), 0u) << bad.err;
  bad = compose({"schema", "--spec"});
  EXPECT_EQ(bad.status, 2);
  EXPECT_EQ(bad.err.rfind("usage: compose schema", 0), 0u) << bad.err;
}

TEST(Font, ANonexistentFontIsAnErrorBeforeAnythingIsWritten) {
  Project p(ubtest::page_spec(480, 272));
  Outcome r = p.run({"--render", "--font", "/nonexistent/fonts/x.ttf"});
  EXPECT_EQ(r.status, 1);
  EXPECT_EQ(r.err.rfind("usage: compose", 0), 0u) << r.err;
  EXPECT_NE(r.err.find("compose: error: argument --font: no such file: /nonexistent/fonts/x.ttf\n"), std::string::npos);
  EXPECT_FALSE(fs::exists(p.proj()));
  r = p.run({"--font", p.root.string()});
  EXPECT_EQ(r.status, 1);
  EXPECT_NE(r.err.find("argument --font: not a file: " + p.root.string()), std::string::npos);
  BuildProject b;
  r = b.build({"--render", "--font", "/nonexistent.ttf"});
  EXPECT_EQ(r.status, 1);
  EXPECT_NE(r.err.find("argument --font: no such file: /nonexistent.ttf"), std::string::npos);
  EXPECT_FALSE(fs::exists(b.root / "ui"));
}

TEST(Build, TheAuthorsLogicFileIsMergedNotOverwritten) {
  BuildProject p;
  p.write_project(R"({"pages": [{"spec": "pages/status_320x240.json", "page": "status"},
                                {"spec": "pages/controls_480x272.json", "page": "controls"}]})");
  ASSERT_EQ(p.build().status, 0);
  const fs::path logic = p.root / "src/logic/statusLogic.cc";
  std::string text = ub::read_file(logic.string());
  const size_t todo = text.find("    // TODO: ");
  ASSERT_NE(todo, std::string::npos) << text;
  text.insert(todo, "    startPump();  // hand-written\n");
  ub::write_file_atomic(logic.string(), text);
  EXPECT_EQ(composed(p.build().out), std::vector<std::string>{});  // an edited logic file is no reason to compose

  // A new row: the page is composed again, the new callback merged in, the edit kept.
  Json status = p.spec("status_320x240.json");
  status["page"]["blocks"].push_back({{"type", "setting_row"}, {"label", "泵"}, {"name", "Pump"}});
  p.put_spec("status_320x240.json", status);
  Outcome r = p.build({"-v"});
  ASSERT_EQ(r.status, 0) << r.err;
  const std::string merged = ub::read_file(logic.string());
  EXPECT_NE(merged.find("    startPump();  // hand-written\n"), std::string::npos) << merged;
  EXPECT_NE(merged.find("onButtonClick_ButtonRowPump("), std::string::npos) << merged;
  EXPECT_NE(r.out.find("：已与手改合并 → 新增"), std::string::npos) << r.out;
  EXPECT_TRUE(fs::exists(p.root / ".compose/logic/statusLogic.cc"));
  EXPECT_EQ(ub::read_file((p.root / ".compose/.gitignore").string()), "# compose build: this machine's state\nbuild.json\nstage/\n");
}

TEST(Build, PreviewsOfComposedPagesAndOfLayoutsWithoutOne) {
  BuildProject p;
  p.write_project(R"({"pages": [{"spec": "pages/status_320x240.json", "page": "status", "sizes": ["320x240", "480x272"]},
                                {"spec": "pages/controls_480x272.json", "page": "controls"}]})");
  Outcome r = p.build({"--render", "--font", ""});
  ASSERT_EQ(r.status, 0) << r.err;
  for (const char* png : {"ui/320x240/status.render.png", "ui/480x272/status.render.png", "ui/480x272/controls.render.png"})
    EXPECT_TRUE(fs::exists(p.root / png)) << png;
  EXPECT_NE(r.out.find("preview status 320x240 → " + (p.root / "ui/320x240/status.render.png").string() + "\n"), std::string::npos)
      << r.out;
  // Up to date: nothing to draw, until a preview goes missing.
  EXPECT_EQ(p.build({"--render"}).out.find("preview "), std::string::npos);
  fs::remove(p.root / "ui/480x272/controls.render.png");
  r = p.build({"--render"});
  EXPECT_NE(r.out.find("-- render --\npreview controls 480x272 → "), std::string::npos) << r.out;
  EXPECT_EQ(r.out.find("preview status"), std::string::npos);
  EXPECT_TRUE(fs::exists(p.root / "ui/480x272/controls.render.png"));
}
