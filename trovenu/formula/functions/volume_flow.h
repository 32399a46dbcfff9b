#pragma once

/// \file
/// Indicators that weigh price changes by volume.

#include "trovenu/formula/function.h"

namespace trovenu {

/// Accumulation and distribution from open to close (Larry Williams): each bar adds (close - open) / (high -
/// low) times its volume; a bar without a range keeps the value. Starts at 0.
SVector AccumulationDistribution(const SVector &open, const SVector &high, const SVector &low,
                                 const SVector &close, const SVector &volume);

/// Price-volume trend: each bar adds its relative price change times its volume. Starts at the first volume.
SVector PriceVolumeTrend(const SVector &close, const SVector &volume);

/// Positive and negative volume index (Paul Dysart): the percentage changes of x on bars whose volume has
/// risen (or fallen), added up and not compounded. Required: it begins at 100 at index 0, however late x is
/// valid.
SVector PositiveVolumeIndex(const SVector &x, const SVector &volume);
SVector NegativeVolumeIndex(const SVector &x, const SVector &volume);

FunctionRows VolumeFlowRows();

}  // namespace trovenu
