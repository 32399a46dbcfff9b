#pragma once

#include "trovenu/chart_types/turning_points.h"

namespace trovenu {

/// The ZigZag ladder, with a reversal of that share of the price, into five empty results.
void MakeZigZagLadder(const ChartBars &bars, double rate, SVector *results);

}  // namespace trovenu
