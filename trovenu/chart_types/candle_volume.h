#pragma once

#include "trovenu/chart_types/turning_points.h"

namespace trovenu {

/// The candle widths of a candle-volume chart into the first of five empty results.
void MakeCandleVolume(const ChartBars &bars, SVector *results);

}  // namespace trovenu
