#include "driver/job_pool.h"

#include <sched.h>

#include <algorithm>
#include <atomic>
#include <exception>
#include <mutex>
#include <thread>

namespace ub {

std::vector<ChildResult> run_jobs(const std::vector<std::vector<std::string>>& commands, int jobs,
                                  const JobEvent& event) {
  std::vector<ChildResult> results(commands.size());
  std::atomic<size_t> next{0};
  std::mutex events;
  auto tell = [&](size_t i, bool done) {
    if (!event) return;
    std::lock_guard<std::mutex> hold(events);
    event(i, done);
  };
  // Each worker takes the next command and waits for its child; the children do the work.
  auto worker = [&] {
    for (size_t i; (i = next++) < commands.size();) {
      tell(i, false);
      try {
        results[i] = run_captured(commands[i]);
      } catch (const std::exception& e) {
        results[i] = {-1000, "", e.what()};
      }
      tell(i, true);
    }
  };
  const size_t n = std::min(commands.size(), (size_t)std::max(jobs, 1));
  if (n <= 1) {
    worker();
    return results;
  }
  std::vector<std::thread> workers;
  for (size_t k = 0; k < n; ++k) workers.emplace_back(worker);
  for (auto& w : workers) w.join();
  return results;
}

int available_cores() {
  cpu_set_t set;
  if (sched_getaffinity(0, sizeof set, &set) == 0) return std::max(CPU_COUNT(&set), 1);
  return std::max((int)std::thread::hardware_concurrency(), 1);
}

}  // namespace ub
