// Every function of the language through the engine, text in, series out: nanoseconds a bar, and the ratio to
// both yardsticks, which run between the evaluations on the same bars.

#include <benchmark/benchmark.h>

#include <algorithm>
#include <string>
#include <vector>

#include "bench/bars.h"
#include "bench/language.h"
#include "bench/measure.h"
#include "bench/sample_call.h"
#include "bench/yardstick.h"
#include "trovenu/formula/calc.h"
#include "trovenu/formula/words.h"

namespace trovenu::bench {
namespace {

void EvaluateFormula(benchmark::State &state, const std::string &formula) {
  Bars &bars = SharedBars(static_cast<int>(state.range(0)));
  SCalc calc;
  bars.Bind(calc);
  SVector scratch(bars.close.GetSize());
  std::vector<double> formulaTimes;
  std::vector<double> copyTimes;
  std::vector<double> runningTimes;
  const auto evaluate = [&] {
    calc.SetExpression(formula.c_str());
    const SVector result = calc.Calculate();
    benchmark::DoNotOptimize(result.data);
  };
  evaluate();
  if (calc.errorCount > 0) {
    state.SkipWithError("the formula is not sound");
    return;
  }
  for (auto _ : state) {
    const double seconds = ProcessorSeconds(evaluate);
    state.SetIterationTime(seconds);
    formulaTimes.push_back(seconds);
    copyTimes.push_back(ProcessorSeconds([&] { CopySeries(bars.close, scratch); }));
    runningTimes.push_back(ProcessorSeconds([&] { RunningMean(bars.close, scratch); }));
    benchmark::DoNotOptimize(scratch.data);
  }
  const double time = Median(formulaTimes);
  state.counters["ns_bar"] = time * 1e9 / static_cast<double>(state.range(0));
  state.counters["per_R"] = time / std::max(Median(copyTimes), 1e-12);
  state.counters["per_T"] = time / std::max(Median(runningTimes), 1e-12);
}

void Register(const std::string &formula) {
  benchmark::RegisterBenchmark(("language/" + formula).c_str(), EvaluateFormula, formula)
      ->Arg(1000)
      ->Arg(10000)
      ->Arg(100000)
      ->Arg(1000000)
      ->UseManualTime()
      ->MinTime(0.02);
}

}  // namespace

void RegisterLanguage() {
  for (const std::string &formula : SampleCalls()) Register(formula);
  for (const char *formula : {"c+o", "(c-o)/(h-l)*v+3", "c>o&&v>1000", "crossup(avg(c,5),avg(c,20))",
                              "x=avg(c,20); y=stdev(c,20); (c-x)/y"}) {
    Register(formula);
  }
}

}  // namespace trovenu::bench
