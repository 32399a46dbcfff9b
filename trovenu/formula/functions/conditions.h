#pragma once

/// \file
/// Choosing between two series.

#include "trovenu/formula/function.h"

namespace trovenu {

/// a where `condition` is not 0, else b. The bars are those of the first series among the three, or of
/// `close`; the start index is the largest of the three.
SVector Choose(const SVector &condition, const SVector &a, const SVector &b, const SVector &close);

FunctionRows ConditionRows();

}  // namespace trovenu
