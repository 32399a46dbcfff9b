#pragma once

/// \file
/// Sums over the last bars, over all bars, and exponentially fading.

#include "trovenu/formula/function.h"

namespace trovenu {

FunctionRows SumRows();

}  // namespace trovenu
