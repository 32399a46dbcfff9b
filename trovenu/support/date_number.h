#pragma once

#include <cmath>
#include <cstdint>

#include "trovenu/platform/export.h"

// Date numbers. The date of a bar is a double in decimal digits: up to 1e8 a plain date, yyyymmdd; above it
// date and time, yyyymmddhhmmss. A fraction is ignored. What is no date (0 or below, NaN) has the fields 0,
// and a field is read from its digits whether or not a calendar has such a day.

namespace trovenu {

/// The largest plain date; a larger number carries a time.
inline constexpr double kLargestPlainDate = 1e8;

/// What the date stands above in a number that carries a time.
inline constexpr double kTimeOfDayDigits = 1e6;

/// Below this the date in a number that carries a time fits 32 bits, the form that costs the least.
inline constexpr double kShortDateEnd = 2147483648.0 * kTimeOfDayDigits;

/// The plain date of a date number, for comparing days; a plain date as it is.
inline double GetCompDate(double date) {
  if (!(date > kLargestPlainDate)) return date;
  const double day = date / kTimeOfDayDigits;
  return date < kShortDateEnd ? static_cast<double>(static_cast<std::int32_t>(day)) : std::trunc(day);
}

/// The plain date as an integer, limited to 32 bits.
TROVENU_API long GetLongDate(double date);

TROVENU_API int GetYear(double date);
TROVENU_API int GetMonth(double date);
/// The day of the month.
TROVENU_API int GetDate(double date);
/// The hour; 0 for a plain date.
TROVENU_API int GetHour(double date);
/// The minute; 0 for a plain date.
TROVENU_API int GetMinute(double date);

/// The moment `minutes` after `date`, or before it if negative, over midnight, months and leap years. A plain
/// date stands for its midnight, and gives the first plain date at or after that moment. Months and days
/// outside their ranges are limited to them first. Results stay between the years 0 and 9999; what is no
/// date, and a number above the year 9999, comes back as it is.
TROVENU_API double GetNextTime(double date, int minutes);

}  // namespace trovenu
