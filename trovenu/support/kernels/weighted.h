#pragma once

/// \file
/// Linearly weighted mean of a window, the newest element the heaviest.

#include "trovenu/support/kernels/long_windows.h"
#include "trovenu/support/kernels/short_windows.h"

namespace trovenu {
namespace {

struct WeightedMeanOfBars {
  static constexpr int kOperands = 1;
  static constexpr bool kFlatIsElement = true;
  struct Block {
    FourBars sum;
    FourBars weighted;  // Weights from 1 at the oldest bar.
  };
  struct Total {
    FourBars weighted;
  };
  const double *operand[kOperands];
  int n;
  double weights;

  TROVENU_INLINE Block One(int i) const {
    const FourBars x = Load(operand[0] + i);
    return {x, x};
  }
  TROVENU_INLINE Block Two(int i) const {
    const FourBars newer = Load(operand[0] + i);
    const FourBars sum = newer + Load(operand[0] + i - 1);
    return {sum, sum + newer};
  }
  // An older block raises the weights of what is newer by the number of its bars.
  TROVENU_INLINE static Block Merge(const Block &newer, const Block &older, BlockPlace at) {
    return {newer.sum + older.sum, (newer.weighted + older.weighted) + All(at.size) * newer.sum};
  }
  TROVENU_INLINE static Block Earlier(const Block &before, const Block &now) {
    return {TwoBarsEarlier(before.sum, now.sum), TwoBarsEarlier(before.weighted, now.weighted)};
  }
  TROVENU_INLINE Total Begin(const Block &block, BlockPlace at) const {
    Total total{block.weighted};
    const int older = n - at.lag - at.size;
    if (older > 0) total.weighted = total.weighted + All(older) * block.sum;
    return total;
  }
  TROVENU_INLINE void Add(Total &total, const Block &block, BlockPlace at) const {
    const int older = n - at.lag - at.size;
    total.weighted = total.weighted + (block.weighted + All(older) * block.sum);
  }
  TROVENU_INLINE FourBars Value(const Total &total) const { return total.weighted / All(weights); }
};

struct LongWeightedMean {
  // The sum of the run, and its sum with weights that begin at 1 on the older side.
  struct Part {
    double sum;
    double weighted;
    int count;
  };
  const double *x;
  double n;
  double weights;

  static Part None() { return {0.0, 0.0, 0}; }
  void Append(Part &part, int i, int /*block*/) const {
    ++part.count;
    part.sum += x[i];
    part.weighted += part.count * x[i];
  }
  void Prepend(Part &part, int i, int /*block*/) const {
    part.sum += x[i];
    part.weighted += part.sum;
  }
  double Value(const Part &older, const Part &newer, int newerCount, int, int) const {
    return (older.weighted + (newer.weighted + (n - newerCount) * newer.sum)) / weights;
  }
};

void WeightedMean(const double *x, int from, int to, int n, double *out) {
  const double count = n;
  const double weights = count * (count + 1.0) / 2.0;
  if (n <= kLongestShortWindow) {
    return SlideShortWindows(WeightedMeanOfBars{{x}, n, weights}, from, to, n, out);
  }
  SlideLongWindows(LongWeightedMean{x, count, weights}, from, to, n, out);
  MendFlatWindows(x, from, to, n, out + from);
}

}  // namespace
}  // namespace trovenu
