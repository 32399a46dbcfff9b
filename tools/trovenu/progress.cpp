#include "tools/trovenu/progress.h"

#include <algorithm>
#include <cstdio>
#include <string>

#include "trovenu/platform/terminal.h"

namespace trovenu::tool {

namespace {

constexpr std::size_t kWidth = 30;
constexpr auto kLeastInterval = std::chrono::milliseconds(100);

}  // namespace

Progress::Progress(std::size_t steps, const char *what)
    : steps_(steps), what_(what), shown_(steps > 0 && ErrorsGoToTerminal()) {}

Progress::~Progress() { Clear(); }

void Progress::Step() {
  const std::lock_guard lock(mutex_);
  ++done_;
  ShowLocked();
}

void Progress::Show(std::size_t done) {
  const std::lock_guard lock(mutex_);
  done_ = done;
  ShowLocked();
}

void Progress::Clear() {
  const std::lock_guard lock(mutex_);
  if (shown_) std::fprintf(stderr, "\r\x1b[K");
}

void Progress::AddPause(Clock::duration pause) {
  const std::lock_guard lock(mutex_);
  paused_ += pause;
}

void Progress::ShowLocked() {
  const Clock::time_point now = Clock::now();
  if (!shown_ || done_ == 0 || now - last_ < kLeastInterval) return;
  last_ = now;
  const double rate =
      static_cast<double>(done_) / std::chrono::duration<double>(now - start_ - paused_).count();
  const std::size_t rest = steps_ - std::min(done_, steps_);
  const auto left = static_cast<long long>(static_cast<double>(rest) / rate);
  const std::size_t filled = std::min(
      static_cast<std::size_t>(static_cast<double>(done_) * kWidth / static_cast<double>(steps_)), kWidth);
  const std::string bar = std::string(filled, '#') + std::string(kWidth - filled, ' ');
  std::fprintf(stderr, "\r[%s] %zu of %zu %s, %.0f a second, %lld:%02lld left\x1b[K", bar.c_str(), done_,
               steps_, what_, rate, left / 60, left % 60);
  std::fflush(stderr);
}

}  // namespace trovenu::tool
