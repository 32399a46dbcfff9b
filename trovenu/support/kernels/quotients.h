#pragma once

/// \file
/// Quotients bar by bar; a division by 0 gives 0.0. The result may take the place of an operand.

#include "trovenu/support/kernels/four_bars.h"

namespace trovenu {
namespace {

double QuotientOf(double a, double b) { return b == 0.0 ? 0.0 : a / b; }

void Quotients(const double *a, const double *b, int from, int to, double *out) {
  int i = from;
  for (; to - i >= 4; i += 4) {
    const FourBars divisor = Load(b + i);
    Store(out + i, UnlessZero(divisor, Load(a + i) / divisor, 0.0));
  }
  for (; i < to; ++i) out[i] = QuotientOf(a[i], b[i]);
}

void QuotientsOfNumber(double a, const double *b, int from, int to, double *out) {
  int i = from;
  for (; to - i >= 4; i += 4) {
    const FourBars divisor = Load(b + i);
    Store(out + i, UnlessZero(divisor, All(a) / divisor, 0.0));
  }
  for (; i < to; ++i) out[i] = QuotientOf(a, b[i]);
}

}  // namespace
}  // namespace trovenu
