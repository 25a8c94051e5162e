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

std::string label_of(const ScreenSize& s) { return size_label(s); }

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
  for (const ScreenSize& s : e.sizes) out.push_back(label_of(s));
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
                                       bool write_conflicts) {
  std::vector<std::string> argv = {self_exe(),  p.entry->spec_path, "--project", root,          "--page",
                                   p.name(),    "--ui-layout",      mode,        "--stage",     p.stage,
                                   "--run-record", p.stage + ".run.json"};
  if (!p.entry->sizes.empty()) {
    argv.push_back("--sizes");
    argv.push_back(join(p.sizes, ","));
  }
  if (write_conflicts) argv.push_back("--write-conflicts");
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

}  // namespace

int build_project(const BuildOptions& o, std::ostream& out, std::ostream& err, bool tty) {
  const auto start = std::chrono::steady_clock::now();
  const ProjectFile pf = read_project_file(project_file_path(o.project));
  const std::string root = pf.root;
  const std::string tools = tool_dir(root);
  base::ProjectLock build_lock(tools);  // one build of a project at a time
  const std::string state_path = tools + "/build.json";
  BuildState state = read_build_state(state_path);
  const std::string stage_root = tools + "/stage";
  StageGuard guard{stage_root};
  fs::remove_all(stage_root);

  const std::optional<std::string> font =
      o.render ? (o.font && !o.font->empty() ? o.font : find_render_font(root)) : std::nullopt;
  // Files every page reads besides its own: the tool, the block library's folder (a block
  // file added or removed) and the theme.
  std::vector<FileStamp> common = {stamp_of(self_exe()), stamp_of(blocks_dir())};
  if (pf.theme) common.push_back(stamp_of(*pf.theme));

  std::vector<Page> pages(pf.pages.size());
  for (size_t i = 0; i < pages.size(); ++i) {
    Page& p = pages[i];
    p.entry = &pf.pages[i];
    auto it = state.pages.find(p.name());
    p.stamp = it == state.pages.end() ? nullptr : &it->second;
    p.sizes = page_sizes(*p.entry, p.stamp);
    p.stage = stage_root + "/" + p.name();
  }
  const std::string mode = layout_mode(pf, pages);
  std::vector<std::string> explicit_sizes;
  for (Page& p : pages) {
    explicit_sizes.clear();
    for (const ScreenSize& s : p.entry->sizes) explicit_sizes.push_back(label_of(s));
    p.config = Json(object_of("spec", p.entry->spec_path, "sizes", explicit_sizes, "ui_layout", mode, "theme",
                                     pf.theme.value_or(""))).dump();
    p.compose = o.force || !up_to_date(p, root);
  }

  const int jobs = o.jobs > 0 ? o.jobs : available_cores();
  std::vector<Clash> clashes;
  std::set<std::string> refused;
  std::string refusals;
  size_t composed = 0;
  // Composes the pages marked and not yet composed; a page whose picture names change
  // because an earlier page took one of them is composed in a second round.
  while (true) {
    std::vector<Page*> todo;
    for (Page& p : pages)
      if (p.compose && p.record.sizes.empty() && !refused.count(p.name()) && p.result.status == 0) todo.push_back(&p);
    if (todo.empty()) break;
    std::vector<std::vector<std::string>> commands;
    for (Page* p : todo) {
      stage_logic(*p, root);
      commands.push_back(child_command(*p, root, mode, o.write_conflicts));
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
    std::vector<ChildResult> results = run_jobs(commands, jobs, tty ? JobEvent(event) : JobEvent());
    if (tty) out << "\r\033[K" << std::flush;
    composed += todo.size();
    for (size_t i = 0; i < todo.size(); ++i) {
      Page& p = *todo[i];
      p.result = std::move(results[i]);
      if (p.result.status != 0) {
        refused.insert(p.name());
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
    if (!refused.empty()) break;
    std::vector<PagePictures> claims;
    for (const Page& p : pages) claims.push_back({p.name(), p.compose ? p.pictures : p.stamp->pictures, {}});
    clashes = assign_picture_names(claims);
    for (size_t i = 0; i < pages.size(); ++i) {
      Page& p = pages[i];
      p.renamed = std::move(claims[i].renamed);
      if (!p.compose && p.renamed != p.stamp->renamed) p.compose = true;
    }
  }
  if (!refused.empty()) {
    out.flush();
    err << refusals << "compose build: " << refused.size() << " of " << pages.size()
        << " pages refused the build; nothing was written\n";
    return 1;
  }

  // Every staged file goes into the project in one commit, with the new build state.
  base::OutputSet files;
  std::map<std::string, std::pair<std::string, std::string>> added;  // file -> digest, page
  BuildState next;
  next.written = state.written;
  for (Page& p : pages) {
    if (!p.compose) {
      next.pages[p.name()] = *p.stamp;
      continue;
    }
    PageStamp ps;
    ps.config = p.config;
    ps.sizes = p.sizes;
    for (const SizeRecord& s : p.record.sizes) ps.layouts.push_back(s.layout);
    for (const std::string& f : p.record.inputs) ps.inputs.push_back(stamp_of(f));
    ps.inputs.insert(ps.inputs.end(), common.begin(), common.end());
    ps.pictures = p.pictures;
    ps.renamed = p.renamed;
    std::set<std::string> layouts;
    for (const SizeRecord& s : p.record.sizes) layouts.insert(s.layout);
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
    for (auto& [rel, was] : p.logic_was) files.require_unchanged(rel, was);
    next.pages[p.name()] = std::move(ps);
  }
  // The tool's own files: its state, and a .gitignore for it (.compose/ also holds the logic
  // files' bases, which belong under version control; the state is this machine's own).
  const std::vector<std::pair<std::string, std::string>> tool_files = {
      {std::string(kToolDir) + "/build.json", build_state_text(next)},
      {std::string(kToolDir) + "/.gitignore", "# compose build: this machine's state\nbuild.json\nstage/\n"}};
  int tool_unchanged = 0;
  for (const auto& [rel, text] : tool_files) {
    if (plain_file(root + "/" + rel) && read_file(root + "/" + rel) == text) ++tool_unchanged;
    files.add(rel, text);
  }
  base::CommitResult done = files.commit(root);
  done.unchanged -= tool_unchanged;  // the summary counts the project's own files
  done.written -= (int)tool_files.size() - tool_unchanged;
  fs::remove_all(stage_root);

  // The notes of each composed page, or its whole report when asked.
  for (const Page& p : pages) {
    if (!p.compose) continue;
    const std::string text = o.verbose ? p.result.out : notable_lines(p.result.out);
    if (!text.empty()) out << "== " << p.name() << " (" << p.entry->spec << ") ==\n" << text;
  }
  for (const Clash& c : clashes)
    out << "  [NOTE] picture " << c.picture << " of page " << c.page << " differs from page " << c.first_page
        << "'s of that name → written as " << c.written_as << ", which " << c.page << "'s layouts name\n";
  out << "wrote " << done.written << " files, " << done.unchanged << " unchanged → " << root << "\n";

  if (o.prune) {
    const PruneOutcome pruned = prune_pictures(root, next.written);
    {
      base::ProjectLock lock(root);
      write_file_atomic(state_path, build_state_text(next));
    }
    out << "pruned " << pruned.removed.size() << " pictures that no layout names"
        << (pruned.removed.empty() ? "" : ": " + join(pruned.removed, ", ")) << "\n";
  }

  if (o.render) {
    std::vector<std::vector<std::string>> commands;
    std::vector<std::string> labels, pngs;
    for (const Page& p : pages) {
      std::vector<std::pair<std::string, std::string>> items;  // size, layout
      if (p.compose) {
        for (const SizeRecord& s : p.record.sizes) items.emplace_back(s.size, s.layout);
      } else {
        for (size_t k = 0; k < p.stamp->sizes.size() && k < p.stamp->layouts.size(); ++k)
          items.emplace_back(p.stamp->sizes[k], p.stamp->layouts[k]);
      }
      for (const auto& [size, layout] : items) {
        const std::string png = (fs::path(root) / layout).replace_filename(p.name() + ".render.png").string();
        // A preview is drawn again when it is missing or older than its layout or the font.
        if (!p.compose && plain_file(png) && stamp_of(png).mtime_ns >= stamp_of(root + "/" + layout).mtime_ns &&
            (!font || stamp_of(png).mtime_ns >= stamp_of(*font).mtime_ns))
          continue;
        std::vector<std::string> args = {root + "/" + layout, "--page", p.name(), "--out", png};
        if (font) args.insert(args.end(), {"--font", *font});
        commands.push_back(tool_argv("json2img", args));
        labels.push_back(p.name() + " " + size);
        pngs.push_back(png);
      }
    }
    const std::vector<ChildResult> drawn = run_jobs(commands, jobs);
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

  if (o.check) {
    out << "-- check_all --\n" << std::flush;
    out << check_section(run_captured(tool_argv("check_all", {root})));
  }

  std::vector<SummaryRow> rows;
  size_t recomposed = 0;
  long long notes = 0;
  for (const Page& p : pages) {
    recomposed += p.compose;
    if (p.compose) {
      for (const SizeRecord& s : p.record.sizes) {
        rows.push_back({p.name(), s.size, false, s.controls, s.pictures, s.notes, s.seconds});
        notes += s.notes;
      }
    } else {
      for (const std::string& s : p.sizes) rows.push_back({p.name(), s, true});
    }
  }
  const double seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
  out << "-- summary --\n" << summary_table(rows);
  char took[32];
  std::snprintf(took, sizeof took, "%.2f s", seconds);
  out << pages.size() << " pages, " << rows.size() << " layouts: " << recomposed << " composed, "
      << pages.size() - recomposed << " up to date; " << took << " with -j " << jobs
      << (notes > 0 && !o.verbose ? "; -v shows the notes" : "") << "\n";
  return 0;
}

}  // namespace ub
