#pragma once

#include <cmath>

#include "trovenu/support/series.h"

namespace trovenu {

/// The value of a signal at a bar, 0.0 where there is none: outside the series, a constant's one bar
/// included, and where it holds NaN.
inline double SignalAt(const SVector &series, int bar) {
  if (bar < 0 || bar >= series.GetSize()) return 0.0;
  const double value = series[bar];
  return std::isnan(value) ? 0.0 : value;
}

inline bool HasSignal(const SVector &series, int bar) { return SignalAt(series, bar) != 0.0; }

/// The first signal at or after `from`, which is at least 0; -1 if there is none.
inline int NextSignal(const SVector &series, int from) {
  for (int bar = from; bar < series.GetSize(); ++bar) {
    if (HasSignal(series, bar)) return bar;
  }
  return -1;
}

/// The series that a pointer names, an empty one for null.
inline const SVector &BarsOf(const SVector *series) {
  static const SVector kNoBars;
  return series != nullptr ? *series : kNoBars;
}

}  // namespace trovenu
