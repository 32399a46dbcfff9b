#include "tools/trovenu/search_watch.h"

#include <atomic>
#include <csignal>
#include <cstdio>
#include <mutex>

#include "tools/trovenu/failure.h"
#include "tools/trovenu/progress.h"
#include "tools/trovenu/report_folder.h"
#include "trovenu/platform/terminal.h"
#include "trovenu/support/table_writer.h"

namespace trovenu::tool {

namespace {

constexpr int kPollMilliseconds = 100;

volatile std::sig_atomic_t interrupts = 0;

extern "C" void CountInterrupt(int signal) {
  interrupts = interrupts + 1;
  std::signal(signal, CountInterrupt);
  LetSignalEndReading(signal);
}

// Ctrl-C is counted while the object lives.
class InterruptCount {
 public:
  InterruptCount() {
    interrupts = 0;
    before_ = std::signal(SIGINT, CountInterrupt);
    LetSignalEndReading(SIGINT);
  }
  ~InterruptCount() { std::signal(SIGINT, before_); }
  InterruptCount(const InterruptCount &) = delete;
  InterruptCount &operator=(const InterruptCount &) = delete;

 private:
  void (*before_)(int);
};

// True to go on.
bool AskToGoOn(long long done, long long total) {
  std::fprintf(stderr, "paused after %lld of %lld runs; go on? [Y/n] ", done, total);
  std::fflush(stderr);
  char answer[16];
  if (std::fgets(answer, sizeof answer, stdin) == nullptr) {
    std::fputc('\n', stderr);
    return false;
  }
  return answer[0] != 'n' && answer[0] != 'N';
}

// Whether the run that `result` tells of has left its tables.
bool HasTables(const SAnsiStringList &result) {
  const long size = result.GetSize();
  FinishedRun run;
  run.figures.TransactionCount = result[size - 11];
  run.summaryRecords = DB(result[size - 2].c_str()).RecordCount;
  run.tradeRecords = DB(result[size - 1].c_str()).RecordCount;
  return run.IsComplete();
}

// A search on its way.
class Watch {
 public:
  Watch(SSimulationMain &search, long long total, SAnsiStringList *systems)
      : total_(total), line_(static_cast<std::size_t>(total), "runs") {
    info_.Thread = &thread_;
    info_.Window = &window_;
    info_.Lock = &lock_;
    info_.FormulaNames = systems;
    const bool started = thread_.Start([this, &search] {
      const unsigned result = search.Calc(&info_);
      ended_ = true;
      return result;
    });
    if (!started) throw Failure("no thread to search on");
  }

  // False once the search is over.
  bool Wait() {
    HostMessage message;
    const bool over = ended_;
    window_.Wait(over ? 0 : kPollMilliseconds, &message);
    // One look serves all the runs that have been done meanwhile.
    while (window_.Wait(0, &message)) {
    }
    SAnsiStringList result;
    {
      const std::lock_guard guard(lock_);
      result = info_.Result;
      done_ = result.GetSize() > 0 ? info_.Current + 1 : 0;
    }
    line_.Show(static_cast<std::size_t>(done_));
    if (done_ > 0 && !HasTables(result)) Stop();
    return !over;
  }

  // Waits until the search rests, and asks. False if it is to end.
  bool PauseAndAsk() {
    const int before = interrupts;
    info_.State = kOptimiserPause;
    while (!ended_ && !thread_.IsSuspended()) {
      HostMessage message;
      window_.Wait(1, &message);
    }
    if (ended_) return true;
    const auto begin = Progress::Clock::now();
    line_.Clear();
    const bool goesOn = interrupts == before && InputIsTerminal() && AskToGoOn(info_.Current + 1, total_) &&
                        interrupts == before;
    line_.AddPause(Progress::Clock::now() - begin);
    return goesOn;
  }

  void GoOn() {
    info_.State = kOptimiserRun;
    thread_.Resume();
  }

  // Ends the search after the run at hand. It may rest once more before it sees the state.
  void Stop() {
    info_.State = kOptimiserCancel;
    while (!ended_) thread_.Resume();
  }

  SearchEnd End() {
    const bool finished = thread_.Join() == 1;
    return {finished, done_};
  }

 private:
  HostWindow window_;
  HostLock lock_;
  tagOPVARTHREADINFO info_;
  std::atomic<bool> ended_ = false;
  const long long total_;
  Progress line_;
  long long done_ = 0;
  // The last member, so that it ends before what it works on.
  HostThread thread_;
};

}  // namespace

SearchEnd WatchSearch(SSimulationMain &search, long long total, SAnsiStringList *systems) {
  const InterruptCount count;
  Watch watch(search, total, systems);
  for (int answered = 0; watch.Wait();) {
    if (interrupts == answered) continue;
    answered = interrupts;
    if (watch.PauseAndAsk()) {
      watch.GoOn();
    } else {
      watch.Stop();
    }
  }
  return watch.End();
}

}  // namespace trovenu::tool
