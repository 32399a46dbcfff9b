#pragma once

#include "trovenu/chart_types/turning_points.h"

namespace trovenu {

/// The Kagi chart, with a reversal of that price distance, into five empty results.
void MakeKagi(const ChartBars &bars, double width, SVector *results);

}  // namespace trovenu
