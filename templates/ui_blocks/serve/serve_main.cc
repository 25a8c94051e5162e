#include "serve/serve_main.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <unistd.h>

#include <algorithm>
#include <atomic>
#include <cerrno>
#include <filesystem>
#include <thread>

#include "driver/cli.h"
#include "serve/http_server.h"
#include "serve/preview_state.h"
#include "serve/recompose.h"
#include "serve/watcher.h"

namespace fs = std::filesystem;

namespace serve {

namespace {

int g_stop_pipe[2] = {-1, -1};

void on_signal(int) {
  const char b = 1;
  [[maybe_unused]] ssize_t n = write(g_stop_pipe[1], &b, 1);
}

void compose_all(const std::vector<RunPlan>& plans, const std::string& page, PreviewState& state,
                 std::ostream& out) {
  size_t view = 0;
  for (const RunPlan& plan : plans) {
    const std::vector<RunOutcome> outcomes = run_views(plan, page);
    auto bad = std::find_if(outcomes.begin(), outcomes.end(), [](const RunOutcome& r) { return !r.ok; });
    out << (bad == outcomes.end() ? "composed " + plan.label : "refused " + plan.label + ": " + bad->stop) << "\n"
        << std::flush;
    for (const RunOutcome& r : outcomes) state.update(view++, r);
  }
}

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
  o.spec = fs::absolute(o.spec).lexically_normal().string();
  o.project = fs::absolute(o.project).lexically_normal().string();

  const std::vector<RunPlan> plans = plan_runs(compose_exe, o);
  PreviewState state(view_labels(plans));
  compose_all(plans, o.page, state, out);

  HttpServer server(state, (fs::path(o.project) / "resources" / "images").string());
  const int port = server.bind(o.port);
  if (port < 0) {
    err << "compose: error: cannot listen on 127.0.0.1:" << o.port << "\n";
    return 1;
  }

  if (pipe2(g_stop_pipe, O_CLOEXEC) != 0) {
    err << "compose: error: cannot set up the stop signal\n";
    return 1;
  }
  struct sigaction sa {};
  sa.sa_handler = on_signal;
  sigemptyset(&sa.sa_mask);
  sigaction(SIGINT, &sa, nullptr);
  sigaction(SIGTERM, &sa, nullptr);
  signal(SIGPIPE, SIG_IGN);

  std::atomic<bool> stopping{false}, server_done{false};
  std::thread stopper([&] {
    pollfd p{g_stop_pipe[0], POLLIN, 0};
    while (poll(&p, 1, -1) < 0 && errno == EINTR) {
    }
    stopping = true;
    state.close();
    // A stop that comes before the server has started listening would be lost: repeat it.
    while (!server_done) {
      server.stop();
      usleep(50 * 1000);
    }
  });
  std::thread composer([&] {
    Watcher watcher(o.spec, blocks_dir);
    if (!watcher.ok()) err << "compose: warning: cannot watch for saves; the preview will not update\n";
    while (!stopping)
      if (watcher.wait(200) && !stopping) compose_all(plans, o.page, state, out);
  });

  out << "serving http://127.0.0.1:" << port << "/  (Ctrl-C stops)\n" << std::flush;
  server.run();
  server_done = true;

  on_signal(0);  // the server may also end on its own
  stopper.join();
  composer.join();
  close(g_stop_pipe[0]);
  close(g_stop_pipe[1]);
  out << "stopped\n" << std::flush;
  return 0;
}

}  // namespace serve
