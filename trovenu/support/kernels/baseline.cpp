#include "trovenu/support/kernels/builds.h"
#include "trovenu/support/kernels/table.h"

namespace trovenu {

const Kernels *BaselineKernels() { return &kKernels; }

}  // namespace trovenu
