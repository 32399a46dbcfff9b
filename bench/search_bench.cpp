// A search over symbols: the compiled condition on every symbol against the bare kernels on the same bars,
// and two threads against one. Both sides of a comparison run in turn within one measurement.

#include <benchmark/benchmark.h>

#include <algorithm>
#include <memory>
#include <thread>
#include <vector>

#include "bench/bars.h"
#include "bench/measure.h"
#include "bench/yardstick.h"
#include "trovenu/formula/functions/crossings.h"
#include "trovenu/indicator/index.h"

namespace trovenu::bench {
namespace {

constexpr int kSymbols = 2000;
constexpr int kBarsEach = 2500;
constexpr const char *kCondition =
    "crossup(avg(c,5),avg(c,20)) || c>highest(h,20,1) && v>avg(v,20)*2 || stdev(c,20)<lowest(c,60)*0.0003";

struct Symbol {
  SVector close, high, volume;
};

const std::vector<Symbol> &Symbols() {
  static const std::vector<Symbol> symbols = [] {
    const Bars all(kSymbols * 10 + kBarsEach);
    std::vector<Symbol> made(kSymbols);
    for (int i = 0; i < kSymbols; ++i) {
      Symbol &symbol = made[static_cast<std::size_t>(i)];
      for (SVector *series : {&symbol.close, &symbol.high, &symbol.volume}) series->SetSize(kBarsEach);
      for (int k = 0; k < kBarsEach; ++k) {
        symbol.close[k] = all.close[i * 10 + k];
        symbol.high[k] = all.high[i * 10 + k];
        symbol.volume[k] = all.volume[i * 10 + k];
      }
    }
    return made;
  }();
  return symbols;
}

// What the condition comes to when it is written out by hand.
SVector BareKernels(const Symbol &symbol) {
  const auto filled = [](auto moving, const SVector &x, int n) {
    SVector result;
    (result.*moving)(x, n);
    return result;
  };
  SVector fired =
      CrossUp(filled(&SVector::CalcAvg, symbol.close, 5), filled(&SVector::CalcAvg, symbol.close, 20));
  SVector above;
  VecRef(above, filled(&SVector::CalcHighest, symbol.high, 20), 1);
  VecGT(above, symbol.close, above);
  VecOR(fired, fired, above);
  SVector busy = filled(&SVector::CalcAvg, symbol.volume, 20);
  VecMultiply(busy, busy, 2.0);
  VecGT(busy, symbol.volume, busy);
  VecAND(fired, fired, busy);
  SVector calm = filled(&SVector::CalcStdev, symbol.close, 20);
  SVector bottom = filled(&SVector::CalcLowest, symbol.close, 60);
  VecMultiply(bottom, bottom, 0.0003);
  VecLT(calm, calm, bottom);
  VecOR(fired, fired, calm);
  return fired;
}

int Last(const SVector &series) {
  const SVector &values = series;
  return values[values.GetSize() - 1] != 0.0 ? 1 : 0;
}

// One object a thread, bound to series of its own that take the bars of symbol after symbol.
class Searcher {
 public:
  Searcher() : index_("", kConditionIndex) {
    index_.SetVariable(close_, none_, high_, none_, volume_, none_, none_, none_);
    index_.SetExpression(0, kCondition);
    index_.GetMinDataSize();
  }
  int Run(std::vector<Symbol> &symbols, std::size_t from, std::size_t to) {
    int found = 0;
    for (std::size_t i = from; i < to; ++i) {
      Symbol &symbol = symbols[i];
      std::swap(close_, symbol.close);
      std::swap(high_, symbol.high);
      std::swap(volume_, symbol.volume);
      index_.CalcSrch();
      found += Last(index_.ExpData[0]);
      std::swap(close_, symbol.close);
      std::swap(high_, symbol.high);
      std::swap(volume_, symbol.volume);
    }
    return found;
  }

 private:
  SVector close_, high_, volume_, none_;
  SIndex index_;
};

void SearchAgainstKernels(benchmark::State &state) {
  std::vector<Symbol> symbols = Symbols();
  Searcher searcher;
  std::vector<double> ratios;
  int found = 0;
  int expected = 0;
  for (auto _ : state) {
    const double search = Seconds([&] { found = searcher.Run(symbols, 0, symbols.size()); });
    const double bare = Seconds([&] {
      expected = 0;
      for (const Symbol &symbol : symbols) expected += Last(BareKernels(symbol));
    });
    state.SetIterationTime(search);
    ratios.push_back(search / bare);
  }
  if (found != expected) state.SkipWithError("the search finds other symbols than the kernels");
  state.counters["per_kernels"] = Median(ratios);
  state.counters["found"] = found;
}

void TwoThreadsAgainstOne(benchmark::State &state) {
  std::vector<Symbol> symbols = Symbols();
  const std::size_t half = symbols.size() / 2;
  std::vector<double> ratios;
  for (auto _ : state) {
    const double one = Seconds([&] { Searcher().Run(symbols, 0, symbols.size()); });
    const double two = Seconds([&] {
      std::thread other([&] { Searcher().Run(symbols, 0, half); });
      Searcher().Run(symbols, half, symbols.size());
      other.join();
    });
    state.SetIterationTime(two);
    ratios.push_back(one / two);
  }
  state.counters["times_as_fast"] = Median(ratios);
}

BENCHMARK(SearchAgainstKernels)->Name("search/one_thread")->UseManualTime()->Iterations(15);
BENCHMARK(TwoThreadsAgainstOne)->Name("search/two_threads")->UseManualTime()->Iterations(15);

}  // namespace
}  // namespace trovenu::bench
