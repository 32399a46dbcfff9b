#pragma once

/// \file
/// Values of the current and the previous trading day. A day begins where the plain date differs from that of
/// the bar before; the first date in the data is incomplete and gives no value. The results have the size of
/// `date`.

#include "trovenu/formula/function.h"

namespace trovenu {

/// The open of the day's first bar, repeated on its other bars.
SVector DayOpen(const SVector &date, const SVector &open);

/// The high (low) of the day so far.
SVector DayHigh(const SVector &date, const SVector &high);
SVector DayLow(const SVector &date, const SVector &low);

/// The close of the last bar of the day before.
SVector PreDayClose(const SVector &date, const SVector &close);

/// The open, high, low of the day before. Valid from the last bar of the second date, which holds that date's
/// own value. Required: on the third date the open is that date's own.
SVector PreDayOpen(const SVector &date, const SVector &open);
SVector PreDayHigh(const SVector &date, const SVector &high);
SVector PreDayLow(const SVector &date, const SVector &low);

/// Number of the bar within its day, from 0; valid from the start of `date`.
SVector DayIndex(const SVector &date);

FunctionRows DayValueRows();

}  // namespace trovenu
