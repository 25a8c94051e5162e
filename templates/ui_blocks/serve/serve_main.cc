#include "serve/serve_main.h"

#include <malloc.h>
#include <signal.h>

#include <algorithm>
#include <atomic>
#include <filesystem>
#include <thread>

#include "driver/cli.h"
#include "driver/toolchain.h"
#include "serve/http_server.h"
#include "serve/preview_render.h"
#include "serve/preview_state.h"
#include "serve/recompose.h"
#include "serve/watcher.h"

namespace fs = std::filesystem;

namespace serve {

namespace {

HttpServer* g_server = nullptr;

void on_signal(int) {
  if (g_server) g_server->stop();
}

constexpr std::uintmax_t kKeepLayoutBytes = 4 << 20;

// One composition of every plan, each preview drawn, the state updated once per plan.
struct Composition {
  std::vector<RunPlan> plans;
  std::string page, images_dir;
  PreviewRenderer renderer;

  void run(PreviewState& state, std::ostream& out) {
    size_t view = 0;
    std::uintmax_t layout_bytes = 0;
    for (const RunPlan& plan : plans) {
      std::vector<RunOutcome> outcomes = run_views(plan, page);
      for (RunOutcome& r : outcomes) {
        draw_preview(renderer, images_dir, r);
        std::error_code ec;
        if (r.ok) layout_bytes += fs::file_size(r.layout_path, ec);
      }
      auto bad = std::find_if(outcomes.begin(), outcomes.end(), [](const RunOutcome& r) { return !r.ok; });
      out << (bad == outcomes.end() ? "composed " + plan.label : "refused " + plan.label + ": " + bad->stop) << "\n"
          << std::flush;
      state.update(view, outcomes);
      view += outcomes.size();
    }
    // The layouts read for this version are gone. Small ones leave memory that the next
    // composition takes again (fresh memory is dear to touch); what large ones took goes back
    // to the system, so the server stays near one snapshot.
    if (layout_bytes > kKeepLayoutBytes) malloc_trim(0);
  }
};

}  // namespace

int serve_main(const std::vector<std::string>& args, const std::string& blocks_dir, const std::string& compose_exe,
               std::ostream& out, std::ostream& err) {
  ServeOptions o;
  try {
    o = parse_serve_args(args);
  } catch (const ub::UsageError& e) {
    err << serve_usage() << "compose: error: " << e.what() << "\n";
    return 2;
  }
  std::error_code ec;
  if (!fs::is_regular_file(o.spec, ec)) {
    err << "compose: error: spec file not found: " << o.spec << "\n";
    return 1;
  }
  if (!o.tokens.empty() && !fs::is_regular_file(o.tokens, ec)) {
    err << "compose: error: tokens file not found: " << o.tokens << "\n";
    return 1;
  }
  o.spec = fs::absolute(o.spec).lexically_normal().string();
  o.project = fs::absolute(o.project).lexically_normal().string();
  if (!o.tokens.empty()) o.tokens = fs::absolute(o.tokens).lexically_normal().string();
  const std::string images_dir = (fs::path(o.project) / "resources" / "images").string();

  const std::vector<RunPlan> plans = plan_runs(compose_exe, o);
  PreviewState state(view_labels(plans));
  HttpServer server(state, images_dir);
  int port = 0;
  try {
    port = server.listen(o.port);  // before composing: a port in use writes nothing
  } catch (const ListenError& e) {
    err << "compose: error: " << e.what() << "\n";
    return 1;
  }

  Composition composition{plans, o.page, images_dir, PreviewRenderer(ub::find_render_font(o.project).value_or(""))};
  composition.run(state, out);

  g_server = &server;
  struct sigaction sa {};
  sa.sa_handler = on_signal;
  sigemptyset(&sa.sa_mask);
  sigaction(SIGINT, &sa, nullptr);
  sigaction(SIGTERM, &sa, nullptr);
  signal(SIGPIPE, SIG_IGN);

  std::atomic<bool> stopping{false};
  std::thread composer([&] {
    Watcher watcher(o.spec, blocks_dir, o.tokens);
    if (!watcher.ok()) err << "compose: warning: cannot watch for saves; the preview will not update\n";
    while (!stopping)
      if (watcher.wait(200) && !stopping) composition.run(state, out);
  });

  out << "serving http://127.0.0.1:" << port << "/  (Ctrl-C stops)\n" << std::flush;
  server.run();
  stopping = true;
  composer.join();
  g_server = nullptr;
  out << "stopped\n" << std::flush;
  return 0;
}

}  // namespace serve
