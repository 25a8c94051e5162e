#include "test_support.h"

#include <gtest/gtest.h>
#include <unistd.h>

#include <cstdio>
#include <cstdlib>
#include <filesystem>

#include "driver/paths.h"
#include "spec/library.h"

namespace ubtest {

std::string source_dir() { return UB_SOURCE_DIR; }

std::string compose_exe() { return COMPOSE_EXE; }

std::string icon_dir() {
  // Appended, not "+": g++ 12 reports a false -Warray-bounds on string + literal here.
  std::string dir = source_dir();
  dir += "/components/icons";
  return dir;
}

std::string blocks_dir() { return source_dir() + "/templates/ui_blocks/blocks"; }

ub::Installation installation_of(const std::string& blocks, Json tokens) {
  if (tokens.is_null()) tokens = ub::load_json(blocks + "/_tokens.json");
  return ub::load_installation(std::move(tokens), blocks, icon_dir(),
                               source_dir() + "/ui_tools/ui_emit/required_keys.json");
}

const ub::Installation& installation() {
  static const ub::Installation inst = installation_of(blocks_dir());
  return inst;
}

const ub::EmitLayer& required_keys() { return installation().required_keys; }

std::string temp_dir(const std::string& tag) {
  std::string tmpl = (std::filesystem::temp_directory_path() / ("ub_" + tag + "_XXXXXX")).string();
  char* d = mkdtemp(tmpl.data());
  return d ? std::string(d) : tmpl;
}

namespace {

bool updating() {
  const char* v = std::getenv("UB_UPDATE_EXPECTED");
  return v && *v;
}

std::string shown(const Json& v) { return v.is_null() ? "(absent)" : v.dump(); }

// The first place where two layouts differ: the key path of the innermost record both
// have, and up to eight lines of "key: expected -> produced".
bool first_difference(const Json& want, const Json& got, const std::string& path, std::string& out) {
  if (want == got) return false;
  if (!want.is_object() || !got.is_object()) {
    out = path + ": " + shown(want) + " -> " + shown(got);
    return true;
  }
  // A differing child control is reported in preference to its parent.
  for (auto it = want.begin(); it != want.end(); ++it)
    if (it.key().find("__") != std::string::npos && got.contains(it.key()) && it.value() != got[it.key()])
      if (first_difference(it.value(), got[it.key()], path + "/" + it.key(), out)) return true;
  std::vector<std::string> lines;
  std::vector<std::string> keys = keys_of(want);
  for (const auto& k : keys_of(got))
    if (!want.contains(k)) keys.push_back(k);
  for (const auto& k : keys) {
    const Json w = want.contains(k) ? want[k] : Json();
    const Json g = got.contains(k) ? got[k] : Json();
    if (w != g && lines.size() < 8) lines.push_back("  " + k + ": " + shown(w) + " -> " + shown(g));
  }
  if (lines.empty() && keys_of(want) != keys_of(got)) lines.push_back("  key order differs");
  out = "first differing control " + (path.empty() ? std::string("(root)") : path) + "\n" + ub::join(lines, "\n");
  return true;
}

std::string first_line_difference(const std::string& want, const std::string& got) {
  size_t line = 1, i = 0;
  while (i < want.size() && i < got.size() && want[i] == got[i])
    if (want[i++] == '\n') ++line;
  auto line_at = [&](const std::string& s) {
    size_t b = s.rfind('\n', i == 0 ? 0 : i - 1);
    b = (b == std::string::npos || i == 0) ? 0 : b + 1;
    return s.substr(b, s.find('\n', b) - b);
  };
  return ub::cat("first differing line ", line, "\n  expected: ", line_at(want), "\n  produced: ", line_at(got));
}

}  // namespace

void expect_golden(const std::string& got, const std::string& path) {
  if (updating()) {
    ub::write_file_atomic(path, got);
    return;
  }
  ASSERT_TRUE(std::filesystem::exists(path)) << path << " is missing (UB_UPDATE_EXPECTED=1 writes it)";
  const std::string want = ub::read_file(path);
  if (want == got) return;
  std::string why;
  const Json jw = Json::parse(want, nullptr, false), jg = Json::parse(got, nullptr, false);
  if (!(jw.is_object() && jg.is_object() && first_difference(jw, jg, "", why))) why = first_line_difference(want, got);
  ADD_FAILURE() << "differs from " << path << "\n" << why;
}

void expect_pinned(const std::string& got, const std::string& path) {
  unsigned long long h = 1469598103934665603ull;
  for (unsigned char c : got) h = (h ^ c) * 1099511628211ull;
  char hex[32];
  std::snprintf(hex, sizeof hex, "%016llx\n", h);
  SCOPED_TRACE("a pinned output changed; if that is intended, UB_UPDATE_EXPECTED=1 rewrites the pin");
  expect_golden(hex, path);
}

Json page_spec(int w, int h, Json blocks) {
  Json spec = Json::object();
  spec["resolution"] = {{"width", w}, {"height", h}};
  spec["page"] = Json::object();
  spec["page"]["title"] = "设置";
  spec["page"]["blocks"] = blocks;
  spec["page"]["footer"] = {{"primary", "保存"}};
  return spec;
}

std::vector<std::string> keys_of(const Json& o) {
  std::vector<std::string> k;
  for (auto it = o.begin(); it != o.end(); ++it) k.push_back(it.key());
  return k;
}

namespace {
// Point the program's own directory at the checkout before any test runs.
struct PathEnvironment : ::testing::Environment {
  void SetUp() override {
    unsetenv("TVUITOOL_BLOCKS");
    ub::init_paths(std::string(UB_SOURCE_DIR) + "/templates/ui_blocks");
  }
};
const auto* const kEnv = ::testing::AddGlobalTestEnvironment(new PathEnvironment);
}  // namespace

}  // namespace ubtest
