#pragma once

/// \file
/// Moving averages and the standard deviation.

#include "trovenu/formula/function.h"

namespace trovenu {

FunctionRows AverageRows();

}  // namespace trovenu
