#pragma once

/// \file
/// Crossings of two series.

#include "trovenu/formula/function.h"

namespace trovenu {

/// 1.0 at a bar where a is above b and was not above it at the bar before, else 0.0. A touch counts as the
/// state before the crossing. The start index is one above the larger of both.
SVector CrossUp(const SVector &a, const SVector &b);

/// 1.0 at a bar where a is below b and was not below it at the bar before, else 0.0.
SVector CrossDown(const SVector &a, const SVector &b);

FunctionRows CrossingRows();

}  // namespace trovenu
