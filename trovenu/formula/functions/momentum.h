#pragma once

/// \file
/// Momentum indicators.

#include "trovenu/formula/function.h"

namespace trovenu {

/// Relative strength index with the smoothing of J. Welles Wilder ("New Concepts in Technical Trading
/// Systems", 1978), 0 to 100. Starts n bars after close; with too few bars, or n below 1, the result is an
/// empty series.
SVector Rsi(const SVector &close, int n);

/// Commodity channel index of Donald Lambert (1980): the typical price less its average over n bars, in units
/// of 0.015 mean absolute deviations; 0 where all are equal. n below 1 gives no valid bar.
SVector Cci(const SVector &high, const SVector &low, const SVector &close, int n);

FunctionRows MomentumRows();

}  // namespace trovenu
