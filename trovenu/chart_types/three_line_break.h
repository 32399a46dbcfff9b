#pragma once

#include "trovenu/chart_types/turning_points.h"

namespace trovenu {

/// The smallest or the largest of `edges` from `from` up to, not including, `count`; the one before `count`
/// where the range is empty.
double ExtremeEdge(bool smallest, const SVector &edges, int from, int count);

/// The three-line break chart, with a reversal that breaks that many lines, into five empty results. Returns
/// the price of the next reversal as last computed, 0 without a line.
double MakeThreeLineBreak(const ChartBars &bars, int lines, SVector *results);

}  // namespace trovenu
