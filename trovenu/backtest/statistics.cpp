#include <algorithm>
#include <string>

#include "trovenu/backtest/signals.h"
#include "trovenu/backtest/simulation.h"
#include "trovenu/platform/platform.h"
#include "trovenu/support/number_text.h"

namespace trovenu {

namespace {

constexpr const char *kExcursionFile = "mfe.csv";

// What a trade made, and the most that it showed for and against on the way, all at prices with costs.
struct Excursion {
  double profit;
  double best;
  double worst;
};

Excursion ExcursionOf(const SSimulation &simulation, int side, int entry, int exit) {
  const SVector &close = BarsOf(simulation.Close);
  const SVector &high = BarsOf(simulation.High);
  const SVector &low = BarsOf(simulation.Low);
  double highest = close[entry];
  double lowest = close[entry];
  for (int i = entry + 1; i <= exit; ++i) {
    highest = std::max(highest, high[i]);
    lowest = std::min(lowest, low[i]);
  }
  // Required: a trade is valued at the closes of its bars, also where a stop has filled inside the bar.
  const double paid = simulation.EntryPrice(close[entry], side);
  const auto gain = [&](double price) {
    const double got = simulation.ExitPrice(price, side);
    return side == kLongSide ? got - paid : paid - got;
  };
  return side == kLongSide ? Excursion{gain(close[exit]), gain(highest), gain(lowest)}
                           : Excursion{gain(close[exit]), gain(lowest), gain(highest)};
}

}  // namespace

void SSimulation::CalcStatics() {
  std::string text = std::string("seq, profit, mfe, mae") + kLineEnd;
  int trade = 0;
  for (int side = GetStartMode(); side <= GetEndMode(); ++side) {
    const SVector &entries = Index.ExpData[2 * side];
    const SVector &exits = Index.ExpData[2 * side + 1];
    int entry = NextSignal(entries, std::max(0, entries.GetStartIndex()));
    while (entry >= 0) {
      const int found = NextSignal(exits, entry + 1);
      const int exit = found >= 0 ? found : BarsOf(Close).GetSize() - 1;
      const Excursion excursion = ExcursionOf(*this, side, entry, exit);
      text += FormatValue("%d, %lf, %lf, %lf", trade++, excursion.profit, excursion.best, excursion.worst)
                  .c_str();
      text += kLineEnd;
      entry = found >= 0 ? NextSignal(entries, found + 1) : -1;
    }
  }
  // A folder that takes no file leaves things as they were.
  WriteFileBytes(kExcursionFile, text, Flush::ToSystem);
}

}  // namespace trovenu
