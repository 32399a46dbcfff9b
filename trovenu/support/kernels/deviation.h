#pragma once

/// \file
/// Standard deviation of a window.

#include "trovenu/support/kernels/long_windows.h"
#include "trovenu/support/kernels/short_windows.h"

namespace trovenu {
namespace {

// A block of m bars carries the sum S of its elements' distances from its newest one, which keeps the digits
// that a sum of the elements would lose, and the sum Q of their squared distances from their own mean. Of two
// such blocks, with S from the same element, the latter makes Qa + Qb + (Sa - Sb)^2 / 2m: no large squares
// are taken from each other.
struct DeviationOfBars {
  static constexpr int kOperands = 1;
  static constexpr bool kFlatIsElement = false;
  struct Block {
    FourBars sum;
    FourBars squares;
  };
  // The same of the bars added so far.
  struct Total {
    FourBars sum;
    FourBars squares;
    int bars;
  };
  const double *operand[kOperands];
  double n;

  // The sum of a block of `size` bars that ends at bar i, from the element `ahead` bars newer.
  TROVENU_INLINE FourBars Moved(FourBars sum, int i, int size, int ahead) const {
    if (ahead == 0) return sum;
    return sum + All(size) * (Load(operand[0] + i) - Load(operand[0] + i + ahead));
  }
  TROVENU_INLINE static Block One(int /*i*/) { return {All(0.0), All(0.0)}; }
  TROVENU_INLINE Block Two(int i) const {
    const FourBars apart = Load(operand[0] + i - 1) - Load(operand[0] + i);
    return {apart, apart * apart * All(0.5)};
  }
  TROVENU_INLINE Block Merge(const Block &newer, const Block &older, BlockPlace at) const {
    const FourBars olderSum = Moved(older.sum, at.end - at.size, at.size, at.size);
    const FourBars apart = newer.sum - olderSum;
    const FourBars between = apart * apart * All(0.5 / at.size);
    return {newer.sum + olderSum, (newer.squares + older.squares) + between};
  }
  TROVENU_INLINE static Block Earlier(const Block &before, const Block &now) {
    return {TwoBarsEarlier(before.sum, now.sum), TwoBarsEarlier(before.squares, now.squares)};
  }
  TROVENU_INLINE Total Begin(const Block &block, BlockPlace at) const {
    return {Moved(block.sum, at.end, at.size, at.lag), block.squares, at.size};
  }
  TROVENU_INLINE void Add(Total &total, const Block &block, BlockPlace at) const {
    const FourBars sum = Moved(block.sum, at.end, at.size, at.lag);
    const FourBars apart = total.sum * All(1.0 / total.bars) - sum * All(1.0 / at.size);
    const int bars = total.bars + at.size;
    const FourBars between = apart * apart * All(static_cast<double>(total.bars * at.size) / bars);
    total.squares = total.squares + (block.squares + between);
    total.sum = total.sum + sum;
    total.bars = bars;
  }
  TROVENU_INLINE FourBars Value(const Total &total) const { return SquareRoot(total.squares * All(1.0 / n)); }
};

struct LongDeviation {
  struct Part {
    double sum;
    double squares;
  };
  const double *x;
  double perBar;

  static Part None() { return {0.0, 0.0}; }
  void Append(Part &part, int i, int block) const {
    const double d = x[i] - x[block];
    part.sum += d;
    part.squares += d * d;
  }
  void Prepend(Part &part, int i, int block) const { Append(part, i, block); }
  double Value(const Part &older, const Part &newer, int, int, int) const {
    const double sum = older.sum + newer.sum;
    const double squares = older.squares + newer.squares;
    const double variance = (squares - sum * (sum * perBar)) * perBar;
    return variance < 0.0 ? 0.0 : std::sqrt(variance);
  }
};

void Deviation(const double *x, int from, int to, int n, double *out) {
  const double count = n;
  if (n <= kLongestShortWindow) return SlideShortWindows(DeviationOfBars{{x}, count}, from, to, n, out);
  SlideLongWindows(LongDeviation{x, 1.0 / count}, from, to, n, out);
}

}  // namespace
}  // namespace trovenu
