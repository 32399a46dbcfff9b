#pragma once

/// \file
/// The least-squares line through a window.

#include "trovenu/support/kernels/block_shares.h"
#include "trovenu/support/kernels/deviation.h"
#include "trovenu/support/kernels/long_windows.h"

namespace trovenu {
namespace {

// A block carries the sum of its elements and `rise`, twice the sum of the elements times their distance from
// the middle of the block, positive towards its newer end. The elements of equal bars cancel exactly.
struct LineOfBars {
  static constexpr int kOperands = 1;
  static constexpr bool kFlatIsElement = false;
  struct Block {
    FourBars sum;
    FourBars rise;
  };
  // The sum of the longest block, and by how much the others differ from parts of it.
  struct Total {
    FourBars longest;
    FourBars rise;
    FourBars apart;
  };
  const double *operand[kOperands];
  int n;
  BlockShares shares;
  // Takes `rise` of the window to its slope; 0 for a single bar.
  double perRise;

  TROVENU_INLINE Block One(int i) const { return {Load(operand[0] + i), All(0.0)}; }
  TROVENU_INLINE Block Two(int i) const {
    const FourBars newer = Load(operand[0] + i);
    const FourBars older = Load(operand[0] + i - 1);
    return {newer + older, newer - older};
  }
  TROVENU_INLINE Block Merge(const Block &newer, const Block &older, BlockPlace at) const {
    const FourBars sum = newer.sum + older.sum;
    if (at.size == 2) {
      // The same from the four elements, for less.
      const double *const x = operand[0] + at.end;
      return {sum, All(3.0) * (Load(x) - Load(x - 3)) + (Load(x - 1) - Load(x - 2))};
    }
    return {sum, (newer.rise + older.rise) + All(at.size) * (newer.sum - older.sum)};
  }
  TROVENU_INLINE static Block Earlier(const Block &before, const Block &now) {
    return {TwoBarsEarlier(before.sum, now.sum), TwoBarsEarlier(before.rise, now.rise)};
  }
  TROVENU_INLINE static Total Begin(const Block &block, BlockPlace /*at*/) {
    return {block.sum, block.rise, All(0.0)};
  }
  // The middle of a block lies off that of the window, twice as many bars as `off` says. Those of all blocks
  // balance, so that what the longest one adds may be taken off from the others.
  TROVENU_INLINE void Add(Total &total, const Block &block, BlockPlace at) const {
    const int off = n - at.size - 2 * at.lag;
    const FourBars apart = block.sum - total.longest * shares.Share(at.size);
    total.rise = total.rise + (block.rise + All(off) * apart);
    total.apart = total.apart + apart;
  }
};

// Least squares with deviations d from the block's first element and lags counted back from the newest bar:
// slope = (mean lag * sum d - sum (lag * d)) / sum (lag - mean lag)^2.
struct LongLine {
  struct Part {
    double sum;
    double lagged;
    double squares;
    int count;
  };
  // What a window's line comes to.
  struct Line {
    double mean;
    double slope;
    double squares;
  };
  const double *x;
  double n;
  double perBar;
  double perLagSquares;

  static Part None() { return {0.0, 0.0, 0.0, 0}; }
  void Append(Part &part, int i, int block) const {
    const double d = x[i] - x[block];
    part.lagged += part.sum;
    part.sum += d;
    part.squares += d * d;
  }
  void Prepend(Part &part, int i, int block) const {
    const double d = x[i] - x[block];
    part.lagged += part.count * d;
    part.sum += d;
    part.squares += d * d;
    ++part.count;
  }
  Line Fit(const Part &older, const Part &newer, int newerCount) const {
    const double sum = older.sum + newer.sum;
    const double lagged = newer.lagged + (older.lagged + newerCount * older.sum);
    const double mean = sum * perBar;
    return {mean, ((n - 1.0) / 2.0 * sum - lagged) * perLagSquares,
            older.squares + newer.squares - sum * mean};
  }
};

LongLine LongLineOf(const double *x, int n) {
  const double count = n;
  return {x, count, 1.0 / count, 12.0 / (count * (count * count - 1.0))};
}

struct LongLineSlope : LongLine {
  double Value(const Part &older, const Part &newer, int newerCount, int, int) const {
    return Fit(older, newer, newerCount).slope;
  }
};

struct LongLineValue : LongLine {
  double distance;

