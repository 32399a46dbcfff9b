#pragma once

/// \file
/// What an evaluation costs, beside the yardsticks of yardstick.h.

#include <ctime>
#include <functional>
#include <vector>

#include "bench/bars.h"
#include "trovenu/formula/calc.h"

namespace trovenu::bench {

/// The middle one; 0 of none.
double Median(std::vector<double> values);

/// The processor's time that `work` takes on this thread, in seconds: on a busy machine the clock on the wall
/// also counts the time of others.
double ProcessorSeconds(const std::function<void()> &work);

/// One evaluation of a formula, text in, series out, as the median of at least 11 once it has settled.
struct Cost {
  double nsPerBar;
  /// Ratios to the yardsticks on the series that the formula reads first. They take turns with the
  /// evaluations, so that all of them meet the same moments of a busy machine.
  double perT;
  double perR;
  /// What 20 further evaluations took of the system: blocks of elements, other allocations, page faults.
  unsigned long long blocks;
  unsigned long long allocations;
  long faults;
};

/// Measures a sound formula; ends the program for one with a fault.
Cost MeasureFormula(SCalc &calc, const char *formula, Bars &bars);

/// The medians of several pieces of work that take turns, in nanoseconds a bar.
std::vector<double> MeasureInTurn(int bars, const std::vector<std::function<void()>> &pieces);

}  // namespace trovenu::bench
