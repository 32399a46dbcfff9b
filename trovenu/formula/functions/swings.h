#pragma once

/// \file
/// Swing highs and lows, and the ZigZag line through them.

#include "trovenu/formula/function.h"

namespace trovenu {

/// See `SCalc::CalcSwingHighLow`.
SVector FindSwings(bool isHigh, int n, const SVector &x, int strength, int depth);

/// See `SCalc::CalcZigZag`.
SVector ZigZag(double percent, const SVector &swingHigh, const SVector &swingLow, const SVector &high,
               const SVector &low);

FunctionRows SwingRows();

}  // namespace trovenu
