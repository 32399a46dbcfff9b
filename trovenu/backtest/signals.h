#pragma once

/// \file
/// How every pass of a back-test reads the rule series.

#include <algorithm>

#include "trovenu/support/series.h"

namespace trovenu {

/// What a rule series holds at a bar: 0.0 for no signal, else the price of the fill, with the number of a
/// stop in front. A bar outside the series and NaN are no signal.
inline double SignalAt(const SVector &rule, int bar) {
  if (bar < 0 || bar >= rule.GetSize()) return 0.0;
  const double signal = rule.data[bar];
  return signal == signal ? signal : 0.0;
}

inline bool HasSignal(const SVector &rule, int bar) { return SignalAt(rule, bar) != 0.0; }

/// The first bar at or after `from` with a signal, or -1.
inline int FindSignal(const SVector &rule, int from) {
  for (int i = std::max(from, 0); i < rule.GetSize(); ++i) {
    if (HasSignal(rule, i)) return i;
  }
  return -1;
}

}  // namespace trovenu
