#pragma once

/// \file
/// Counts and values that run from an event. A condition is true where it is not 0.

#include "trovenu/formula/function.h"

namespace trovenu {

/// Bars since the condition was last true, 0 on a true bar. Valid from its first true bar, or from bar 0,
/// counted from there, if it never is.
SVector BarsSince(const SVector &condition);

/// How often b was true since a last was, the bar itself included. Valid from the first true bar of a.
SVector CountSince(const SVector &a, const SVector &b);

/// Largest x since the condition was last true, from its n-th true bar on. Required: the values stand as many
/// bars too late as lie between the first bar that counts and the n-th true one. Without an n-th true bar the
/// start index is the size plus 1. n is at least 1.
SVector HighestSince(int n, const SVector &condition, const SVector &x);

/// As `HighestSince` with the smallest. Required: the extreme starts at 0.0 like the largest.
SVector LowestSince(int n, const SVector &condition, const SVector &x);

/// x at the n-th most recent true bar of the condition. n below 1 gives no valid bar.
SVector ValueWhen(int n, const SVector &condition, const SVector &x);

FunctionRows EventCounterRows();

}  // namespace trovenu
