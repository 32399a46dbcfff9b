#pragma once

#include "trovenu/support/series.h"

/// \file
/// What must hold in every run. What doesn't ends the program, which makes the input a finding.

namespace trovenu::fuzz {

/// Ends the program, with `what` on standard error, unless `holds`.
void Require(bool holds, const char *what);

/// Whether two numbers have the same bits, or are both no number.
bool IsSameNumber(double a, double b);

/// Whether two series agree in kind, size, start index and every valid element, bit for bit.
bool IsSameSeries(const SVector &a, const SVector &b);

/// Whether two series agree in size and in every element, those below the start index too.
bool HaveSameElements(const SVector &a, const SVector &b);

}  // namespace trovenu::fuzz
