#pragma once

/// \file
/// The two builds of the kernels, each a source file of a few lines around the same headers.
///
/// Everything in those headers has internal linkage, and they use no templates and no inline functions of the
/// standard library: of such a function the linker keeps one copy for the whole program, and that one must
/// never be the copy with instructions that the processor may lack.

#include "trovenu/support/kernels/kernels.h"

namespace trovenu {

const Kernels *BaselineKernels();

/// Null where the compiler had no AVX2 to build for.
const Kernels *Avx2Kernels();

}  // namespace trovenu
