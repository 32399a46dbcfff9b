#pragma once

#include "trovenu/formula/calc.h"
#include "trovenu/support/series.h"

namespace trovenu::bench {

/// Made-up one-minute bars, the same ones on every run.
struct Bars {
  explicit Bars(int count);

  /// An engine that is bound to the bars.
  void Bind(SCalc &calc);

  SVector close, open, high, low, volume, date, openInterest, amount;
};

/// Bars of that count, made once and kept; the last count asked for alone.
Bars &SharedBars(int count);

}  // namespace trovenu::bench
