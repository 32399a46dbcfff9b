#pragma once

#include <initializer_list>
#include <string_view>
#include <vector>

#include "trovenu/formula/calc.h"

namespace trovenu::tests {

SVector Series(const std::vector<double> &values, int start = 0);

/// The eight series that formulas read.
struct Bars {
  SVector close, open, high, low, volume, date, openInterest, amount;

  void Bind(SCalc &calc) { calc.SetVariable(close, open, high, low, volume, date, openInterest, amount); }
  /// In the order of `SCalc::SetVariable`.
  std::vector<SVector *> Columns() {
    return {&close, &open, &high, &low, &volume, &date, &openInterest, &amount};
  }
  /// The series of that name, null for another one.
  SVector *Column(std::string_view name);
};

/// The shipped daily bars, 252 of them.
Bars DailyBars();

/// A formula's value over all bars; reports a failure if the formula has a fault.
SVector Evaluate(Bars &bars, const char *formula);

/// Tells whether two numbers have the same bits, or are both no number.
bool SameNumber(double a, double b);

}  // namespace trovenu::tests