  double Value(const Part &older, const Part &newer, int newerCount, int, int block) const {
    const Line line = Fit(older, newer, newerCount);
    return x[block] + (line.mean + line.slope * distance);
  }
};

struct LongLineFit : LongLine {
  double Value(const Part &older, const Part &newer, int newerCount, int, int) const {
    const Line line = Fit(older, newer, newerCount);
    if (line.squares <= 0.0) return kNoFit;
    return line.slope * line.slope / (perLagSquares * line.squares);
  }
};

double SlopePerRise(int n) {
  const double count = n;
  return n == 1 ? 0.0 : 6.0 / (count * (count * count - 1.0));
}

struct LineSlopeOfBars : LineOfBars {
  TROVENU_INLINE FourBars Value(const Total &total) const { return total.rise * All(perRise); }
};

struct LineValueOfBars : LineOfBars {
  double ahead;

  TROVENU_INLINE FourBars Value(const Total &total) const {
    const FourBars mean = total.longest * All(1.0 / shares.longest);
    return mean + (total.apart * All(1.0 / n) + total.rise * All(ahead));
  }
};

// How much of the squares the line explains. The sums count from the newest element, as a deviation's do, so
// that the rises of equal bars cancel here too.
struct LineFitOfBars : DeviationOfBars {
  using Spread = DeviationOfBars;
  struct Block {
    Spread::Block spread;
    FourBars rise;
  };
  struct Total {
    Spread::Total spread;
    FourBars rise;
  };
  int bars;
  double perSquare;

  TROVENU_INLINE static Block One(int i) { return {Spread::One(i), All(0.0)}; }
  TROVENU_INLINE Block Two(int i) const {
    return {Spread::Two(i), Load(operand[0] + i) - Load(operand[0] + i - 1)};
  }
  TROVENU_INLINE Block Merge(const Block &newer, const Block &older, BlockPlace at) const {
    const FourBars olderSum = Moved(older.spread.sum, at.end - at.size, at.size, at.size);
    const FourBars apart = newer.spread.sum - olderSum;
    return {Spread::Merge(newer.spread, older.spread, at), (newer.rise + older.rise) + All(at.size) * apart};
  }
  TROVENU_INLINE static Block Earlier(const Block &before, const Block &now) {
    return {Spread::Earlier(before.spread, now.spread), TwoBarsEarlier(before.rise, now.rise)};
  }
  // A block's part in the rise of the window, the middle of which lies off its own.
  TROVENU_INLINE FourBars Rise(const Block &block, BlockPlace at) const {
    const FourBars sum = Moved(block.spread.sum, at.end, at.size, at.lag);
    return block.rise + All(bars - at.size - 2 * at.lag) * sum;
  }
  TROVENU_INLINE Total Begin(const Block &block, BlockPlace at) const {
    return {Spread::Begin(block.spread, at), Rise(block, at)};
  }
  TROVENU_INLINE void Add(Total &total, const Block &block, BlockPlace at) const {
    Spread::Add(total.spread, block.spread, at);
    total.rise = total.rise + Rise(block, at);
  }
  TROVENU_INLINE FourBars Value(const Total &total) const {
    const FourBars squares = total.spread.squares;
    return UnlessZero(squares, total.rise * total.rise * All(perSquare) / squares, kNoFit);
  }
};

void LineSlope(const double *x, int from, int to, int n, double *out) {
  if (n > kLongestShortWindow) {
    return SlideLongWindows(LongLineSlope{LongLineOf(x, n)}, from, to, n, out);
  }
  SlideShortWindows(LineSlopeOfBars{{{x}, n, BlockShares(n), SlopePerRise(n)}}, from, to, n, out);
}

void LineValue(const double *x, int from, int to, int n, double distance, double *out) {
  if (n > kLongestShortWindow) {
    return SlideLongWindows(LongLineValue{LongLineOf(x, n), distance}, from, to, n, out);
  }
  const double perRise = SlopePerRise(n);
  SlideShortWindows(LineValueOfBars{{{x}, n, BlockShares(n), perRise}, perRise * distance}, from, to, n, out);
}

void LineFit(const double *x, int from, int to, int n, double *out) {
  const double count = n;
  if (n > kLongestShortWindow) return SlideLongWindows(LongLineFit{LongLineOf(x, n)}, from, to, n, out);
  const double perSquare = n == 1 ? 0.0 : 3.0 / (count * (count * count - 1.0));
  SlideShortWindows(LineFitOfBars{{{x}, count}, n, perSquare}, from, to, n, out);
}

}  // namespace
}  // namespace trovenu
