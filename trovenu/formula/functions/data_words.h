#pragma once

/// \file
/// The words that stand for a series of the symbol itself.

#include "trovenu/formula/function.h"

namespace trovenu {

/// The plain date of every bar, also of those below the start index.
SVector CalendarDates(const SVector &date);

/// The time of day of every bar as hhmmss, 0 for a plain date.
SVector TimesOfDay(const SVector &date);

FunctionRows DataWordRows();

}  // namespace trovenu
