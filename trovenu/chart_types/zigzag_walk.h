#pragma once

#include "trovenu/chart_types/turning_points.h"

namespace trovenu {

/// The share of the price that makes a reversal, of a percentage in a variable: 0.01 to 0.5. Nonzero
/// `automatic` sets the variable first.
double ReadZigZagRate(SString &variable, int automatic, double firstPrice);

/// The walk of both ZigZag charts: it follows the extreme of a leg until the close has turned by the rate.
class ZigZagWalk {
 public:
  ZigZagWalk(const ChartBars &bars, double rate)
      : rate_(rate),
        peak_(bars.FirstPrice()),
        trough_(peak_),
        lowTrigger_((1.0 - rate) * peak_),
        highTrigger_((1.0 + rate) * peak_),
        firstTurn_(FindFirstTurn(bars, lowTrigger_, highTrigger_)),
        rising_(firstTurn_.IsRising()) {}

  /// The close beyond the first triggers; the last close where none is.
  double FirstTurnClose() const { return firstTurn_.close; }

  /// Calls `chart.Extend(bar, close, rising)` for a new extreme of the leg, `chart.Turn(bar)` for the bar
  /// that reverses it.
  template <class Chart>
  void Step(int bar, double close, Chart &chart) {
    if (rising_) {
      if (close > peak_) {
        peak_ = close;
        lowTrigger_ = (1.0 - rate_) * close;
        chart.Extend(bar, close, true);
      } else if (close < lowTrigger_) {
        rising_ = false;
        trough_ = close;
        highTrigger_ = (1.0 + rate_) * close;
        chart.Turn(bar);
      }
      return;
    }
    if (close < trough_) {
      trough_ = close;
      highTrigger_ = (1.0 + rate_) * close;
      chart.Extend(bar, close, false);
    }
    // A new low is followed by the look for a reversal on the same bar.
    if (close > highTrigger_) {
      rising_ = true;
      peak_ = close;
      lowTrigger_ = (1.0 - rate_) * close;
      chart.Turn(bar);
    }
  }

 private:
  double rate_;
  double peak_;
  double trough_;
  // What reverses a leg up, and down.
  double lowTrigger_;
  double highTrigger_;
  FirstTurn firstTurn_;
  bool rising_;
};

}  // namespace trovenu
