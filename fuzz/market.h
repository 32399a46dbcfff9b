#pragma once

#include "fuzz/input.h"
#include "trovenu/formula/calc.h"

namespace trovenu::fuzz {

/// Bars to calculate on.
struct Market {
  /// Close, open, high, low, volume, date, open interest, amount: the order of `SCalc::SetVariable`.
  SVector series[8];

  void Bind(SCalc &calc) {
    calc.SetVariable(series[0], series[1], series[2], series[3], series[4], series[5], series[6], series[7]);
  }
  const SVector &Close() const { return series[0]; }
  const SVector &Date() const { return series[5]; }
  /// Whether the bars are those of `other`, bit for bit.
  bool IsSameAs(const Market &other) const;
};

/// A made-up intraday market of at most `most` bars, a few to a day, whose steps the input chooses.
Market ReadMarket(Input &input, int most);

/// The same with a start index, and now and then with numbers in it that no market has, or without some of
/// its series' bars.
Market ReadWildMarket(Input &input, int most);

}  // namespace trovenu::fuzz
