#pragma once

#include "trovenu/chart_types/turning_points.h"

namespace trovenu {

/// The ZigZag line, with a reversal of that share of the price, into five empty results.
void MakeZigZagLine(const ChartBars &bars, double rate, SVector *results);

}  // namespace trovenu
