#pragma once

/// \file
/// What the formulas that charts are made of may cost.

#include <span>

#include "trovenu/support/kernels/kernels.h"

namespace trovenu::bench {

/// A formula, and how many T it may take at most, from 10,000 bars on.
struct Goal {
  const char *formula;
  double baseline;
  double avx2;
  /// Above 10,000 bars, where that is another limit.
  double baselineLarge = 0.0;
  double avx2Large = 0.0;
};

std::span<const Goal> Goals();

/// The limit of one build at one number of bars; 0 for none.
double LimitOf(const Goal &goal, Instructions build, int bars);

/// Any other function may take that many T for each of its passes over the bars.
inline constexpr double kMostOfAPass = 6.0;

/// A formula with "#" for the period. From the first period that runs over blocks up to 1,000, periods may
/// differ by that much.
struct Periodic {
  const char *formula;
  int first = 36;
};

std::span<const Periodic> PeriodicFormulas();
inline constexpr double kMostBetweenPeriods = 1.5;

/// A function of the C library may take that many R more than the library does.
inline constexpr double kMostBesideLibrary = 2.0;

}  // namespace trovenu::bench
