#pragma once

#include <chrono>
#include <cstddef>
#include <mutex>

namespace trovenu::tool {

/// A line on standard error that tells how far some work is, on a terminal alone: a bar, steps done, steps a
/// second and the time left. It goes when the object goes. All functions may be called from any thread.
class Progress {
 public:
  using Clock = std::chrono::steady_clock;

  /// `what` names the steps, as "runs".
  Progress(std::size_t steps, const char *what);
  ~Progress();
  Progress(const Progress &) = delete;
  Progress &operator=(const Progress &) = delete;

  /// One step is done.
  void Step();
  /// So many steps are done.
  void Show(std::size_t done);
  /// Takes the line away until the next step.
  void Clear();
  /// Time that does not count as work.
  void AddPause(Clock::duration pause);

 private:
  void ShowLocked();

  const std::size_t steps_;
  const char *const what_;
  const bool shown_;
  const Clock::time_point start_ = Clock::now();
  std::mutex mutex_;
  std::size_t done_ = 0;
  Clock::time_point last_;
  Clock::duration paused_{};
};

}  // namespace trovenu::tool
