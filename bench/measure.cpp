#include "bench/measure.h"

#include <algorithm>
#include <cstddef>
#include <cstdio>
#include <cstdlib>
#include <new>
#include <string_view>

#if defined(__unix__)
#include <sys/resource.h>
#include <time.h>
#endif

#include "bench/yardstick.h"
#include "trovenu/support/block_pool.h"

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

long PageFaults() {
#if defined(__unix__)
  rusage usage{};
  getrusage(RUSAGE_SELF, &usage);
  return usage.ru_minflt + usage.ru_majflt;
#else
  return 0;
#endif
}

// The series that a formula reads first.
const SVector &DataOf(std::string_view formula, const Bars &bars) {
  const std::size_t call = formula.find('(');
  const char first = call < formula.size() ? formula[call + 1] : 'c';
  return first == 'h' ? bars.high : first == 'l' ? bars.low : bars.close;
}

}  // namespace

std::vector<double> MeasureInTurn(int bars, const std::vector<std::function<void()>> &pieces) {
  const int repetitions = std::clamp(3'000'000 / std::max(bars, 1), 11, 101) | 1;
  // Short pieces are timed several at once, the clock costs something too.
  const int together = std::max(1, 100'000 / std::max(bars, 1));
  std::vector<std::vector<double>> times(pieces.size());
  for (std::vector<double> &own : times) own.reserve(static_cast<std::size_t>(repetitions));
  for (int i = 0; i < 3; ++i) {
    for (const auto &piece : pieces) piece();
  }
  for (int i = 0; i < repetitions; ++i) {
    for (std::size_t k = 0; k < pieces.size(); ++k) {
      const auto repeat = [&] {
        for (int j = 0; j < together; ++j) pieces[k]();
      };
      times[k].push_back(ProcessorSeconds(std::ref(repeat)) / together);
    }
  }
  std::vector<double> medians;
  for (const std::vector<double> &own : times) medians.push_back(Median(own) * 1e9 / std::max(bars, 1));
  return medians;
}

double Median(std::vector<double> values) {
  if (values.empty()) return 0.0;
  const auto middle = values.begin() + static_cast<std::ptrdiff_t>(values.size() / 2);
  std::nth_element(values.begin(), middle, values.end());
  return *middle;
}

double ProcessorSeconds(const std::function<void()> &work) {
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

Cost MeasureFormula(SCalc &calc, const char *formula, Bars &bars) {
  const auto evaluate = [&calc, formula] {
    calc.SetExpression(formula);
    const SVector result = calc.Calculate();
    if (calc.errorCount == 0) return;
    std::fprintf(stderr, "a formula with a fault: %s\n", formula);
    std::exit(1);
  };
  const SVector &data = DataOf(formula, bars);
  SVector scratch(data.GetSize());
  const std::vector<double> times = MeasureInTurn(
      data.GetSize(), {evaluate, [&] { RunningMean(data, scratch); }, [&] { CopySeries(data, scratch); }});
  const unsigned long long blocksBefore = AllocatedBlockCount();
  const unsigned long long allocationsBefore = allocations;
  const long faultsBefore = PageFaults();
  constexpr int kEvaluations = 20;
  for (int i = 0; i < kEvaluations; ++i) evaluate();
  const long faults = PageFaults() - faultsBefore;
  return {times[0],
          times[0] / times[1],
          times[0] / times[2],
          AllocatedBlockCount() - blocksBefore,
          allocations - allocationsBefore,
          faults};
}

}  // namespace trovenu::bench
