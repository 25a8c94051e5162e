#include "serve/recompose.h"

#include "base/json_reader.h"

#include <filesystem>
#include <fstream>
#include <sstream>

namespace fs = std::filesystem;

namespace serve {

namespace {

std::string trim(std::string s) {
  while (!s.empty() && (s.back() == '\n' || s.back() == ' ')) s.pop_back();
  size_t i = 0;
  while (i < s.size() && (s[i] == ' ' || s[i] == '\n')) ++i;
  return s.substr(i);
}

bool slurp(const std::string& path, std::string& out) {
  std::ifstream in(path, std::ios::binary);
  if (!in) return false;
  std::ostringstream ss;
  ss << in.rdbuf();
  out = ss.str();
  return true;
}

}  // namespace

std::vector<RunPlan> plan_runs(const std::string& exe, const ServeOptions& o) {
  RunPlan p;
  p.label = "spec";
  p.argv = {exe, o.spec, "--project", o.project, "--page", o.page, "--render"};
  return {p};
}

std::vector<std::string> note_lines(const std::string& report) {
  std::vector<std::string> out;
  std::istringstream in(report);
  const std::string mark = "  [NOTE] ";
  for (std::string line; std::getline(in, line);)
    if (line.rfind(mark, 0) == 0) out.push_back(line.substr(mark.size()));
  return out;
}

std::string reported_layout(const std::string& report, const std::string& page) {
  std::istringstream in(report);
  const std::string mark = "  → ", tail = "/" + page + ".json";
  std::string found;
  for (std::string line; std::getline(in, line);)
    if (line.rfind(mark, 0) == 0 && line.size() > mark.size() + tail.size() &&
        line.compare(line.size() - tail.size(), tail.size(), tail) == 0)
      found = line.substr(mark.size());
  return found;
}

RunOutcome run_plan(const RunPlan& plan, const std::string& page, const Runner& run) {
  RunOutcome r;
  ub::ChildResult child;
  try {
    child = run(plan.argv);
  } catch (const std::exception& e) {
    r.stop = std::string("compose: error: ") + e.what();
    return r;
  }
  r.notes = note_lines(child.out);
  if (child.status != 0) {
    r.stop = trim(child.err);
    if (r.stop.empty()) r.stop = "compose stopped with status " + std::to_string(child.status);
    return r;
  }
  r.layout_path = reported_layout(child.out, page);
  std::string text;
  if (r.layout_path.empty() || !slurp(r.layout_path, text)) {
    r.stop = "compose: error: the layout of the run was not found";
    return r;
  }
  try {
    r.layout = ub::read_json(text);
  } catch (const std::exception&) {
    r.stop = "compose: error: the layout of the run is not readable: " + r.layout_path;
    return r;
  }
  const std::string png = (fs::path(r.layout_path).parent_path() / (page + ".render.png")).string();
  if (!slurp(png, r.png)) r.png.clear();  // a failed preview is only reported by compose
  r.ok = true;
  return r;
}

}  // namespace serve
