#define TROVENU_PLAIN_NUMBERS
#include "tests/support/four_bars_operations.h"

namespace trovenu {

std::vector<double> PlainOperations(const double *x) { return Operations(x); }

}  // namespace trovenu
