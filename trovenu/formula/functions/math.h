#pragma once

/// \file
/// Mathematical functions of each bar.

#include "trovenu/formula/function.h"

namespace trovenu {

/// `base` raised to `exponent`, bar by bar, from the larger of their start indexes. Different sizes go
/// together only where one of them is 1: the single element then serves every bar of the other, and the
/// result has that one's size and start index. Otherwise the result is empty.
SVector Power(const SVector &base, const SVector &exponent);

FunctionRows MathRows();

}  // namespace trovenu
