#pragma once

/// \file
/// Bars fed to an indicator as a live feed would.

#include <optional>

#include "tools/trovenu/bars.h"
#include "tools/trovenu/shown.h"
#include "trovenu/indicator/index.h"

namespace trovenu::tool {

/// Where the lines of live updates and those of a full calculation differ first.
struct ReplayDifference {
  int line = 0;
  int bar = 0;
  Shown live;
  Shown full;
};

struct ReplayResult {
  long long updates = 0;
  /// Seconds of one update; 0 without updates.
  double mean = 0.0;
  double worst = 0.0;
  /// Of all differences the one on the oldest bar.
  std::optional<ReplayDifference> difference;
};

/// Feeds the bars from `from` on, from 0, to a copy of the indicator, and calculates the copy anew at the
/// end.
///
/// The bars before are there when the chart opens. Each later bar appears with its open as all four prices;
/// then a trade at its high, one at its low and one at its close update it, and volume and amount grow with
/// them by quarters. The indicator is brought up to date after each of these steps. `functions` may be null.
ReplayResult ReplayBars(const Bars &bars, int from, const SIndex &indicator, SFunctionList *functions);

}  // namespace trovenu::tool
