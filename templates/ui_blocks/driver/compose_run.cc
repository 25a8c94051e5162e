#include "driver/compose_run.h"

#include <algorithm>
#include <chrono>
#include <filesystem>
#include <iostream>
#include <map>
#include <set>
#include <memory>
#include <sstream>

#include "assets/registry.h"
#include "base/output_files.h"
#include "compose.h"
#include "controls/box_sizes.h"
#include "spec/page_limits.h"
#include "controls/control_types.h"
#include "controls/layout_stream.h"
#include "driver/depfile.h"
#include "driver/design_report.h"
#include "driver/installation.h"
#include "driver/logic_file.h"
#include "iconlib/iconlib.h"
#include "driver/paths.h"
#include "driver/report.h"
#include "driver/run_record.h"
#include "driver/toolchain.h"
#include "logic/data_header.h"
#include "logic/logic.h"
#include "spec/spec_text.h"

namespace fs = std::filesystem;

namespace ub {

namespace {

std::string absolute_path(const std::string& p) {
  std::string s = fs::absolute(p).lexically_normal().string();
  while (s.size() > 1 && s.back() == '/') s.pop_back();
  return s;
}

Json read_spec(const std::string& path) {
  std::error_code ec;
  if (!fs::is_regular_file(path, ec)) throw InputError("spec file not found: " + path);
  Json spec = parse_spec_text(read_file(path), path);
  if (!spec.is_object()) throw InputError("spec must be a JSON object, got " + type_name(spec) + ": " + path);
  return spec;
}

// One composed size and what it adds to the project.
struct SizeRun {
  std::string label;  // "800x480"; empty for the spec's own size
  std::unique_ptr<Composer> cmp;
  LayoutText layout;  // the layout file's text and its control records
  LayoutRoot root;
  bool streamed = false;  // the text is left out: stream_layout writes it at commit time
  std::string ui_dir, json_path;
  std::vector<Picture> pictures;
  std::string icon_lines;  // what drawing the pictures printed
  double seconds = 0;      // composing and drawing
};

// The smallest screen of the page's shape (both sides grown alike, at most the largest
// screen) on which it composes without a negative box; none when even that fails.
std::optional<ScreenSize> smallest_fit(const Json& page, int W, int H, const Options& o, const Installation& inst,
                                       const std::string& project) {
  auto fits = [&](int w, int h) {
    try {
      Composer c(object_of("resolution", object_of("width", w, "height", h), "page", page), o.page, inst, nullptr,
                 project);
      c.run();
    } catch (const ScreenTooSmall&) {
      return false;
    } catch (const std::exception&) {
      // Another fault is not about the screen's size.
    }
    return true;
  };
  auto height_at = [&](long long w) { return (int)std::min<long long>(kMaxScreenSide, (H * w + W - 1) / W); };
  long long lo = W, hi = kMaxScreenSide;  // lo fails; hi is tried below
  if (!fits(kMaxScreenSide, height_at(kMaxScreenSide))) return std::nullopt;
  while (hi - lo > 1) {
    const long long mid = lo + (hi - lo) / 2;
    if (fits((int)mid, height_at(mid))) hi = mid;
    else lo = mid;
  }
  return ScreenSize{(int)hi, height_at(hi)};
}

// Composes at `size` (the spec's own resolution when not given) and draws its pictures.
// With `stream`, a layout that passed its checks may leave its text to the commit.
// `earlier`: the pictures of the sizes composed before (see Composer).
SizeRun compose_size(Json s, const std::optional<ScreenSize>& size, const Options& o, const Installation& inst,
                     const std::string& project, bool stream = false, const AssetMap* earlier = nullptr) {
  const auto start = std::chrono::steady_clock::now();
  SizeRun r;
  if (size) {
    r.label = size_label(*size);
    s["resolution"] = Json{{"width", size->w}, {"height", size->h}};
  }
  r.cmp = std::make_unique<Composer>(std::move(s), o.page, inst, earlier, project);
  try {
    if (stream) {
      CheckedLayout c = r.cmp->checked_layout();
      r.layout = std::move(c.layout);
      r.root = c.root;
      r.streamed = c.streamed;
    } else {
      r.layout = r.cmp->layout();
    }
  } catch (const ScreenTooSmall& e) {
    const auto fit = smallest_fit(r.cmp->page(), r.cmp->context().W, r.cmp->context().H, o, inst, project);
    throw InputError(cat(e.what(), fit ? "; the smallest screen of its shape that works is " + size_label(*fit)
                                        : std::string("; no screen size fits it")));
  }
  r.ui_dir = layout_dir(project, size && o.ui_layout != "flat" ? "res" : o.ui_layout, r.cmp->context().W,
                        r.cmp->context().H);
  r.json_path = (fs::path(r.ui_dir) / (o.page + ".json")).string();
  if (!o.json_only) {
    std::ostringstream log;
    r.pictures = render_registry(r.cmp->pictures().all(), inst.icons, log);
    r.icon_lines = log.str();
  }
  r.seconds = std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count();
  return r;
}

// The report line of the data header: the file and what it holds.
std::string data_line(const std::string& project, const std::string& page, const PageData& d) {
  size_t rows = 0, columns = 0, values = 0;
  for (const ListData& l : d.lists) rows += l.rows.size();
  for (const WheelData& w : d.wheels) {
    columns += w.columns.size();
    for (const auto& c : w.columns) values += c.size();
  }
  return cat("  列表/滚轮数据 → ", (fs::path(project) / data_header_path(page)).string(), "（", d.lists.size(),
             " 个列表 ", rows, " 行 + ", columns, " 个滚轮列 ", values, " 个值）\n");
}

// The report of one size up to its control line, as a single run prints it.
std::string size_report(const SizeRun& r, const Options& o, const std::string& project, int unchanged,
                        const std::string& logic_note) {
  const Composer& cmp = *r.cmp;
  std::ostringstream out;
  out << summary_head(cmp.context(), cmp.content_h()) << icon_stats(cmp.pictures().uses())
      << fallback_icon_lines(cmp.pictures().fallbacks()) << fallback_line(cmp.pictures().fallbacks())
      << notes_lines(cmp.notes().all());
  if (!o.json_only) {
    out << r.icon_lines;
    out << "出图 " << r.pictures.size() << " 张 → " << (fs::path(project) / "resources" / "images").string() << "\n";
    if (!o.no_logic) {
      out << "  logic 骨架 → " << (fs::path(project) / logic_path(o.page)).string() << "（"
          << collect_button_caps(r.layout.controls).size() << " 个按钮回调 + " << collect_edittext_caps(r.layout.controls).size()
          << " 个输入框回调）" << logic_note << "\n";
    }
    out << data_line(project, o.page, cmp.data());
  }
  out << "  → " << r.json_path << "\n";
  if (unchanged > 0) out << "  未变 " << unchanged << " 个文件（内容相同，未重写）\n";
  out << control_line(r.layout.top_level, cmp.control_count());
  out << too_long_lines(cmp.notes().all());
  out << design_lint_lines(r.streamed ? "" : r.layout.text, r.json_path, r.pictures,
                           (fs::path(project) / "resources" / "images").string(), cmp.context().tok);
  return out.str();
}

// Draws the preview of one size through json2img and returns the render section.
std::string render_size(const SizeRun& r, const Options& o, const std::optional<std::string>& font,
                        std::string& png) {
  png = (fs::path(r.ui_dir) / (o.page + ".render.png")).string();
  std::vector<std::string> args = {r.json_path, "--page", o.page, "--out", png, "--report"};
  if (o.render_full) args.push_back("--full");
  if (o.show_hidden) args.push_back("--show-hidden");
  if (font && !font->empty()) {
    args.push_back("--font");
    args.push_back(*font);
  }
  const PageContext& page = r.cmp->context();
  return render_section(run_captured(tool_argv("json2img", args)), png, page.W, page.H, o.render_full);
}

std::optional<std::string> render_font(const Options& o, const std::string& project) {
  return o.font && !o.font->empty() ? o.font : find_render_font(project);
}

std::string required_keys_path() { return paths().ui_tools + "/ui_emit/required_keys.json"; }

// A staged run (compose build) commits into its staging folder instead of the project.
std::string commit_root(const Options& o, const std::string& project) {
  return o.stage.empty() ? project : absolute_path(o.stage);
}

// The depfile and the run record of a finished run, when asked for.
void write_records(const Options& o, const Installation& inst, const std::string& project,
                   const std::vector<const SizeRun*>& runs) {
  // The data header is an output too (nobody edits it); the logic file is the author's.
  if (o.depfile.empty() && o.run_record.empty()) return;
  RunRecord rec;
  // The icons read, then the project's own pictures the pages showed.
  std::vector<std::string> pictures_read = inst.icons.files_read();
  for (const SizeRun* r : runs)
    for (const std::string& f : r->cmp->data().shipped)
      if (std::find(pictures_read.begin(), pictures_read.end(), f) == pictures_read.end()) pictures_read.push_back(f);
  rec.inputs = run_inputs(o.spec, blocks_dir(), required_keys_path(), pictures_read,
                          o.render ? render_font(o, project) : std::nullopt, o.tokens);
  std::vector<std::string> layouts;
  for (const SizeRun* r : runs) {
    const Composer& cmp = *r->cmp;
    layouts.push_back(r->json_path);
    rec.sizes.push_back({cat(cmp.context().W, "x", cmp.context().H),
                         fs::path(r->json_path).lexically_relative(project).string(), cmp.control_count(),
                         (long long)r->pictures.size(), (long long)cmp.notes().all().size(), r->seconds});
  }
  auto put = [](const std::string& path, const std::string& text) {
    const fs::path parent = fs::absolute(path).parent_path();
    fs::create_directories(parent);
    write_file_atomic(path, text);
  };
  if (!o.json_only) layouts.push_back((fs::path(project) / data_header_path(o.page)).string());
  if (!o.depfile.empty()) put(o.depfile, depfile_text(layouts, rec.inputs));
  if (!o.run_record.empty()) put(o.run_record, run_record_text(rec));
}

std::string check_stage(const std::string& project) {
  return check_section(run_captured(tool_argv("check_all", {project})));
}

// The process ends after its run: the page is left to the exit, as freeing a large page's
// controls one by one costs about as much as writing them.
void keep_until_exit(SizeRun&& r) {
  static auto* kept = new std::vector<SizeRun>();
  kept->push_back(std::move(r));
}

int single_run(Json spec, const Options& o, const Installation& inst, const std::string& project, std::ostream& out) {
  SizeRun r = compose_size(std::move(spec), std::nullopt, o, inst, project, true);
  std::cerr << required_keys_warning(inst.required_keys);

  // Every file of the run is made first (the layout's text may be written during the
  // commit, its page having passed every check) and committed together: a refused page
  // or a failed write leaves the project as it was.
  base::OutputSet files;
  const std::string layout_rel = fs::path(r.ui_dir).lexically_relative(project).string() + "/" + o.page + ".json";
  if (r.streamed) {
    files.add_stream(layout_rel, [&r](const base::Sink& put) {
      stream_layout(r.root, r.layout.nodes, r.cmp->required_keys(), put);
    });
  } else {
    files.add(layout_rel, std::move(r.layout.text));
  }
  if (!o.json_only) {
    files.add_directory("resources/images");
    for (auto& p : r.pictures) files.add("resources/images/" + p.name, std::move(p.png));
  }
  if (!o.json_only) files.add(data_header_path(o.page), data_header_text(o.page, r.cmp->data()));
  std::optional<LogicPlan> logic;
  if (!o.json_only && !o.no_logic) {
    logic = plan_logic(project, o.page, page_callbacks(r.layout.controls), o.write_conflicts);
    add_logic(files, o.page, *logic);
  }
  // Held until the run ends: the preview and the checks see the files as this run left them.
  const base::ProjectLock lock(commit_root(o, project));
  const base::CommitResult done = files.commit(lock);
  write_records(o, inst, project, {&r});

  out << size_report(r, o, project, done.unchanged, logic ? logic_status(*logic, o.page) : "");
  out.flush();

  if (o.render) {
    std::string png;
    out << render_size(r, o, render_font(o, project), png);
    out.flush();
  }
  if (o.check) {
    out << "-- check_all --\n" << std::flush;
    out << check_stage(project);
    out.flush();
  }
  keep_until_exit(std::move(r));
  return 0;
}

// A stop or bad input at one size names the size on a line of its own after the message.
template <typename F>
auto at_size(const std::string& label, F&& f) -> decltype(f()) {
  try {
    return f();
  } catch (const StopError& e) {
    throw StopError(std::string(e.what()) + "\n  at size " + label);
  } catch (const InputError& e) {
    throw InputError(std::string(e.what()) + "\n  at size " + label);
  }
}

// One logic file for all sizes. Captions come from block names, not from the screen, so the
// sizes normally agree; when they do not, the file holds the callbacks of every size in the
// order first met, and `note` says which sizes lack some.
PageCallbacks union_callbacks(const std::vector<SizeRun>& runs, std::string& note) {
  std::vector<PageCallbacks> each;
  for (const SizeRun& r : runs)
    each.push_back(at_size(r.label, [&] {
      PageCallbacks c = page_callbacks(r.layout.controls);
      logic_text(c);  // refuses duplicate captions, naming the size
      return c;
    }));
  auto same = [&](const PageCallbacks& c) { return c.buttons == each.front().buttons && c.edits == each.front().edits; };
  if (std::all_of(each.begin(), each.end(), same)) return each.front();
  PageCallbacks all;
  auto add = [](std::vector<std::string>& to, const std::vector<std::string>& caps) {
    for (const auto& c : caps)
      if (std::find(to.begin(), to.end(), c) == to.end()) to.push_back(c);
  };
  for (const PageCallbacks& c : each) {
    add(all.buttons, c.buttons);
    add(all.edits, c.edits);
  }
  std::vector<std::string> lacking;
  for (size_t i = 0; i < runs.size(); ++i)
    if (each[i].buttons.size() != all.buttons.size() || each[i].edits.size() != all.edits.size())
      lacking.push_back(runs[i].label);
  note = cat("各尺寸的回调不同（", join(lacking, "、"), " 缺一部分）→ logic 骨架取所有尺寸的并集");
  return all;
}

// One data header for all sizes: rows and values come from the spec alone, but a row's
// icon picture carries the icon size of its screen. Where the sizes name different
// pictures the header takes the first size's, and `note` says so.
const PageData& shared_data(const std::vector<SizeRun>& runs, const std::string& page, std::string& note) {
  const PageData& first = runs.front().cmp->data();
  std::vector<std::string> others;
  for (const SizeRun& r : runs)
    if (!(r.cmp->data() == first)) others.push_back(r.label);
  if (!others.empty())
    note = cat("列表行图标的图片随尺寸不同（", join(others, "、"), " 与 ", runs.front().label, " 不同）→ ",
               data_header_path(page), " 用 ", runs.front().label, " 的图片名");
  return first;
}

int sizes_run(const Json& spec, const Options& o, const Installation& inst, const std::string& project,
              std::ostream& out) {
  // Each size's pictures take names the sizes before it left free or gave the same picture.
  std::vector<SizeRun> runs;
  AssetMap earlier;
  for (const ScreenSize& s : o.sizes) {
    runs.push_back(at_size(size_label(s), [&] { return compose_size(spec, s, o, inst, project, false, &earlier); }));
    const AssetMap& mine = runs.back().cmp->pictures().all();
    earlier.insert(mine.begin(), mine.end());
  }
  std::cerr << required_keys_warning(inst.required_keys);

  base::OutputSet files;
  for (const SizeRun& r : runs)
    files.add(fs::path(r.ui_dir).lexically_relative(project).string() + "/" + o.page + ".json", r.layout.text);
  std::string logic_note;
  if (!o.json_only) {
    // Picture names carry their sizes, so sizes share most pictures; a name the sizes share
    // holds one picture.
    files.add_directory("resources/images");
    std::set<std::string> written;
    for (const SizeRun& r : runs)
      for (const Picture& p : r.pictures)
        if (written.insert(p.name).second) files.add("resources/images/" + p.name, p.png);
  }
  std::string data_note;
  if (!o.json_only) files.add(data_header_path(o.page), data_header_text(o.page, shared_data(runs, o.page, data_note)));
  std::optional<LogicPlan> logic;
  if (!o.json_only && !o.no_logic) {
    logic = plan_logic(project, o.page, union_callbacks(runs, logic_note), o.write_conflicts);
    add_logic(files, o.page, *logic);
  }
  // Held until the run ends: the preview and the checks see the files as this run left them.
  const base::ProjectLock lock(commit_root(o, project));
  const base::CommitResult done = files.commit(lock);
  const std::string logic_line_note = logic ? logic_status(*logic, o.page) : "";
  std::vector<const SizeRun*> done_runs;
  for (const SizeRun& r : runs) done_runs.push_back(&r);
  write_records(o, inst, project, done_runs);

  const std::optional<std::string> font = o.render ? render_font(o, project) : std::nullopt;
  std::vector<std::string> sheet_items;
  for (const SizeRun& r : runs) {
    out << "==== " << r.label << " ====\n" << size_report(r, o, project, 0, logic_line_note);
    out.flush();
    if (o.render) {
      std::string png;
      out << render_size(r, o, font, png);
      sheet_items.push_back(r.label + "=" + png);
      out.flush();
    }
  }
  out << "==== " << runs.size() << " 个尺寸 ====\n";
  if (!logic_note.empty()) out << "  [NOTE] " << logic_note << "\n";
  if (!data_note.empty()) out << "  [NOTE] " << data_note << "\n";
  if (done.unchanged > 0) out << "  未变 " << done.unchanged << " 个文件（内容相同，未重写）\n";
  if (o.render) {
    const std::string sheet = (fs::path(project) / "ui" / (o.page + ".sizes.png")).string();
    std::vector<std::string> args = {"--sheet", "--out", sheet};
    if (font && !font->empty()) args.insert(args.end(), {"--font", *font});
    args.insert(args.end(), sheet_items.begin(), sheet_items.end());
    out << sheet_line(run_captured(tool_argv("json2img", args)), sheet);
    out.flush();
  }
  if (o.check) {
    // check_all reads the whole project at once, all sizes together.
    out << "-- check_all --\n" << std::flush;
    out << check_stage(project);
    out.flush();
  }
  return 0;
}

}  // namespace

std::string layout_dir(const std::string& project, const std::string& ui_layout, int W, int H) {
  const std::string res_dir = cat(W, "x", H);
  fs::path ui_dir = fs::path(project) / "ui";
  std::string layout = ui_layout;
  if (layout == "auto") layout = fs::is_directory(ui_dir / res_dir) ? "res" : "flat";
  if (layout == "res") ui_dir /= res_dir;
  return ui_dir.string();
}

int compose_run(const Options& o, std::ostream& out) {
  const std::string project = absolute_path(o.project);
  Json spec = read_spec(o.spec);
  const Installation inst = installation(run_tokens(o.tokens));
  return o.sizes.empty() ? single_run(std::move(spec), o, inst, project, out)
                         : sizes_run(spec, o, inst, project, out);
}

}  // namespace ub
