#pragma once

/// \file
/// Largest and smallest values, over bars and among series.

#include "trovenu/formula/function.h"

namespace trovenu {

/// Folds y into x: the larger of both at each bar, or the smaller. The start index becomes the larger one,
/// the size the smaller one. Required: a number has size 1, so with one among the arguments a single bar is
/// left.
void FoldMax(SVector &x, const SVector &y);
void FoldMin(SVector &x, const SVector &y);

FunctionRows ExtremeRows();

}  // namespace trovenu
