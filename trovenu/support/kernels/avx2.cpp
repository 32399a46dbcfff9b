// Compiled with -mavx2 where the target is x86 and the compiler knows it.

#include "trovenu/support/kernels/builds.h"

// GCC for 64-bit Windows does not align the stack for the wide registers that it spills.
#if defined(__AVX2__) && !(defined(_WIN64) && defined(__GNUC__) && !defined(__clang__))
#include "trovenu/support/kernels/table.h"

namespace trovenu {

const Kernels *Avx2Kernels() { return &kKernels; }

}  // namespace trovenu
#else
namespace trovenu {

const Kernels *Avx2Kernels() { return nullptr; }

}  // namespace trovenu
#endif
