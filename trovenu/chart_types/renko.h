#pragma once

#include "trovenu/chart_types/turning_points.h"

namespace trovenu {

/// The Renko chart, with bricks of that price height, into five empty results.
void MakeRenko(const ChartBars &bars, double size, SVector *results);

}  // namespace trovenu
