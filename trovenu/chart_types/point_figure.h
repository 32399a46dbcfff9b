#pragma once

#include "trovenu/chart_types/turning_points.h"

namespace trovenu {

/// The point-and-figure chart, with boxes of that price height and a reversal of that many boxes, into five
/// empty results.
void MakePointFigure(const ChartBars &bars, double box, double reversal, SVector *results);

}  // namespace trovenu
