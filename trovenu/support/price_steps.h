#pragma once

#include "trovenu/platform/export.h"

namespace trovenu {

/// A computed price brought to the nearest multiple of the exchange's price step for it, a tie to the larger
/// one; at least one step. 0 for a price of 0 or below and for what is no number.
TROVENU_API double GetNewTickValue(double price);

/// A computed step size rounded to two significant decimal digits, a tie to the larger one. 0 for a size of 0
/// or below and for what is no number.
TROVENU_API double conditionProove(double size);

}  // namespace trovenu
