#pragma once

/// \file
/// The parabolic stop-and-reverse.

#include "trovenu/formula/function.h"

namespace trovenu {

/// Stop-and-reverse of J. Welles Wilder ("New Concepts in Technical Trading Systems", 1978). The acceleration
/// grows by `step` up to `maximum`. Required: it is 0.02 after every reversal, whatever `step` is. Computed
/// from the second bar on, valid from the sixth: the start index is that of close plus 5.
SVector Parabolic(const SVector &high, const SVector &low, const SVector &close, double step, double maximum);

FunctionRows ParabolicRows();

}  // namespace trovenu
