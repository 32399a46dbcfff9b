// The non-time charts with their automatic parameters, beside the yardstick: `ratio` is the time over that of
// the running mean of the same bars. Time for a bar must not grow with the chart.

#include <benchmark/benchmark.h>

#include <algorithm>

#include "bench/bars.h"
#include "bench/yardstick.h"
#include "trovenu/indicator/index.h"

namespace trovenu::bench {
namespace {

template <class Calculate>
void Chart(benchmark::State &state, Calculate calculate) {
  Bars &bars = SharedBars(static_cast<int>(state.range(0)));
  SVector mean(bars.close.GetSize());
  double yardstick = 1.0;
  for (int i = 0; i < 5; ++i)
    yardstick = std::min(yardstick, Seconds([&] { RunningMean(bars.close, mean); }));
  SIndex index;
  index.SetVariable(bars.close, bars.open, bars.high, bars.low, bars.volume, bars.date, bars.openInterest,
                    bars.amount);
  double least = 1e9;
  for (auto _ : state) least = std::min(least, Seconds([&] { calculate(index); }));
  state.counters["ratio"] = least / yardstick;
  state.counters["entries"] = index.ExpData[0].GetSize();
}

void Sizes(benchmark::internal::Benchmark *bench) {
  bench->Arg(10000)->Arg(1000000)->MinTime(0.1)->Unit(benchmark::kMillisecond);
}

BENCHMARK_CAPTURE(Chart, point_figure, [](SIndex &index) { index.CalcPnF(1); })->Apply(Sizes);
BENCHMARK_CAPTURE(Chart, kagi, [](SIndex &index) { index.CalcKagi(1); })->Apply(Sizes);
BENCHMARK_CAPTURE(Chart, renko, [](SIndex &index) { index.CalcRenko(1); })->Apply(Sizes);
BENCHMARK_CAPTURE(Chart, three_line_break, [](SIndex &index) { index.CalcThreeLineBreak(1); })->Apply(Sizes);
BENCHMARK_CAPTURE(Chart, swing, [](SIndex &index) { index.CalcSwing(1); })->Apply(Sizes);
BENCHMARK_CAPTURE(Chart, counter_clock, [](SIndex &index) {
  index.ClearData();
  index.CalcCounterClock(1);
})->Apply(Sizes);
BENCHMARK_CAPTURE(Chart, candle_volume, [](SIndex &index) { index.CalcCandleVolume(0); })->Apply(Sizes);
BENCHMARK_CAPTURE(Chart, volume_at_price, [](SIndex &index) {
  index.CalcVolumeAtPrice(1, 0, index.Variable[0]->GetSize() - 1);
})->Apply(Sizes);
BENCHMARK_CAPTURE(Chart, market_profile, [](SIndex &index) { index.CalcMarketProfile(0); })->Apply(Sizes);
BENCHMARK_CAPTURE(Chart, zigzag_line, [](SIndex &index) { index.CalcZigZagLine(1); })->Apply(Sizes);
BENCHMARK_CAPTURE(Chart, zigzag_ladder, [](SIndex &index) { index.CalcZigZagOrgLine(1); })->Apply(Sizes);

// What takes longest: a brick, line or step at nearly every bar, a look back over all of them, one block of
// all bars, 10,000 bands.
void With(SIndex &index, const char *text, void (SIndex::*calculator)(int)) {
  index.VarValue[0] = index.VarValue[1] = text;
  (index.*calculator)(0);
}

BENCHMARK_CAPTURE(Chart, point_figure_of_one_tick, [](SIndex &index) {
  With(index, "0.05", &SIndex::CalcPnF);
})->Apply(Sizes);
BENCHMARK_CAPTURE(Chart, kagi_of_one_tick, [](SIndex &index) {
  With(index, "0.05", &SIndex::CalcKagi);
})->Apply(Sizes);
BENCHMARK_CAPTURE(Chart, renko_of_one_tick, [](SIndex &index) {
  With(index, "0.05", &SIndex::CalcRenko);
})->Apply(Sizes);
BENCHMARK_CAPTURE(Chart, one_line_break, [](SIndex &index) {
  With(index, "1", &SIndex::CalcThreeLineBreak);
})->Apply(Sizes);
BENCHMARK_CAPTURE(Chart, all_lines_break, [](SIndex &index) {
  With(index, "1000000", &SIndex::CalcThreeLineBreak);
})->Apply(Sizes);
BENCHMARK_CAPTURE(Chart, market_profile_of_one_block, [](SIndex &index) {
  With(index, "2000000000", &SIndex::CalcMarketProfile);
})->Apply(Sizes);
BENCHMARK_CAPTURE(Chart, volume_at_10000_prices, [](SIndex &index) {
  index.VarValue[0] = "10000";
  index.CalcVolumeAtPrice(0, 0, index.Variable[0]->GetSize() - 1);
})->Apply(Sizes);

}  // namespace
}  // namespace trovenu::bench
