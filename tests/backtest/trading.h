#pragma once

#include <initializer_list>
#include <vector>

#include "trovenu/backtest/simulation.h"

namespace trovenu::tests {

/// A back-test without stops over a few bars: one a close, with all four prices equal unless they are set,
/// dated from 2024-01-01 on. It costs nothing to trade.
class Trading {
 public:
  explicit Trading(const std::vector<double> &closes) {
    for (const double price : closes) {
      for (SVector *prices : {&close, &open, &high, &low}) prices->Add(price);
      date.Add(20240101.0 + date.GetSize());
    }
    simulation.SetVariablePointer(&close, &open, &high, &low, &volume, &date, &openInterest, &amount);
    simulation.SetVariableToIndex();
    simulation.TickSize = 0.01;
    simulation.Setting.EntryCommission = simulation.Setting.ExitCommission = 0.0;
    simulation.Setting.Slippage = 0.0;
    simulation.Index.IndexType = kSystemIndex;
    for (int rule = 0; rule < kRules; ++rule) simulation.Index.ExpData[rule] = SVector(close.GetSize());
  }
  Trading(const Trading &) = delete;
  Trading &operator=(const Trading &) = delete;

  /// Signals of a rule, each at the close of its bar.
  void Signal(int rule, std::initializer_list<int> bars) {
    for (const int bar : bars) simulation.Index.ExpData[rule][bar] = close[bar];
  }

  void Trade() {
    simulation.Index.PreProcess();
    simulation.SetHistoryToZero();
    simulation.SetHistory();
  }

  SVector close, open, high, low, volume, date, openInterest, amount;
  SSimulation simulation;
};

/// The elements of a series.
inline std::vector<double> ValuesOf(const SVector &series) {
  return {series.data, series.data + series.GetSize()};
}

/// Two long trades, the second one short of a bar and a third on the last bar; the first leaves by a stop at
/// 14.5. One short trade from bar 2 to bar 6.
inline void TradeBothSides(Trading &trading) {
  trading.Signal(kLongEntry, {1, 4, 7});
  trading.Signal(kLongExit, {5});
  trading.simulation.Index.ExpData[kLongExit][3] = 2 * kStopScale + 14.5;
  trading.Signal(kShortEntry, {2});
  trading.Signal(kShortExit, {6});
}
inline const std::vector<double> kEightCloses = {10, 12, 11, 15, 14, 13, 16, 18};

}  // namespace trovenu::tests
