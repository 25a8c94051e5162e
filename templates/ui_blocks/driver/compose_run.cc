#include "driver/compose_run.h"

#include <filesystem>

#include "compose.h"
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
  Composer cmp(read_spec(o.spec), o.page);
  const Json doc = cmp.document();
  const std::string text = dump_layout(doc);  // before any directory exists: a failure leaves nothing

  const std::string ui_dir = layout_dir(project, o.ui_layout, cmp.W, cmp.H);
  fs::create_directories(ui_dir);
  const std::string json_path = (fs::path(ui_dir) / (o.page + ".json")).string();
  write_file_atomic(json_path, text);

  out << summary_head(cmp) << icon_stats(cmp.icon_uses) << fallback_line(cmp.icon_fallbacks) << notes_lines(cmp.notes);
  if (!o.json_only) {
    const auto made = cmp.emit_assets(project);
    out << "出图 " << made.size() << " 张 → " << (fs::path(project) / "resources" / "images").string() << "\n";
    if (!o.no_logic) {
      const std::string lp = emit_logic(project, o.page, doc);
      out << "  logic 骨架 → " << lp << "（" << collect_button_caps(doc).size() << " 个按钮回调 + "
          << collect_edittext_caps(doc).size() << " 个输入框回调）\n";
    }
  }
  out << "  → " << json_path << "\n";
  out << control_line(doc, cmp.control_count);
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
