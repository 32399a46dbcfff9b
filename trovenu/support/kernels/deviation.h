#pragma once

/// \file
/// Standard deviation of a window.

#include "trovenu/support/kernels/long_places.h"
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

// A long run of bars carries the sums of its elements' distances from an origin and of their squares. The
// origin is an element at first and moves to the mean when the run has grown to 8, 64 ... times four bars:
// squares from a far origin would swallow the digits of the deviation, be it that the origin is a spike or
// that prices have left it.
template <class V, int kRest>
class LongDeviationPlaces {
 public:
  struct Part {
    V origin;
    V sum;
    V squares;
  };

  LongDeviationPlaces(const double *x, int n)
      : x_(x),
        n_(n),
        runsBars_(n - kRest),
        perBar_(1.0 / n),
        perRunsBar_(1.0 / runsBars_),
        restWeight_(static_cast<double>(runsBars_) * kRest / n) {}

  static Part None() { return {AllAs<V>(0.0), AllAs<V>(0.0), AllAs<V>(0.0)}; }
  TROVENU_INLINE void Append(Part &part, int place, int block) const { Take(part, place, place - block + 1); }
  TROVENU_INLINE void Prepend(Part &part, int place, int block) const { Take(part, place, block - place); }
  TROVENU_INLINE V Value(const Part &older, const Part &newer, int newerRuns, int place, int) const {
    const Total runs = Joined(older, newer, kPlaceBars * newerRuns);
    V squares = runs.squares;
    if constexpr (kRest > 0) {
      const Total rest = Rest(x_ + (kPlaceBars * place - n_ + 1), newer.origin);
      const V apart = rest.mean - runs.mean;
      squares = (squares + rest.squares) + apart * apart * AllAs<V>(restWeight_);
    }
    return SquareRoot(Larger(AllAs<V>(0.0), squares) * AllAs<V>(perBar_));
  }

 private:
  // The mean of some bars, from a given origin, and the squares of the distances from it.
  struct Total {
    V mean;
    V squares;
  };
  TROVENU_INLINE Total Joined(const Part &older, const Part &newer, int newerBars) const {
    const double olderBars = runsBars_ - newerBars;
    if (olderBars == 0.0) return FromOwnMean(newer, perRunsBar_);
    const double perPair = 1.0 / (olderBars * newerBars);
    const Total a = FromOwnMean(older, newerBars * perPair);
    const Total b = FromOwnMean(newer, olderBars * perPair);
    const V apart = (older.origin - newer.origin) + (a.mean - b.mean);
    const V share = apart * AllAs<V>(olderBars * perRunsBar_);
    return {b.mean + share, (b.squares + a.squares) + apart * share * AllAs<V>(newerBars)};
  }
  TROVENU_INLINE static Total FromOwnMean(const Part &part, double perBar) {
    const V mean = part.sum * AllAs<V>(perBar);
    return {mean, part.squares - part.sum * mean};
  }
  // Of the bars that are left over, the first of which is the oldest.
  TROVENU_INLINE static Total Rest(const double *oldest, V origin) {
    const V first = LoadAs<V>(oldest);
    const V from = first - origin;
    if constexpr (kRest == 1) return {from, AllAs<V>(0.0)};
    const V second = LoadAs<V>(oldest + 1) - first;
    if constexpr (kRest == 2) return {from + second * AllAs<V>(0.5), second * second * AllAs<V>(0.5)};
    const V third = LoadAs<V>(oldest + kRest - 1) - first;
    const V mean = (second + third) * AllAs<V>(1.0 / 3.0);
    const V apart = third - second;
    // The middle of the latter two lies half as far again from the mean as the mean from the first.
    return {from + mean, apart * apart * AllAs<V>(0.5) + mean * mean * AllAs<V>(1.5)};
  }

  // Lengthens a run by four bars, which makes it one of `runs` times as many.
  TROVENU_INLINE void Take(Part &part, int place, int runs) const {
    const double *const newest = x_ + kPlaceBars * place;
    if (runs == 1) part.origin = LoadAs<V>(newest);
    const V a = LoadAs<V>(newest) - part.origin;
    const V b = LoadAs<V>(newest - 1) - part.origin;
    const V c = LoadAs<V>(newest - 2) - part.origin;
    const V d = LoadAs<V>(newest - 3) - part.origin;
    part.sum = part.sum + ((a + b) + (c + d));
    part.squares = part.squares + ((a * a + b * b) + (c * c + d * d));
    if ((runs & (runs - 1)) == 0 && (runs & kPowersOfEight) != 0) MoveOrigin(part, kPlaceBars * runs);
  }
  TROVENU_INLINE static void MoveOrigin(Part &part, int bars) {
    const V count = AllAs<V>(bars);
    const V mean = part.origin + part.sum * AllAs<V>(1.0 / bars);
    const V move = mean - part.origin;
    part.squares = part.squares - move * ((part.sum + part.sum) - count * move);
    part.sum = part.sum - count * move;
    part.origin = mean;
  }

  static constexpr int kPowersOfEight = 0x49249248;  // Without 1.

  const double *const x_;
  const int n_;
  const int runsBars_;
  const double perBar_;
  const double perRunsBar_;
  // Of the distance between the means of the runs and of the bars left over.
  const double restWeight_;
};

void Deviation(const double *x, int from, int to, int n, double *out) {
  const double count = n;
  if (n <= kLongestShortWindow) return SlideShortWindows(DeviationOfBars{{x}, count}, from, to, n, out);
  SlideLongPlaces<LongDeviationPlaces>(x, from, to, n, out);
}

}  // namespace
}  // namespace trovenu
