#include "serve/recompose.h"

#include "base/json_reader.h"

#include <fstream>
#include <sstream>

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
  p.argv = {exe, o.spec, "--project", o.project, "--page", o.page};
  if (o.no_logic) p.argv.push_back("--no-logic");
  if (!o.tokens.empty()) p.argv.insert(p.argv.end(), {"--tokens", o.tokens});
  if (!o.sizes.empty()) {
    for (const auto& s : o.sizes) p.sizes.push_back(ub::size_label(s));
    std::string list;
    for (const auto& l : p.sizes) list += (list.empty() ? "" : ",") + l;
    p.label = list;
    p.argv.insert(p.argv.end(), {"--sizes", list});
  }
  return {p};
}

std::vector<std::string> view_labels(const std::vector<RunPlan>& plans) {
  std::vector<std::string> out;
  for (const auto& p : plans) {
    if (p.sizes.empty()) out.push_back(p.label);
    out.insert(out.end(), p.sizes.begin(), p.sizes.end());
  }
  return out;
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

namespace {

// The child's result, or its stop message in `stop`.
bool run_child(const RunPlan& plan, const Runner& run, ub::ChildResult& child, std::string& stop) {
  try {
    child = run(plan.argv);
  } catch (const std::exception& e) {
    stop = std::string("compose: error: ") + e.what();
    return false;
  }
  if (child.status == 0) return true;
  stop = trim(child.err);
  if (stop.empty()) stop = "compose stopped with status " + std::to_string(child.status);
  return false;
}

// The notes and layout a good run reported in `report`.
RunOutcome read_outputs(const std::string& report, const std::string& page) {
  RunOutcome r;
  r.notes = note_lines(report);
  r.layout_path = reported_layout(report, page);
  std::string text;
  if (r.layout_path.empty() || !slurp(r.layout_path, text)) {
    r.stop = "compose: error: the layout of the run was not found";
    return r;
  }
  try {
    r.layout = ub::read_json(text);
    r.layout_text = std::move(text);
  } catch (const std::exception&) {
    r.stop = "compose: error: the layout of the run is not readable: " + r.layout_path;
    return r;
  }
  r.ok = true;
  return r;
}

// The lines of a report from "==== label ====" up to the next such head.
std::string size_section(const std::string& report, const std::string& label) {
  std::istringstream in(report);
  std::string out;
  bool inside = false;
  for (std::string line; std::getline(in, line);) {
    if (line.rfind("==== ", 0) == 0) inside = line == "==== " + label + " ====";
    else if (inside) out += line + "\n";
  }
  return out;
}

}  // namespace

RunOutcome run_plan(const RunPlan& plan, const std::string& page, const Runner& run) {
  ub::ChildResult child;
  RunOutcome r;
  if (!run_child(plan, run, child, r.stop)) {
    r.notes = note_lines(child.out);
    return r;
  }
  return read_outputs(child.out, page);
}

std::vector<RunOutcome> run_views(const RunPlan& plan, const std::string& page, const Runner& run) {
  if (plan.sizes.empty()) return {run_plan(plan, page, run)};
  ub::ChildResult child;
  RunOutcome refused;
  if (!run_child(plan, run, child, refused.stop)) return std::vector<RunOutcome>(plan.sizes.size(), refused);
  std::vector<RunOutcome> out;
  for (const auto& label : plan.sizes) out.push_back(read_outputs(size_section(child.out, label), page));
  return out;
}

}  // namespace serve
