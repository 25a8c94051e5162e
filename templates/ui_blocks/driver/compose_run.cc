#include "driver/compose_run.h"

#include <filesystem>
#include <sstream>

#include "assets/registry.h"
#include "base/output_files.h"
#include "compose.h"
#include "iconlib/iconlib.h"
#include "driver/paths.h"
#include "driver/report.h"
#include "driver/toolchain.h"
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
  const Json spec = parse_spec_text(read_file(path), path);
  if (!spec.is_object()) throw InputError("spec must be a JSON object, got " + type_name(spec) + ": " + path);
  return spec;
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
  iconlib::set_root(paths().repo + "/components/icons");
  const Installation inst{blocks_dir(), load_emit_layer(paths().ui_tools + "/ui_emit/required_keys.json")};
  Composer cmp(std::move(spec), o.page, inst);
  LayoutText layout = cmp.layout();

  // Every file of the run is made in memory first and committed together: a refused page
  // or a failed write leaves the project as it was.
  const std::string ui_dir = layout_dir(project, o.ui_layout, cmp.W, cmp.H);
  const std::string json_path = (fs::path(ui_dir) / (o.page + ".json")).string();
  base::OutputSet files;
  files.add(fs::path(ui_dir).lexically_relative(project).string() + "/" + o.page + ".json", std::move(layout.text));
  std::ostringstream icon_lines;
  size_t pictures = 0;
  if (!o.json_only) {
    files.add_directory("resources/images");
    for (auto& p : render_registry(cmp.assets, icon_lines)) {
      files.add("resources/images/" + p.name, std::move(p.png));
      ++pictures;
    }
    if (!o.no_logic) files.add(logic_path(o.page), logic_text(layout.controls));
  }
  const base::CommitResult done = files.commit(project);

  out << summary_head(cmp) << icon_stats(cmp.icon_uses) << fallback_line(cmp.icon_fallbacks) << notes_lines(cmp.notes);
  if (!o.json_only) {
    out << icon_lines.str();
    out << "出图 " << pictures << " 张 → " << (fs::path(project) / "resources" / "images").string() << "\n";
    if (!o.no_logic) {
      out << "  logic 骨架 → " << (fs::path(project) / logic_path(o.page)).string() << "（"
          << collect_button_caps(layout.controls).size() << " 个按钮回调 + " << collect_edittext_caps(layout.controls).size()
          << " 个输入框回调）\n";
    }
  }
  out << "  → " << json_path << "\n";
  if (done.unchanged > 0) out << "  未变 " << done.unchanged << " 个文件（内容相同，未重写）\n";
  out << control_line(layout.top_level, cmp.control_count);
  out << too_long_lines(cmp.notes);
  out.flush();

  if (o.render) {
    const std::string png = (fs::path(ui_dir) / (o.page + ".render.png")).string();
    std::optional<std::string> font = o.font && !o.font->empty() ? o.font : find_render_font(project);
    std::vector<std::string> args = {json_path, "--page", o.page, "--out", png, "--report"};
    if (font && !font->empty()) {
      args.push_back("--font");
      args.push_back(*font);
    }
    out << render_section(run_captured(tool_argv("json2img", args)), png, cmp.W, cmp.H);
    out.flush();
  }
  if (o.check) {
    out << "-- check_all --\n" << std::flush;
    out << check_section(run_captured(tool_argv("check_all", {project})));
    out.flush();
  }
  return 0;
}

}  // namespace ub
