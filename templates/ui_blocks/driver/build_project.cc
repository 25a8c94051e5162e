#include "driver/build_project.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <chrono>
#include <filesystem>
#include <map>
#include <set>

#include "base/output_files.h"
#include "driver/build_report.h"
#include "driver/build_state.h"
#include "driver/console_text.h"
#include "driver/job_pool.h"
#include "driver/paths.h"
#include "driver/picture_claims.h"
#include "driver/project_file.h"
#include "driver/prune.h"
#include "driver/report.h"
#include "driver/run_record.h"
#include "driver/toolchain.h"
#include "logic/logic.h"
#include "spec/page_limits.h"
#include "spec/spec_text.h"

namespace fs = std::filesystem;

namespace ub {

namespace {

const char* const kToolDir = ".compose";
const char* const kImages = "resources/images/";

// One page of the project file through the build.
struct Page {
  const PageEntry* entry = nullptr;
  std::vector<std::string> sizes;  // as it will be composed; empty when the spec's size is unknown
  std::string config;
  const PageStamp* stamp = nullptr;  // of the last build, if any
  bool compose = false;
  // Once composed:
  ChildResult result;
  RunRecord record;
  std::string stage;                            // its staging folder, a project of its own
  std::map<std::string, std::string> staged;    // file (relative) -> digest
  std::map<std::string, std::string> pictures;  // picture as drawn -> digest
  std::map<std::string, std::string> renamed;   // picture as drawn -> name written, where they differ
  // The logic file and its merge base as the page's run read them (nullopt: absent): the
  // commit writes the merge only over these very bytes.
  std::vector<std::pair<std::string, std::optional<std::string>>> logic_was;

