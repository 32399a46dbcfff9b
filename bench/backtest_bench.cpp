// A whole back-test, the rules of which are computed already: stops, trades, summary. 100,000 bars, 2,000
// trades.

#include <benchmark/benchmark.h>

#include <cstdint>

#include "bench/bars.h"
#include "trovenu/backtest/simulation.h"

namespace trovenu::bench {
namespace {

constexpr int kBars = 100'000;
constexpr int kTrades = 2'000;

// Where the exits of the rules stand.
enum RuleExits : std::int64_t { kNone, kMidway };

// Which stops are on.
enum Stops : std::int64_t { kOff, kFour, kAll };

// Entries at even distances, alternately long and short.
void Fire(SSimulation &test, const Bars &bars, std::int64_t exits) {
  constexpr int kStep = kBars / kTrades;
  for (int rule = 0; rule < kRules; ++rule) test.Index.ExpData[rule] = SVector(kBars);
  for (int trade = 0; trade < kTrades; ++trade) {
    const int rule = trade % 2 == 0 ? kLongEntry : kShortEntry;
    const int bar = trade * kStep;
    test.Index.ExpData[rule][bar] = bars.close[bar];
    if (exits == kMidway) test.Index.ExpData[rule + 1][bar + kStep / 2] = bars.close[bar + kStep / 2];
  }
}

// Close enough to end trades, of which there would be few without exits.
void Switch(SSimulationSetting &setting, std::int64_t stops) {
  setting.BlMoneyManagementStop = setting.BlRiskTrailingStop = setting.BlRiskTrailingStop2 =
      setting.BlProfitTargetStop = stops != kOff ? 1 : 0;
  setting.BlMinVariationStop = setting.BlDayTradingStop = stops == kAll ? 1 : 0;
  setting.MoneyManagementStop = setting.ProfitTargetStop = setting.RiskTrailingStopStart = 0.002;
  setting.RiskTrailingStop2 = 0.0025;
  setting.MinVariationStop = 0.0001;
}

void WholeBackTest(benchmark::State &state) {
  Bars &bars = SharedBars(kBars);
  SSimulation test;
  SIndex rules("rules", kSystemIndex);
  test.SetIndex(rules);
  test.SetVariablePointer(&bars.close, &bars.open, &bars.high, &bars.low, &bars.volume, &bars.date,
                          &bars.openInterest, &bars.amount);
  test.TickSize = 0.05;
  test.SummaryInfoFileName = "";
  Switch(test.Setting, state.range(1));
  for (auto _ : state) {
    state.PauseTiming();
    Fire(test, bars, state.range(0));
    state.ResumeTiming();
    test.TradeRules();
  }
  state.counters["trades"] = test.History[kTradeSide].GetSize();
}

BENCHMARK(WholeBackTest)
    ->ArgNames({"exits", "stops"})
    ->Args({kMidway, kOff})
    ->Args({kMidway, kFour})
    ->Args({kMidway, kAll})
    ->Args({kNone, kFour})
    ->Unit(benchmark::kMillisecond);

// The order of a table of trades of both sides, with equal dates among them.
void SortTrades(benchmark::State &state) {
  const int trades = static_cast<int>(state.range(0));
  SSimulation test;
  for (auto _ : state) {
    state.PauseTiming();
    test.SetHistoryToZero();
    for (int i = 0; i < trades; ++i) {
      for (SVector &column : test.History) column.Add(i % (trades / 2) / 2);
    }
    state.ResumeTiming();
    test.SortHistory();
  }
}

BENCHMARK(SortTrades)->Arg(2'000)->Arg(20'000)->Unit(benchmark::kMicrosecond);

}  // namespace
}  // namespace trovenu::bench
