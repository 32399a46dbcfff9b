#pragma once

/// \file
/// Watches a search: runs it on a thread of its own, shows how far it is, and lets the user stop it.

#include "trovenu/backtest/optimiser.h"

namespace trovenu::tool {

struct SearchEnd {
  /// False if it was stopped.
  bool finished;
  long long done;
};

/// Runs a search of `total` runs. The first Ctrl-C pauses it and asks whether to go on; the second one, or
/// the first one where nobody can be asked, ends it after the run at hand, and so does a run whose tables are
/// seen to be missing.
SearchEnd WatchSearch(SSimulationMain &search, long long total, SAnsiStringList *systems);

}  // namespace trovenu::tool
