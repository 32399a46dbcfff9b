#include "tools/trovenu/progress.h"

#include <cstdio>
#include <string>

#include "trovenu/platform/terminal.h"

namespace trovenu::tool {

namespace {

constexpr std::size_t kWidth = 40;

}  // namespace

Progress::Progress(std::size_t steps) : steps_(steps), shown_(steps > 0 && ErrorsGoToTerminal()) {}

Progress::~Progress() {
  if (shown_) std::fprintf(stderr, "\r%*s\r", static_cast<int>(kWidth) + 8, "");
}

void Progress::Step() {
  if (!shown_) return;
  const std::lock_guard lock(mutex_);
  const std::size_t percent = ++done_ * 100 / steps_;
  if (percent == percent_) return;
  percent_ = percent;
  std::string bar(kWidth, ' ');
  bar.replace(0, percent * kWidth / 100, percent * kWidth / 100, '#');
  std::fprintf(stderr, "\r[%s] %3u%%", bar.c_str(), static_cast<unsigned>(percent));
  std::fflush(stderr);
}

}  // namespace trovenu::tool
