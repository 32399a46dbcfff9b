#pragma once

/// \file
/// Watches a search: runs it on a thread of its own, shows how far it is, and lets the user stop it.

#include <string>

#include "tools/trovenu/report_folder.h"
#include "trovenu/backtest/optimiser.h"

namespace trovenu::tool {

enum class SearchEnd { Finished, Stopped };

/// Runs a search of `total` runs, which leaves its tables in `folder`. The first Ctrl-C pauses it and asks
/// whether to go on; the second one, or the first one where nobody can be asked, ends it after the run at
/// hand. Throws `Failure` when a run's tables can't be written; those before it are complete then.
SearchEnd WatchSearch(SSimulationMain &search, long long total, SAnsiStringList *systems,
                      const ReportFolder &folder);

}  // namespace trovenu::tool
