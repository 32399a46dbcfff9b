#pragma once

/// \file
/// The loops of the build that includes this.

#include "trovenu/support/kernels/channel_index.h"
#include "trovenu/support/kernels/correlation.h"
#include "trovenu/support/kernels/deviation.h"
#include "trovenu/support/kernels/extremes.h"
#include "trovenu/support/kernels/flat_windows.h"
#include "trovenu/support/kernels/line.h"
#include "trovenu/support/kernels/parabolic.h"
#include "trovenu/support/kernels/quotients.h"
#include "trovenu/support/kernels/smoothing.h"
#include "trovenu/support/kernels/sums.h"
#include "trovenu/support/kernels/weighted.h"

namespace trovenu {
namespace {

constexpr Kernels kKernels = {
    .sum = Sum,
    .mean = Mean,
    .weightedMean = WeightedMean,
    .highest = Highest,
    .lowest = Lowest,
    .deviation = Deviation,
    .lineSlope = LineSlope,
    .lineValue = LineValue,
    .lineFit = LineFit,
    .correlation = Correlation,
    .keepFlat = KeepFlat,
    .exponential = Exponential,
    .relativeStrength = RelativeStrength,
    .typicalPrice = TypicalPrice,
    .channelIndex = ChannelIndex,
    .parabolic = Parabolic,
    .quotients = Quotients,
    .quotientsOfNumber = QuotientsOfNumber,
};

}  // namespace
}  // namespace trovenu
