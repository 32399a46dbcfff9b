#pragma once

/// \file
/// Series moved along the bars.

#include "trovenu/formula/function.h"

namespace trovenu {

/// Moves x by n bars and changes its size with it: a positive n lengthens it into the future, a negative one
/// shortens it.
SVector ShiftBars(const SVector &x, int n);

FunctionRows ShiftRows();

}  // namespace trovenu
