#pragma once

#include "trovenu/chart_types/turning_points.h"

namespace trovenu {

/// The market profile in blocks of that many minutes into five empty results.
void MakeMarketProfile(const ChartBars &bars, int minutes, SVector *results);

}  // namespace trovenu
