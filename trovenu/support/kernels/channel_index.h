#pragma once

/// \file
/// The commodity channel index, which looks at all bars of its window again once their mean is known.

#include "trovenu/support/kernels/four_bars.h"

namespace trovenu {
namespace {

// As many bars side by side as take the sums off each other's heels.
constexpr int kSums = sizeof(Part) / sizeof(double);
constexpr int kSumBars = 4 * kSums;

TROVENU_INLINE void ChannelIndexOfBars(const double *x, int n, double unit, double *out) {
  FourBars mean[kSums];
  FourBars deviations[kSums];
  for (int k = 0; k < kSums; ++k) {
    mean[k] = Load(out + 4 * k);
    deviations[k] = All(0.0);
  }
  for (int lag = 0; lag < n; ++lag) {
    for (int k = 0; k < kSums; ++k) {
      deviations[k] = deviations[k] + Magnitude(Load(x + 4 * k - lag) - mean[k]);
    }
  }
  for (int k = 0; k < kSums; ++k) {
    const FourBars index = (Load(x + 4 * k) - mean[k]) / (All(unit) * deviations[k]);
    Store(out + 4 * k, UnlessZero(deviations[k], index, 0.0));
  }
}

double ChannelIndexOfBar(const double *x, int n, double unit, double mean) {
  double deviations = 0.0;
  for (int lag = 0; lag < n; ++lag) deviations += std::fabs(x[-lag] - mean);
  return deviations == 0.0 ? 0.0 : (x[0] - mean) / (unit * deviations);
}

void TypicalPrice(const double *high, const double *low, const double *close, int from, int to, double *out) {
  int i = from;
  for (; to - i >= 4; i += 4) {
    Store(out + i, (Load(high + i) + Load(low + i) + Load(close + i)) / All(3.0));
  }
  for (; i < to; ++i) out[i] = (high[i] + low[i] + close[i]) / 3.0;
}

void ChannelIndex(const double *x, int from, int to, int n, double *out) {
  const double unit = 0.015 / n;
  int i = from;
  for (; to - i >= kSumBars; i += kSumBars) ChannelIndexOfBars(x + i, n, unit, out + i);
  for (; i < to; ++i) out[i] = ChannelIndexOfBar(x + i, n, unit, out[i]);
}

}  // namespace
}  // namespace trovenu
