#pragma once

/// \file
/// Smoothing: y[i] = keep * y[i - 1] + x[i], where each value takes over a part of the one before.
///
/// Written out eight bars back that is y[i] = s[i] + keep^8 * y[i - 8], where s adds up the last eight
/// elements and depends on no other y: eight chains that run side by side instead of one. The sums grow by
/// doubling, as in short_windows.h. A value depends on the place of the first one and on nothing newer than
/// itself.

#include <cstring>

#include "trovenu/support/kernels/four_bars.h"

namespace trovenu {
namespace {

// Values that the chains look back to.
constexpr int kChains = 8;

// The first bar, on a multiple of four, that has so many values before it; `first` has the first value. The
// bars up to there, at most `kBarsBeforeChains`, are computed one by one.
constexpr int kBarsBeforeChains = kChains + 3;
constexpr int FirstOfChains(int first) { return (first + kBarsBeforeChains) / 4 * 4; }

// The last eight values of a smoothed series, and the sums that its next ones are made of.
class Smoothing {
 public:
  // Values are those of the eight bars before. Of the elements, those of the four bars before are needed, and
  // of the four bars that end 1, 2 and 3 bars earlier each.
  Smoothing(double keep, const double *values, FourBars x, FourBars x1, FourBars x2, FourBars x3)
      : keep_(keep),
        keep2_(keep * keep),
        keep4_(keep2_ * keep2_),
        keep8_(keep4_ * keep4_),
        twos_(x + All(keep) * x1),
        fours_(twos_ + All(keep2_) * (x2 + All(keep) * x3)),
        secondLast_(Load(values)),
        last_(Load(values + 4)) {}

  // Goes on by four bars with the elements x; x1 are those of the bars one earlier each.
  TROVENU_INLINE FourBars Next(FourBars x, FourBars x1) {
    const FourBars two = x + All(keep_) * x1;
    const FourBars four = two + All(keep2_) * TwoBarsEarlier(twos_, two);
    const FourBars eight = four + All(keep4_) * fours_;
    const FourBars value = eight + All(keep8_) * secondLast_;
    twos_ = two;
    fours_ = four;
    secondLast_ = last_;
    last_ = value;
    return value;
  }

 private:
  double keep_;
  double keep2_;
  double keep4_;
  double keep8_;
  FourBars twos_;
  FourBars fours_;
  FourBars secondLast_;
  FourBars last_;
};

// Calls `next(p)` for four bars at a time, p pointing to the first of them, of which two elements before may
// be read, and stores what it gives at the bars from `from` to `to` - 1.
template <class Next>
TROVENU_INLINE void SmoothBars(const double *x, int from, int to, double *out, Next next) {
  int i = from;
  for (; to - i >= 4; i += 4) Store(out + i, next(x + i));
  if (i == to) return;
  double elements[6] = {};
  std::memcpy(elements, x + i - 2, sizeof(double) * static_cast<unsigned>(to - i + 2));
  double values[4];
  Store(values, next(elements + 2));
  for (int k = 0; i + k < to; ++k) out[i + k] = values[k];
}

// The exponential average is smoothed as its distance from the series, y - x = keep * d with
// d[i] = keep * d[i - 1] + (x[i - 1] - x[i]): over a flat series that stays exactly 0.
void Exponential(const double *x, int seed, int to, double factor, double *out) {
  const double keep = 1.0 - factor;
  const int chains = FirstOfChains(seed);
  double distances[kBarsBeforeChains + 1];
  double distance = keep == 0.0 ? 0.0 : (out[seed] - x[seed]) / keep;
  distances[0] = distance;
  for (int i = seed + 1; i < to && i < chains; ++i) {
    distance = keep * distance + (x[i - 1] - x[i]);
    distances[i - seed] = distance;
    out[i] = x[i] + keep * distance;
  }
  if (to <= chains) return;
  const auto apart = [](const double *p) TROVENU_INLINE_LAMBDA { return Load(p - 1) - Load(p); };
  const double *const before = x + chains - 4;
  Smoothing smoothing(keep, distances + (chains - kChains - seed), apart(before), apart(before - 1),
                      apart(before - 2), apart(before - 3));
  SmoothBars(x, chains, to, out, [&smoothing, apart, keep](const double *p) TROVENU_INLINE_LAMBDA {
    return Load(p) + All(keep) * smoothing.Next(apart(p), apart(p - 1));
  });
}

double StrengthOf(double rise, double fall) {
  const double sum = rise + fall;
  return sum == 0.0 ? 0.0 : 100.0 * rise / sum;
}

// Rises and falls are smoothed as n times their average, which leaves their ratio as it is.
void RelativeStrength(const double *x, int first, int to, int n, double *out) {
  const double keep = (static_cast<double>(n) - 1.0) / n;
  const int chains = FirstOfChains(first);
  double rises[kBarsBeforeChains + 1];
  double falls[kBarsBeforeChains + 1];
  double rise = 0.0;
  double fall = 0.0;
  for (int i = first - n + 1; i < to && i < chains; ++i) {
    const double change = x[i] - x[i - 1];
    const double up = change > 0.0 ? change : 0.0;
    // The first value is the plain mean of the first n changes.
    const double kept = i > first ? keep : 1.0;
    rise = kept * rise + up;
    fall = kept * fall + (up - change);
    if (i < first) continue;
    rises[i - first] = rise;
    falls[i - first] = fall;
    out[i] = StrengthOf(rise, fall);
  }
  if (to <= chains) return;
  const auto change = [](const double *p) TROVENU_INLINE_LAMBDA { return Load(p) - Load(p - 1); };
  const auto up = [change](const double *p) TROVENU_INLINE_LAMBDA { return Larger(change(p), All(0.0)); };
  const auto down = [change, up](const double *p) TROVENU_INLINE_LAMBDA { return up(p) - change(p); };
  const double *const before = x + chains - 4;
  const int last = chains - kChains - first;
  Smoothing smoothRise(keep, rises + last, up(before), up(before - 1), up(before - 2), up(before - 3));
  Smoothing smoothFall(keep, falls + last, down(before), down(before - 1), down(before - 2),
                       down(before - 3));
  SmoothBars(x, chains, to, out, [&smoothRise, &smoothFall, up, down](const double *p) TROVENU_INLINE_LAMBDA {
    const FourBars rises4 = smoothRise.Next(up(p), up(p - 1));
    const FourBars sum = rises4 + smoothFall.Next(down(p), down(p - 1));
    return UnlessZero(sum, All(100.0) * rises4 / sum, 0.0);
  });
}

}  // namespace
}  // namespace trovenu
