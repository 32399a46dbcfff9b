#pragma once

#include "trovenu/chart_types/turning_points.h"

namespace trovenu {

/// Volume at price over the bars from `first` to `last`, both included, in that many bands (at least 2), into
/// five empty results.
void MakeVolumeAtPrice(const ChartBars &bars, int bands, int first, int last, SVector *results);

}  // namespace trovenu
