#pragma once

/// \file
/// Least-squares lines and correlation over the last bars.

#include "trovenu/formula/function.h"

namespace trovenu {

/// Slope of the least-squares line through the last n elements, per bar, positive for a rising line; 0 for n
/// of 1. Starts n - 1 bars after x; n below 1 gives no valid bar, here and below.
SVector LinearRegressionSlope(const SVector &x, int n);

/// The least-squares line through the last n elements at k bars before its newest bar; a negative k
/// extrapolates.
SVector LinearRegressionValue(const SVector &x, int n, int k);

/// Correlation coefficient (Pearson) of the last n elements of x and y; 0.0 where one of them does not vary.
SVector Correlation(const SVector &x, const SVector &y, int n);

/// Coefficient of determination of the least-squares line through the last n elements. A flat window repeats
/// the value of the bar before, 0.0 at the first.
SVector RSquared(const SVector &x, int n);

FunctionRows RegressionRows();

}  // namespace trovenu
