#pragma once

#include "tests/backtest/small_market.h"

namespace trovenu::tests {

/// Bars whose prices are all equal.
inline std::vector<Bar> FlatBars(const std::vector<double> &closes) {
  std::vector<Bar> bars;
  for (const double close : closes) bars.push_back({close, close, close, close});
  return bars;
}

inline std::vector<double> ValuesOf(const SVector &series) {
  return {series.data, series.data + series.GetSize()};
}

/// Flat bars at 10, 12, 11, 15, 14, 13, 16, 18. Long trades from bar 1 to a stop on bar 3 that fills at 14.5,
/// from bar 4 to 5, and from the last bar; a short one from bar 2 to 6.
struct BothSides : SmallMarket {
  BothSides() : SmallMarket(FlatBars({10, 12, 11, 15, 14, 13, 16, 18})) {
    Fire(kLongEntry, {1, 4, 7});
    Fire(kLongExit, {5});
    test.Index.ExpData[kLongExit][3] = 2 * kStopScale + 14.5;
    Fire(kShortEntry, {2});
    Fire(kShortExit, {6});
  }
};

}  // namespace trovenu::tests
