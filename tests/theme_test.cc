// Themes as an author meets them: a tokens file laid over the library's on a single run, in
// a depfile, on a build that composes again when the theme changes, and bad theme files
// refused with their place before anything is written.
#include <gtest/gtest.h>

#include <regex>

#include "e2e.h"
#include "gen_res/image.h"

using namespace e2e;

namespace {

const std::string kDark = ubtest::source_dir() + "/examples/themes/dark.json";
const std::string kSettings = ubtest::source_dir() + "/examples/settings_800x480.json";

// The integer colour a layout carries for "#RRGGBB".
long long colour(const char* hex) { return std::stoll(std::string(hex).substr(1), nullptr, 16); }

// Every integer colour of a layout (the keys color0 ... of its colour tables, and its
// background colours), by count.
std::map<long long, int> colours_of(const Json& v) {
  std::map<long long, int> out;
  std::function<void(const Json&)> walk = [&](const Json& j) {
    if (j.is_object()) {
      for (auto it = j.begin(); it != j.end(); ++it) {
        if (it.value().is_number_integer() && ub::starts_with(it.key(), "color")) ++out[it.value().get<long long>()];
        walk(it.value());
      }
    } else if (j.is_array()) {
      for (const Json& e : j) walk(e);
    }
  };
  walk(v);
  return out;
}

std::array<int, 4> pixel(const fs::path& png, int x, int y) {
  const gen_res::Image img = gen_res::load_png(png.string());
  const uint8_t* p = img.at(x, y);
  return {p[0], p[1], p[2], p[3]};
}

// The first picture of the project whose name starts with stem.
fs::path picture(const fs::path& proj, const std::string& stem) {
  for (const auto& e : fs::directory_iterator(proj / "resources/images"))
    if (ub::starts_with(e.path().filename().string(), stem)) return e.path();
  return {};
}

struct Dir {
  fs::path root = ubtest::temp_dir("theme");
  ~Dir() { fs::remove_all(root); }
  fs::path put(const std::string& rel, const std::string& text) const {
    fs::create_directories((root / rel).parent_path());
    ub::write_file_atomic((root / rel).string(), text);
    return root / rel;
  }
};

TEST(Theme, ColoursOfTheThemeReachTheLayoutAndThePictures) {
  Dir d;
  ASSERT_EQ(compose({kSettings, "--project", (d.root / "plain").string()}).status, 0);
  Outcome r = compose({kSettings, "--project", (d.root / "dark").string(), "--tokens", kDark});
  ASSERT_EQ(r.status, 0) << r.err;
  const auto plain = colours_of(Json::parse(ub::read_file((d.root / "plain/ui/main.json").string())));
  const auto dark = colours_of(Json::parse(ub::read_file((d.root / "dark/ui/main.json").string())));
  // Main text: every control that had the library's colour has the theme's.
  ASSERT_GT(plain.count(colour("#1F2329")), 0u);
  EXPECT_EQ(dark.count(colour("#1F2329")), 0u);
  EXPECT_EQ(dark.at(colour("#E6E8EB")), plain.at(colour("#1F2329")));
  // A card is drawn in the theme's surface colour.
  const fs::path card = picture(d.root / "dark", "card_");
  ASSERT_FALSE(card.empty());
  const gen_res::Image img = gen_res::load_png(card.string());
  EXPECT_EQ(pixel(card, img.w / 2, img.h / 2), (std::array<int, 4>{0x1C, 0x20, 0x26, 255}));
  EXPECT_EQ(pixel(picture(d.root / "plain", "card_"), img.w / 2, img.h / 2), (std::array<int, 4>{255, 255, 255, 255}));
}

TEST(Theme, APartialThemeKeepsEveryOtherToken) {
  Dir d;
  const fs::path theme = d.put("brand.json", R"({"color": {"brand": "#AA3300"}, "size": {"row_gap_px": 4}})");
  ASSERT_EQ(compose({kSettings, "--project", (d.root / "plain").string()}).status, 0);
  Outcome r = compose({kSettings, "--project", (d.root / "brand").string(), "--tokens", theme.string()});
  ASSERT_EQ(r.status, 0) << r.err;
  auto plain = colours_of(Json::parse(ub::read_file((d.root / "plain/ui/main.json").string())));
  auto brand = colours_of(Json::parse(ub::read_file((d.root / "brand/ui/main.json").string())));
  ASSERT_GT(plain.count(colour("#2F6FED")), 0u);
  EXPECT_EQ(brand[colour("#AA3300")], plain[colour("#2F6FED")]);
  // With the brand colour swapped back, the layouts are the same: nothing else moved.
  plain.erase(colour("#2F6FED"));
  brand.erase(colour("#AA3300"));
  EXPECT_EQ(brand, plain);
  const std::string a = ub::read_file((d.root / "plain/ui/main.json").string());
  const std::string b = ub::read_file((d.root / "brand/ui/main.json").string());
  EXPECT_EQ(std::regex_replace(b, std::regex(std::to_string(colour("#AA3300"))), std::to_string(colour("#2F6FED"))), a);
}

TEST(Theme, BadThemeFilesAreLocatedErrorsAndWriteNothing) {
  Dir d;
  const std::vector<std::pair<std::string, std::string>> cases = {  // theme text, the message after the file
      {R"({"color": {"fg1": "red"}})", ": color.fg1: expected a colour \"#RRGGBB\" or \"#RRGGBBAA\", got a text 'red'"},
      {R"({"color": {"backgruond": "#000000"}})", ": color: unknown token 'backgruond' (known in color: "},
      {R"({"colour": {"fg1": "#000000"}})", ": unknown token 'colour' (did you mean \"color\"?)"},
      {R"({"size": {"row_h_of_h": "big"}})", ": size.row_h_of_h: expected a number, got a text 'big'"},
      {R"({"ladder": [12, 14.5]})", ": ladder[1]: expected a whole number, got a number 14.5"},
      {R"([])", ": expected a mapping of design tokens, got a list []"},
  };
  for (const auto& [text, tail] : cases) {
    const fs::path theme = d.put("t.json", text);
    Outcome r = compose({kSettings, "--project", (d.root / "p").string(), "--tokens", theme.string()});
    EXPECT_EQ(r.status, 1) << text;
    EXPECT_EQ(r.err.rfind("compose: error: " + theme.string() + tail, 0), 0u) << r.err;
    EXPECT_FALSE(fs::exists(d.root / "p")) << text;
  }
  // Not JSON, not there.
  const fs::path broken = d.put("broken.json", "{\"color\": {\"fg1\": \"#000000\",}}");
  Outcome r = compose({kSettings, "--project", (d.root / "p").string(), "--tokens", broken.string()});
  EXPECT_EQ(r.status, 1);
  EXPECT_NE(r.err.find("malformed JSON in " + broken.string() + ": "), std::string::npos) << r.err;
  EXPECT_NE(r.err.find("line 1"), std::string::npos) << r.err;
  r = compose({kSettings, "--project", (d.root / "p").string(), "--tokens", (d.root / "none.json").string()});
  EXPECT_EQ(r.status, 1);
  EXPECT_NE(r.err.find("tokens file not found: " + (d.root / "none.json").string()), std::string::npos) << r.err;
  EXPECT_FALSE(fs::exists(d.root / "p"));

  // The project file's theme is checked the same way, before any page runs.
  d.put("pages/main.json", ub::read_file(kSettings));
  d.put("theme/dark.json", R"({"color": {"surface": "#12345"}})");
  d.put("compose.json", R"({"pages": [{"spec": "pages/main.json"}], "theme": "theme/dark.json"})");
  r = compose({"build", d.root.string(), "--no-check"});
  EXPECT_EQ(r.status, 1);
  EXPECT_EQ(r.err, "compose: error: " + (d.root / "compose.json").string() +
                       ": theme: theme/dark.json: color.surface: expected a colour \"#RRGGBB\" or \"#RRGGBBAA\", got a "
                       "text '#12345'\n");
  EXPECT_FALSE(fs::exists(d.root / "ui"));
}

TEST(Theme, TheThemeIsAnInputOfTheDepfileAndOfTheBuild) {
  Dir d;
  const fs::path theme = d.put("theme/dark.json", ub::read_file(kDark));
  const fs::path dep = d.root / "main.d";
  ASSERT_EQ(compose({kSettings, "--project", (d.root / "single").string(), "--tokens", theme.string(), "--depfile",
                     dep.string()})
                .status,
            0);
  EXPECT_NE(ub::read_file(dep.string()).find("/_tokens.json \\\n  " + theme.string() + " \\\n"), std::string::npos)
      << ub::read_file(dep.string());

  d.put("pages/main.json", ub::read_file(kSettings));
  d.put("compose.json", R"({"pages": [{"spec": "pages/main.json"}], "theme": "theme/dark.json"})");
  Outcome first = compose({"build", d.root.string(), "--no-check"});
  ASSERT_EQ(first.status, 0) << first.err;
  // The build composes with the theme, as the single run did.
  EXPECT_EQ(ub::read_file((d.root / "ui/main.json").string()), ub::read_file((d.root / "single/ui/main.json").string()));
  EXPECT_NE(compose({"build", d.root.string(), "--no-check"}).out.find("0 composed, 1 up to date"), std::string::npos);
  // A changed theme composes the page again, with the new colours.
  d.put("theme/dark.json", R"({"color": {"fg1": "#FAFAFA"}})");
  fs::last_write_time(theme, fs::file_time_type::clock::now() + std::chrono::seconds(2));
  Outcome again = compose({"build", d.root.string(), "--no-check"});
  ASSERT_EQ(again.status, 0) << again.err;
  EXPECT_NE(again.out.find("1 composed, 0 up to date"), std::string::npos) << again.out;
  const auto now = colours_of(Json::parse(ub::read_file((d.root / "ui/main.json").string())));
  EXPECT_GT(now.count(colour("#FAFAFA")), 0u);
  EXPECT_EQ(now.count(colour("#E6E8EB")), 0u);
}

TEST(Theme, SchemaOfTheTokensFile) {
  Outcome r = compose({"schema", "--tokens"});
  ASSERT_EQ(r.status, 0) << r.err;
  const Json s = Json::parse(r.out);
  EXPECT_EQ(s["properties"]["color"]["properties"]["page"]["pattern"], "^#([0-9A-Fa-f]{6}|[0-9A-Fa-f]{8})$");
  EXPECT_EQ(compose({"schema", "--tokens", "--project-file"}).status, 2);
}

}  // namespace
