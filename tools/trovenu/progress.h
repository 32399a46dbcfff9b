#pragma once

#include <cstddef>
#include <mutex>

namespace trovenu::tool {

/// A bar on standard error that fills as work gets done, on a terminal alone. It goes when the object goes.
class Progress {
 public:
  explicit Progress(std::size_t steps);
  ~Progress();
  Progress(const Progress &) = delete;
  Progress &operator=(const Progress &) = delete;

  /// One step is done. May be called from any thread.
  void Step();

 private:
  const std::size_t steps_;
  const bool shown_;
  std::mutex mutex_;
  std::size_t done_ = 0;
  std::size_t percent_ = 0;
};

}  // namespace trovenu::tool
