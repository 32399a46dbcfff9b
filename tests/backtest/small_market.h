#pragma once

#include <initializer_list>
#include <string>
#include <vector>

#include "trovenu/backtest/simulation.h"

namespace trovenu::tests {

struct Bar {
  double open;
  double high;
  double low;
  double close;
};

/// A back-test over a few bars, the rules of which fire where a test says. Without costs, both sides, tick 1.
/// The dates are 1, 2, 3 and so on until a test sets others.
struct SmallMarket {
  explicit SmallMarket(const std::vector<Bar> &bars);
  SmallMarket(const SmallMarket &) = delete;
  SmallMarket &operator=(const SmallMarket &) = delete;

  /// Marks bars with their close in a rule, which becomes a series as long as the bars.
  void Fire(RuleSeries rule, std::initializer_list<int> at);
  /// Makes the trades.
  void Run();
  /// The trades, in the order of the table: side, bars from entry to exit ("end" for the end of the data),
  /// fill of the exit, number of the stop: "L0-3@98#1 S2-end@101".
  std::string Trades();
  /// `Run` and `Trades`.
  std::string RunTrades();

  SSimulation test;
  SVector close, open, high, low, volume, date, openInterest, amount;
};

}  // namespace trovenu::tests
