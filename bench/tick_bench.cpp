// A live update: one tick changes the newest bar, then `CalcLast`. The time must not grow with the chart.

#include <benchmark/benchmark.h>

#include <initializer_list>

#include "bench/bars.h"
#include "trovenu/indicator/index.h"
#include "trovenu/support/block_pool.h"

namespace trovenu::bench {
namespace {

void Tick(benchmark::State &state, std::initializer_list<const char *> formulas) {
  Bars &bars = SharedBars(static_cast<int>(state.range(0)));
  SIndex index;
  index.SetVariable(bars.close, bars.open, bars.high, bars.low, bars.volume, bars.date, bars.openInterest,
                    bars.amount);
  int slot = 0;
  for (const char *formula : formulas) index.SetExpression(slot++, formula);
  for (int i = 0; i < 3; ++i) index.CalcLast();
  const double close = bars.close[bars.close.GetSize() - 1];
  const auto blocks = AllocatedBlockCount();
  double step = 0.0;
  for (auto _ : state) {
    bars.close.Update(close + step, 0);
    step = step > 1.0 ? 0.0 : step + 0.05;
    index.CalcLast();
  }
  bars.close.Update(close, 0);
  state.counters["new_blocks"] = static_cast<double>(AllocatedBlockCount() - blocks);
}

void Sizes(benchmark::internal::Benchmark *bench) { bench->Arg(1000)->Arg(1000000)->MinTime(0.1); }

BENCHMARK_CAPTURE(Tick, one_average, {"avg(c,20)"})->Apply(Sizes);
BENCHMARK_CAPTURE(Tick, five_of_three,
                  {"avg(c,5)-avg(c,20)+stdev(c,20)", "highest(h,20)-lowest(l,20)+avg(v,5)",
                   "if(c>avg(c,20),highest(c,5),lowest(c,5))", "crossup(avg(c,5),avg(c,20))*wavg(c,10)",
                   "(c-lowest(l,14))/(highest(h,14)-lowest(l,14))*sum(v,5)"})
    ->Apply(Sizes);

}  // namespace
}  // namespace trovenu::bench
