#include <algorithm>

#include "trovenu/backtest/signals.h"
#include "trovenu/backtest/simulation.h"

namespace trovenu {

namespace {

bool HasValidSignal(const SVector &rule, int bar) {
  return bar >= rule.GetStartIndex() && HasSignal(rule, bar);
}

// One side's position on its way through the bars, marked to market.
class MarkedSide {
 public:
  MarkedSide(const SSimulation &simulation, int side)
      : simulation_(simulation),
        close_(BarsOf(simulation.Close)),
        entry_(simulation.Index.ExpData[2 * side]),
        exit_(simulation.Index.ExpData[2 * side + 1]),
        side_(side) {}

  const SVector &Entry() const { return entry_; }

  // What the bar adds to the equity, in points for a single contract.
  double Step(int bar) {
    double change = 0.0;
    if (open_) {
      // An entry counts from the bar after it on, with its own price and cost.
      const double from = fresh_ ? simulation_.GetResult(2 * side_, bar - 1) : close_[bar - 1];
      const bool leaves = HasSignal(exit_, bar);
      const double to = leaves ? simulation_.GetResult(2 * side_ + 1, bar) : close_[bar];
      change = side_ == kLongSide ? to - from : from - to;
      if (fresh_) change -= simulation_.GetCommission(from);
      if (leaves) change -= simulation_.GetCommission(to);
      fresh_ = false;
      open_ = !leaves;
    }
    if (HasSignal(entry_, bar)) open_ = fresh_ = true;
    return change;
  }

 private:
  const SSimulation &simulation_;
  const SVector &close_;
  const SVector &entry_;
  const SVector &exit_;
  int side_;
  bool open_ = false;
  bool fresh_ = false;
};

}  // namespace

void SSimulation::CalcProfitLoss() {
  const SVector &longEntry = Index.ExpData[kLongEntry];
  const SVector &longExit = Index.ExpData[kLongExit];
  const SVector &shortEntry = Index.ExpData[kShortEntry];
  const SVector &shortExit = Index.ExpData[kShortExit];
  const SVector &close = BarsOf(Close);
  SVector &curve = Index.ExpData[kRunningProfit];

  const int bars = std::max(longEntry.GetSize(), shortEntry.GetSize());
  curve.BeginResult(bars, 0);
  double longPrice = 0.0;
  double shortPrice = 0.0;
  double sum = 0.0;
  bool started = false;
  int first = 0;
  for (int i = 0; i < bars; ++i) {
    double change = 0.0;
    // Required: a long exit is valued as an entry, and the prices stay after an exit.
    if (HasValidSignal(longExit, i)) change = EntryPrice(close[i], kLongSide) - longPrice;
    if (HasValidSignal(shortExit, i)) change = shortPrice - ExitPrice(close[i], kShortSide) + change;
    const bool goesLong = HasValidSignal(longEntry, i);
    const bool goesShort = HasValidSignal(shortEntry, i);
    if (goesLong) longPrice = EntryPrice(close[i], kLongSide);
    if (goesShort) shortPrice = EntryPrice(close[i], kShortSide);
    if (!started && (goesLong || goesShort)) {
      started = true;
      first = i;
    }
    sum = started ? sum + change : 0.0;
    curve[i] = sum;
  }
  curve.SetStartIndex(first);
  curve.InitTemp();
}

void SSimulation::CalcEquity(SVector *target, int mode) {
  if (target == nullptr) return;
  MarkedSide sides[] = {{*this, kLongSide}, {*this, kShortSide}};
  const bool counts[] = {mode != kShortSide, mode != kLongSide};
  const int bars = BarsOf(Close).GetSize();
  int begin = kNoValidBar;
  for (const int side : {kLongSide, kShortSide}) {
    const SVector &entry = sides[side].Entry();
    if (counts[side] && entry.GetSize() > 0) begin = std::min(begin, std::max(0, entry.GetStartIndex()));
  }
  begin = std::min(begin, bars);

  // The caller's series is empty; one that is not gets the curve behind what it has.
  target->SetStartIndex(0);
  target->ReAlloc(target->GetSize() + bars);
  for (int i = 0; i < begin; ++i) target->Add(0.0);
  const SVector &curve = *target;
  for (int i = begin; i < bars; ++i) {
    double change = 0.0;
    for (const int side : {kLongSide, kShortSide}) {
      if (counts[side]) change += sides[side].Step(i);
    }
    target->Add(curve[i - 1] + change);
  }
}

}  // namespace trovenu