  const std::string& name() const { return entry->page; }
};

// The resolution a spec asks for, when it can be read; the page's own run reports a bad one.
std::optional<std::string> spec_size(const std::string& path) {
  try {
    const Json spec = parse_spec_text(read_file(path), path);
    const Json& res = get(spec, "resolution");
    const long long w = int_of(get(res, "width")), h = int_of(get(res, "height"));
    if (w < kMinScreenSide || w > kMaxScreenSide || h < kMinScreenSide || h > kMaxScreenSide) return std::nullopt;
    return cat(w, "x", h);
  } catch (const std::exception&) {
    return std::nullopt;
  }
}

// The sizes of a page: its own list, else its spec's resolution (taken from the last build
// while the spec is unchanged, so an unchanged spec is not read).
std::vector<std::string> page_sizes(const PageEntry& e, const PageStamp* stamp) {
  std::vector<std::string> out;
  for (const ScreenSize& s : e.sizes) out.push_back(size_label(s));
  if (!out.empty()) return out;
  if (stamp && !stamp->inputs.empty() && stamp->inputs.front().path == e.spec_path && unchanged(stamp->inputs.front()))
    return stamp->sizes;
  if (auto s = spec_size(e.spec_path)) out.push_back(*s);
  return out;
}

// flat when the whole project has one size, else res (one folder per size).
std::string layout_mode(const ProjectFile& pf, const std::vector<Page>& pages) {
  if (pf.ui_layout != "auto") return pf.ui_layout;
  std::set<std::string> all;
  for (const Page& p : pages) {
    if (p.entry->sizes.size() > 1) return "res";
    all.insert(p.sizes.begin(), p.sizes.end());
  }
  return all.size() <= 1 ? "flat" : "res";
}

bool plain_file(const std::string& path) {
  struct stat st;
  return ::lstat(path.c_str(), &st) == 0 && S_ISREG(st.st_mode);
}

// The page's run merges the author's logic file with the new skeleton: it reads both from
// the project and requires them unchanged where it commits, so its staging folder starts
// with copies of them; the build's own commit requires the project's to be as copied.
void stage_logic(Page& p, const std::string& root) {
  p.logic_was.clear();
  for (const std::string& rel : {logic_path(p.name()), logic_base_path(p.name())}) {
    std::optional<std::string> was;
    if (plain_file(root + "/" + rel)) was = read_file(root + "/" + rel);
    if (was) {
      const fs::path copy = fs::path(p.stage) / rel;
      fs::create_directories(copy.parent_path());
      write_file_atomic(copy.string(), *was);
    }
    p.logic_was.emplace_back(rel, std::move(was));
  }
}

bool up_to_date(const Page& p, const std::string& root) {
  if (!p.stamp || p.stamp->config != p.config) return false;
  for (const FileStamp& f : p.stamp->inputs)
    if (!unchanged(f)) return false;
  for (const auto& [rel, digest] : p.stamp->outputs)
    if (!plain_file(root + "/" + rel)) return false;
  return true;
}

std::vector<std::string> child_command(const Page& p, const std::string& root, const std::string& mode,
                                       bool write_conflicts, const std::optional<std::string>& theme) {
  std::vector<std::string> argv = {self_exe(),  p.entry->spec_path, "--project", root,          "--page",
                                   p.name(),    "--ui-layout",      mode,        "--stage",     p.stage,
                                   "--run-record", p.stage + ".run.json"};
  if (!p.entry->sizes.empty()) {
    argv.push_back("--sizes");
    argv.push_back(join(p.sizes, ","));
  }
  if (write_conflicts) argv.push_back("--write-conflicts");
  if (theme) argv.insert(argv.end(), {"--tokens", *theme});
  return argv;
}

// The stop message of a page that refused the build, with the page and size named.
std::string refusal(const Page& p) {
  std::string msg = p.result.err;
  while (!msg.empty() && msg.back() == '\n') msg.pop_back();
  std::string size;
  const size_t nl = msg.rfind('\n');
  const std::string last = nl == std::string::npos ? "" : msg.substr(nl + 1);
  if (starts_with(last, "  at size ")) {
    size = last.substr(10);
    msg.resize(nl);
  } else if (p.sizes.size() == 1) {
    size = p.sizes.front();
  }
  if (msg.empty()) msg = cat("compose: error: the page's run ended with status ", p.result.status);
  return cat(msg, "\n  in page ", p.name(), size.empty() ? "" : " at " + size, " (", p.entry->spec, ")\n");
}

// Every file of a staging folder (relative path -> digest), in path order.
std::map<std::string, std::string> staged_files(const std::string& stage) {
  std::map<std::string, std::string> out;
  std::error_code ec;
  if (!fs::is_directory(stage, ec)) return out;
  for (auto it = fs::recursive_directory_iterator(stage, ec); !ec && it != fs::recursive_directory_iterator();
       it.increment(ec))
    if (it->is_regular_file(ec) && !it->is_symlink(ec))
      out[it->path().lexically_relative(stage).string()] = file_digest(it->path().string());
  if (ec) throw InputError("cannot read the staging folder " + stage + ": " + ec.message());
  return out;
}

bool is_picture(const std::string& rel) {
  return starts_with(rel, kImages) && rel.find('/', std::string(kImages).size()) == std::string::npos;
}

// A staged file handed to the commit in pieces, never held whole.
base::Producer file_producer(const std::string& path) {
  return [path](const base::Sink& put) {
    const int fd = ::open(path.c_str(), O_RDONLY | O_CLOEXEC);
    if (fd < 0) throw base::OutputError("cannot read the staged " + path);
    std::vector<char> buf(1 << 18);
    while (true) {
      const ssize_t n = ::read(fd, buf.data(), buf.size());
      if (n < 0 && errno == EINTR) continue;
      if (n < 0) {
        ::close(fd);
        throw base::OutputError("cannot read the staged " + path);
      }
      if (n == 0) break;
      put(std::string_view(buf.data(), (size_t)n));
    }
    ::close(fd);
  };
}

// The staging area is removed however the build ends.
struct StageGuard {
  std::string dir;
  ~StageGuard() {
    std::error_code ec;
    fs::remove_all(dir, ec);
  }
};

// The tool folder: a plain folder of the project, never a link out of it.
std::string tool_dir(const std::string& root) {
  const std::string dir = root + "/" + kToolDir;
  struct stat st;
  if (::lstat(dir.c_str(), &st) == 0 && !S_ISDIR(st.st_mode))
    throw InputError(dir + " is a symbolic link or not a folder; the tool folder stays inside the project");
  std::error_code ec;
  fs::create_directories(dir, ec);
  if (ec) throw InputError("cannot create " + dir + ": " + ec.message());
  return dir;
}

std::string project_file_path(const std::string& arg) {
  std::error_code ec;
  if (fs::is_directory(arg, ec)) return (fs::path(arg) / kProjectFileName).string();
  return arg;
}

// One build: the project, its pages and what became of them.
struct Build {
  Build(const BuildOptions& opts, ProjectFile file) : o(opts), pf(std::move(file)) {}
  const BuildOptions& o;
  ProjectFile pf;
  std::string root, tools, stage_root;
  BuildState state;
  std::vector<Page> pages;
  std::string mode;              // flat or res, for every page
  std::vector<FileStamp> common;  // inputs of every page besides its own
  int jobs = 1;
  std::vector<Clash> clashes;
};

// Each page's sizes and request, and whether it must be composed.
void plan_pages(Build& b) {
  // Files every page reads besides its own: the tool, the block library's folder (a block
  // file added or removed) and the theme.
  b.common = {stamp_of(self_exe()), stamp_of(blocks_dir())};
  if (b.pf.theme) b.common.push_back(stamp_of(*b.pf.theme));
  b.pages.resize(b.pf.pages.size());
  for (size_t i = 0; i < b.pages.size(); ++i) {
    Page& p = b.pages[i];
    p.entry = &b.pf.pages[i];
    auto it = b.state.pages.find(p.name());
    p.stamp = it == b.state.pages.end() ? nullptr : &it->second;
    p.sizes = page_sizes(*p.entry, p.stamp);
    p.stage = b.stage_root + "/" + p.name();
  }
  b.mode = layout_mode(b.pf, b.pages);
  for (Page& p : b.pages) {
    std::vector<std::string> sizes;
    for (const ScreenSize& s : p.entry->sizes) sizes.push_back(size_label(s));
    p.config = Json(object_of("spec", p.entry->spec_path, "sizes", sizes, "ui_layout", b.mode, "theme",
                              b.pf.theme.value_or("")))
                   .dump();
    p.compose = b.o.force || !up_to_date(p, b.root);
  }
}

// Runs the pages to compose side by side, each into its staging folder. A page whose
// picture names change because an earlier page took one of them is composed in a second
// round. Returns the stop messages of the pages that refused the build (empty: none did).
std::string compose_pages(Build& b, std::ostream& out, bool tty) {
  std::string refusals;
  size_t composed = 0;
  while (true) {
    std::vector<Page*> todo;
    for (Page& p : b.pages)
      if (p.compose && p.record.sizes.empty()) todo.push_back(&p);
    if (todo.empty()) return refusals;
    std::vector<std::vector<std::string>> commands;
    for (Page* p : todo) {
      stage_logic(*p, b.root);
      commands.push_back(child_command(*p, b.root, b.mode, b.o.write_conflicts, b.pf.theme));
    }
    std::vector<std::string> running;
    size_t finished = 0;
    auto event = [&](size_t i, bool done) {
      if (done) {
        ++finished;
        std::erase(running, todo[i]->name());
      } else {
        running.push_back(todo[i]->name());
      }
      out << "\r\033[K" << progress_line(composed + finished, composed + todo.size(), running) << std::flush;
    };
    std::vector<ChildResult> results = run_jobs(commands, b.jobs, tty ? JobEvent(event) : JobEvent());
    if (tty) out << "\r\033[K" << std::flush;
    composed += todo.size();
    for (size_t i = 0; i < todo.size(); ++i) {
      Page& p = *todo[i];
      p.result = std::move(results[i]);
      if (p.result.status != 0) {
        refusals += refusal(p);
        continue;
      }
      p.record = parse_run_record(read_file(p.stage + ".run.json"));
      p.sizes.clear();
      for (const SizeRecord& s : p.record.sizes) p.sizes.push_back(s.size);
      p.staged = staged_files(p.stage);
      for (const auto& [rel, digest] : p.staged)
        if (is_picture(rel)) p.pictures[rel.substr(std::string(kImages).size())] = digest;
    }
    if (!refusals.empty()) return refusals;
    std::vector<PagePictures> claims;
    for (const Page& p : b.pages) claims.push_back({p.name(), p.compose ? p.pictures : p.stamp->pictures, {}});
    b.clashes = assign_picture_names(claims);
    for (size_t i = 0; i < b.pages.size(); ++i) {
      Page& p = b.pages[i];
      p.renamed = std::move(claims[i].renamed);
      if (!p.compose && p.renamed != p.stamp->renamed) p.compose = true;
    }
  }
}

// A composed page's stamp, and its staged files added to the commit (pictures under the
// names they were given, layouts naming those).
PageStamp add_page_files(const Build& b, const Page& p, base::OutputSet& files,
                         std::map<std::string, std::pair<std::string, std::string>>& added, BuildState& next) {
  PageStamp ps;
  ps.config = p.config;
  ps.sizes = p.sizes;
  for (const SizeRecord& s : p.record.sizes) ps.layouts.push_back(s.layout);
  for (const std::string& f : p.record.inputs) ps.inputs.push_back(stamp_of(f));
  ps.inputs.insert(ps.inputs.end(), b.common.begin(), b.common.end());
  ps.pictures = p.pictures;
  ps.renamed = p.renamed;
  const std::set<std::string> layouts(ps.layouts.begin(), ps.layouts.end());
  for (const auto& [rel, staged_digest] : p.staged) {
    std::string target = rel, digest = staged_digest;
    const std::string source = p.stage + "/" + rel;
    std::optional<std::string> bytes;
    if (is_picture(rel)) {
      const std::string name = rel.substr(std::string(kImages).size());
      if (auto r = p.renamed.find(name); r != p.renamed.end()) target = kImages + r->second;
    } else if (layouts.count(rel) && !p.renamed.empty()) {
      bytes = renamed_layout(read_file(source), p.renamed);
      digest = text_digest(*bytes);
    }
    ps.outputs[target] = digest;
    if (is_picture(target)) next.written[target.substr(std::string(kImages).size())] = digest;
    auto [it, fresh] = added.try_emplace(target, digest, p.name());
    if (!fresh) {
      if (it->second.first == digest) continue;  // the same file from two pages
      throw InputError(cat("pages ", it->second.second, " and ", p.name(), " both write ", target,
                           " with different contents"));
    }
    if (bytes) files.add(target, std::move(*bytes));
    else files.add_stream(target, file_producer(source));
  }
  for (const auto& [rel, was] : p.logic_was) files.require_unchanged(rel, was);
  return ps;
}

// Every staged file into the project in one commit, with the build's new state. Returns
// the state and counts the project's own files in `done`.
BuildState commit_pages(const Build& b, base::CommitResult& done) {
  base::OutputSet files;
  std::map<std::string, std::pair<std::string, std::string>> added;  // file -> digest, page
  BuildState next;
  next.written = b.state.written;
  for (const Page& p : b.pages) next.pages[p.name()] = p.compose ? add_page_files(b, p, files, added, next) : *p.stamp;
  // The tool's own files: its state, and a .gitignore for it (.compose/ also holds the logic
  // files' bases, which belong under version control; the state is this machine's own).
  const std::vector<std::pair<std::string, std::string>> tool_files = {
      {std::string(kToolDir) + "/build.json", build_state_text(next)},
      {std::string(kToolDir) + "/.gitignore", "# compose build: this machine's state\nbuild.json\nstage/\n"}};
  int tool_unchanged = 0;
  for (const auto& [rel, text] : tool_files) {
    if (plain_file(b.root + "/" + rel) && read_file(b.root + "/" + rel) == text) ++tool_unchanged;
    files.add(rel, text);
  }
  done = files.commit(b.root);
  done.unchanged -= tool_unchanged;
  done.written -= (int)tool_files.size() - tool_unchanged;
  return next;
}

// A preview beside each layout that was composed, has none, or is older than its layout or
// the font.
void render_previews(const Build& b, std::ostream& out) {
  const std::optional<std::string> font =
      b.o.font && !b.o.font->empty() ? b.o.font : find_render_font(b.root);
  std::vector<std::vector<std::string>> commands;
  std::vector<std::string> labels, pngs;
  for (const Page& p : b.pages) {
    std::vector<std::string> sizes, layouts;
    if (p.compose) {
      for (const SizeRecord& s : p.record.sizes) {
        sizes.push_back(s.size);
        layouts.push_back(s.layout);
      }
    } else {
      sizes = p.stamp->sizes;
      layouts = p.stamp->layouts;
    }
    for (size_t k = 0; k < sizes.size() && k < layouts.size(); ++k) {
      const std::string layout = b.root + "/" + layouts[k];
      const std::string png = fs::path(layout).replace_filename(p.name() + ".render.png").string();
      const long long drawn = stamp_of(png).mtime_ns;
      if (!p.compose && plain_file(png) && drawn >= stamp_of(layout).mtime_ns && (!font || drawn >= stamp_of(*font).mtime_ns))
        continue;
      std::vector<std::string> args = {layout, "--page", p.name(), "--out", png};
      if (font) args.insert(args.end(), {"--font", *font});
      commands.push_back(tool_argv("json2img", args));
      labels.push_back(p.name() + " " + sizes[k]);
      pngs.push_back(png);
    }
  }
  const std::vector<ChildResult> drawn = run_jobs(commands, b.jobs);
  out << "-- render --\n";
  for (size_t i = 0; i < drawn.size(); ++i) {
    if (drawn[i].status == 0) {
      out << "preview " << labels[i] << " → " << pngs[i] << "\n";
    } else {
      const std::vector<std::string> lines = split_lines(strip_space(drawn[i].err));
      out << "  [X] preview " << labels[i] << ": json2img exit=" << drawn[i].status
          << (lines.empty() ? "" : " " + lines.back()) << "\n";
    }
  }
}

// The table of every page at every size, the picture clashes and the totals.
void print_summary(const Build& b, double seconds, std::ostream& out) {
  std::vector<SummaryRow> rows;
  size_t recomposed = 0;
  long long notes = 0;
  for (const Page& p : b.pages) {
    recomposed += p.compose;
    if (!p.compose) {
      for (const std::string& s : p.sizes) rows.push_back({p.name(), s, true});
      continue;
    }
    for (const SizeRecord& s : p.record.sizes) {
      rows.push_back({p.name(), s.size, false, s.controls, s.pictures, s.notes, s.seconds});
      notes += s.notes;
    }
  }
  out << "-- summary --\n" << summary_table(rows);
  for (const Clash& c : b.clashes)
    out << "  [NOTE] picture " << c.picture << " of page " << c.page << " differs from page " << c.first_page
        << "'s of that name → written as " << c.written_as << ", which " << c.page << "'s layouts name\n";
  char took[32];
  std::snprintf(took, sizeof took, "%.2f s", seconds);
  out << b.pages.size() << " pages, " << rows.size() << " layouts: " << recomposed << " composed, "
      << b.pages.size() - recomposed << " up to date; " << took << " with -j " << b.jobs
      << (notes > 0 && !b.o.verbose ? "; -v shows the notes" : "") << "\n";
}

}  // namespace

int build_project(const BuildOptions& o, std::ostream& out, std::ostream& err, bool tty) {
  const auto start = std::chrono::steady_clock::now();
  Build b(o, read_project_file(project_file_path(o.project)));
  b.root = b.pf.root;
  b.tools = tool_dir(b.root);
  base::ProjectLock build_lock(b.tools);  // one build of a project at a time
  const std::string state_path = b.tools + "/build.json";
  b.state = read_build_state(state_path);
  b.stage_root = b.tools + "/stage";
  StageGuard guard{b.stage_root};
  fs::remove_all(b.stage_root);
  b.jobs = o.jobs > 0 ? o.jobs : available_cores();

  plan_pages(b);
  const std::string refusals = compose_pages(b, out, tty);
  if (!refusals.empty()) {
    size_t refused = 0;
    for (const Page& p : b.pages) refused += p.result.status != 0;
    out.flush();
    err << refusals << "compose build: " << refused << " of " << b.pages.size()
        << " pages refused the build; nothing was written\n";
    return 1;
  }
  base::CommitResult done;
  BuildState next = commit_pages(b, done);
  fs::remove_all(b.stage_root);

  // The warnings of each composed page, or its whole report when asked.
  for (const Page& p : b.pages) {
    if (!p.compose) continue;
    const std::string text = o.verbose ? p.result.out : notable_lines(p.result.out);
    if (!text.empty()) out << "== " << p.name() << " (" << p.entry->spec << ") ==\n" << text;
  }
  out << "wrote " << done.written << " files, " << done.unchanged << " unchanged → " << b.root << "\n";
  if (o.prune) {
    const PruneOutcome pruned = prune_pictures(b.root, next.written);
    {
      base::ProjectLock lock(b.root);
      write_file_atomic(state_path, build_state_text(next));
    }
    out << "pruned " << pruned.removed.size() << " pictures that no layout names"
        << (pruned.removed.empty() ? "" : ": " + join(pruned.removed, ", ")) << "\n";
  }
  if (o.render) render_previews(b, out);
  if (o.check) {
    out << "-- check_all --\n" << std::flush;
    out << check_section(run_captured(tool_argv("check_all", {b.root})));
  }
  print_summary(b, std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count(), out);
  return 0;
}

}  // namespace ub
