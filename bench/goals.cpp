#include "bench/goals.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <new>
#include <string>
#include <vector>

#if defined(__unix__)
#include <sys/resource.h>
#include <time.h>
#endif

#include "bench/bars.h"
#include "bench/yardstick.h"
#include "trovenu/formula/calc.h"
#include "trovenu/support/block_pool.h"
#include "trovenu/support/kernels/kernels.h"

namespace {

unsigned long long allocations = 0;

}  // namespace

// Every allocation of the program is counted.
void *operator new(std::size_t size) {
  ++allocations;
  if (void *memory = std::malloc(size > 0 ? size : 1)) return memory;
  throw std::bad_alloc();
}
void operator delete(void *memory) noexcept { std::free(memory); }
void operator delete(void *memory, std::size_t) noexcept { std::free(memory); }

namespace trovenu::bench {
namespace {

struct Goal {
  const char *formula;
  // At most so many T, from 10,000 bars on; 0 for none.
  double baseline;
  double avx2;
  double baselineLarge = 0.0;  // At 1,000,000 bars, where that is another limit.
  double avx2Large = 0.0;
};

// The parameters are those that users take most.
constexpr Goal kGoals[] = {
    {"sum(c,20)", 0.45, 0.30},
    {"avg(c,20)", 0.65, 0.45},
    {"highest(h,20)", 0.45, 0.30},
    {"lowest(l,20)", 0.45, 0.30},
    {"eavg(c,20)", 1.0, 0.7},
    {"wavg(c,20)", 1.05, 0.65},
    {"tavg(c,20)", 1.8, 1.25},
    {"stdev(c,20)", 2.0, 1.15},
    {"rsi(14)", 1.9, 1.4},
    {"cci(14)", 4.0, 2.6},
    {"sar(0.02,0.2)", 3.0, 3.0},
    {"LinearRegressionValue(c,20,0)", 1.4, 0.8},
    {"LinearRegressionSlope(c,20)", 1.1, 0.65},
    {"Correlation(h,l,20)", 5.2, 3.2},
    {"RSquared(c,20)", 6.0, 6.0},
    {"(c-o)/(h-l)*v+3", 1.3, 1.3, 2.6, 2.6},
    {"sum(c,36)", 6.0, 6.0},
    {"sum(c,1000)", 6.0, 6.0},
    {"highest(c,36)", 6.0, 6.0},
    {"highest(c,1000)", 6.0, 6.0},
    {"wavg(c,36)", 6.0, 6.0},
    {"wavg(c,1000)", 6.0, 6.0},
    {"stdev(c,36)", 6.0, 6.0},
    {"stdev(c,1000)", 6.0, 6.0},
    {"LinearRegressionValue(c,36,0)", 6.0, 6.0},
    {"LinearRegressionValue(c,1000,0)", 6.0, 6.0},
    {"Correlation(h,l,36)", 6.0, 6.0},
    {"Correlation(h,l,1000)", 6.0, 6.0},
};

struct Cost {
  double seconds;
  double perT;
  double perR;
  unsigned long long blocks;
  unsigned long long allocations;
  long faults;
};

long PageFaults() {
#if defined(__unix__)
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  return usage.ru_minflt + usage.ru_majflt;
#else
  return 0;
#endif
}

// The processor's time that `work` takes: on a busy machine the clock on the wall also counts the time of
// others.
template <class Work>
double ProcessorSeconds(Work work) {
#if defined(__unix__)
  const auto now = [] {
    timespec time{};
    clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + 1e-9 * static_cast<double>(time.tv_nsec);
  };
  const double begin = now();
  work();
  return now() - begin;
#else
  return Seconds(work);
#endif
}

double Median(std::vector<double> &values) {
  const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
  std::nth_element(values.begin(), middle, values.end());
  return *middle;
}

// Evaluations and yardsticks take turns, so that all of them meet the same moments of a busy machine.
Cost Measure(SCalc &calc, const char *formula, Bars &bars) {
  const int count = bars.close.GetSize();
  const int repetitions = std::clamp(3'000'000 / count, 11, 101) | 1;
  SVector scratch(count);
  const auto evaluate = [&calc, formula] {
    calc.SetExpression(formula);
    const SVector result = calc.Calculate();
    if (calc.errorCount > 0) std::abort();
  };
  // Short evaluations are timed several at once, the clock costs something too.
  const int together = std::max(1, 100'000 / count);
  const auto perCall = [together](const auto &work) {
    return ProcessorSeconds([&] {
             for (int i = 0; i < together; ++i) work();
           }) /
           together;
  };
  std::vector<double> times(static_cast<std::size_t>(repetitions));
  std::vector<double> running(times);
  std::vector<double> copying(times);
  RunningMean(bars.close, scratch);
  for (int i = 0; i < 3; ++i) evaluate();
  const unsigned long long blocksBefore = AllocatedBlockCount();
  const unsigned long long allocationsBefore = allocations;
  const long faultsBefore = PageFaults();
  for (std::size_t i = 0; i < times.size(); ++i) {
    times[i] = perCall(evaluate);
    running[i] = perCall([&] { RunningMean(bars.close, scratch); });
    copying[i] = perCall([&] { CopySeries(bars.close, scratch); });
  }
  const long faults = PageFaults() - faultsBefore;
  const unsigned long long made = allocations - allocationsBefore;
  const double seconds = Median(times);
  return {seconds,
          seconds / Median(running),
          seconds / Median(copying),
          AllocatedBlockCount() - blocksBefore,
          made,
          faults};
}

double Limit(const Goal &goal, Instructions build, int bars) {
  if (bars < 10'000) return 0.0;
  const bool avx2 = build == Instructions::Avx2;
  const double large = avx2 ? goal.avx2Large : goal.baselineLarge;
  return bars >= 1'000'000 && large > 0.0 ? large : avx2 ? goal.avx2 : goal.baseline;
}

}  // namespace

int PrintGoals() {
  bool kept = true;
  const Instructions before = InstructionsInUse();
  std::puts("build\tbars\tformula\tns_bar\tper_T\tper_R\tlimit_T\tkept\tblocks\tallocations\tfaults");
  for (const int count : {1'000, 10'000, 100'000, 1'000'000}) {
    Bars &bars = SharedBars(count);
    SCalc calc;
    bars.Bind(calc);
    for (const Instructions build : {Instructions::Baseline, Instructions::Avx2}) {
      if (!UseInstructions(build)) continue;
      for (const Goal &goal : kGoals) {
        const Cost cost = Measure(calc, goal.formula, bars);
        const double limit = Limit(goal, build, count);
        const bool within = limit == 0.0 || cost.perT <= limit;
        kept = kept && within;
        std::printf("%s\t%d\t%s\t%.3f\t%.2f\t%.2f\t%.2f\t%s\t%llu\t%llu\t%ld\n",
                    build == Instructions::Avx2 ? "avx2" : "baseline", count, goal.formula,
                    cost.seconds * 1e9 / count, cost.perT, cost.perR, limit, within ? "yes" : "NO",
                    cost.blocks, cost.allocations, cost.faults);
        std::fflush(stdout);
      }
    }
  }
  UseInstructions(before);
  return kept ? 0 : 1;
}

}  // namespace trovenu::bench
