#pragma once

/// \file
/// Correlation of two series over a window.

#include "trovenu/support/kernels/block_shares.h"
#include "trovenu/support/kernels/long_windows.h"

namespace trovenu {
namespace {

// Two series with what `DeviationOfBars` carries for one, and the same of their products.
struct CorrelationOfBars {
  static constexpr int kOperands = 2;
  static constexpr bool kFlatIsElement = false;
  struct Products {
    FourBars xx;
    FourBars yy;
    FourBars xy;
  };
  struct Block {
    FourBars x;
    FourBars y;
    Products squares;
  };
  struct Total {
    FourBars x;
    FourBars y;
    Products squares;
    FourBars offX;
    FourBars offY;
    Products off;
  };
  const double *operand[kOperands];
  BlockShares shares;

  TROVENU_INLINE Block One(int i) const {
    const FourBars zero = All(0.0);
    return {Load(operand[0] + i), Load(operand[1] + i), {zero, zero, zero}};
  }
  TROVENU_INLINE Block Two(int i) const {
    const FourBars newerX = Load(operand[0] + i);
    const FourBars newerY = Load(operand[1] + i);
    const FourBars olderX = Load(operand[0] + i - 1);
    const FourBars olderY = Load(operand[1] + i - 1);
    const FourBars x = newerX - olderX;
    const FourBars y = newerY - olderY;
    return {newerX + olderX, newerY + olderY, {x * x, y * y, x * y}};
  }
  TROVENU_INLINE static FourBars Joined(FourBars newer, FourBars older, FourBars apart) {
    const FourBars within = newer + older;
    return All(2.0) * within + apart;
  }
  TROVENU_INLINE static Block Merge(const Block &newer, const Block &older, BlockPlace /*at*/) {
    const FourBars x = newer.x - older.x;
    const FourBars y = newer.y - older.y;
    return {
        newer.x + older.x,
        newer.y + older.y,
        {Joined(newer.squares.xx, older.squares.xx, x * x), Joined(newer.squares.yy, older.squares.yy, y * y),
         Joined(newer.squares.xy, older.squares.xy, x * y)}};
  }
  TROVENU_INLINE static Block Earlier(const Block &before, const Block &now) {
    return {
        TwoBarsEarlier(before.x, now.x),
        TwoBarsEarlier(before.y, now.y),
        {TwoBarsEarlier(before.squares.xx, now.squares.xx), TwoBarsEarlier(before.squares.yy, now.squares.yy),
         TwoBarsEarlier(before.squares.xy, now.squares.xy)}};
  }
  TROVENU_INLINE static Total Begin(const Block &block, BlockPlace /*at*/) {
    const FourBars zero = All(0.0);
    return {block.x, block.y, block.squares, zero, zero, {zero, zero, zero}};
  }
  TROVENU_INLINE void Add(Total &total, const Block &block, BlockPlace at) const {
    const FourBars times = shares.Times(at.size);
    const FourBars x = block.x * times - total.x;
    const FourBars y = block.y * times - total.y;
    const FourBars weighedX = x * shares.Share(at.size);
    const FourBars weighedY = y * shares.Share(at.size);
    total.offX = total.offX + weighedX;
    total.offY = total.offY + weighedY;
    total.off = {total.off.xx + weighedX * x, total.off.yy + weighedY * y, total.off.xy + weighedX * y};
    total.squares = {total.squares.xx + block.squares.xx * times, total.squares.yy + block.squares.yy * times,
                     total.squares.xy + block.squares.xy * times};
  }
  TROVENU_INLINE FourBars Value(const Total &total) const {
    const FourBars part = All(shares.ofWindow);
    const FourBars xx = total.squares.xx + (total.off.xx - total.offX * total.offX * part);
    const FourBars yy = total.squares.yy + (total.off.yy - total.offY * total.offY * part);
    const FourBars xy = total.squares.xy + (total.off.xy - total.offX * total.offY * part);
    const FourBars product = xx * yy;
    const FourBars correlation = UnlessZero(product, xy / SquareRoot(product), 0.0);
    return UnlessZero(xx, UnlessZero(yy, correlation, 0.0), 0.0);
  }
};

struct LongCorrelation {
  struct Part {
    double x;
    double y;
    double xx;
    double yy;
    double xy;
  };
  const double *x;
  const double *y;
  double perBar;

  static Part None() { return {0.0, 0.0, 0.0, 0.0, 0.0}; }
  void Append(Part &part, int i, int block) const {
    const double dx = x[i] - x[block];
    const double dy = y[i] - y[block];
    part.x += dx;
    part.y += dy;
    part.xx += dx * dx;
    part.yy += dy * dy;
    part.xy += dx * dy;
  }
  void Prepend(Part &part, int i, int block) const { Append(part, i, block); }
  double Value(const Part &older, const Part &newer, int, int, int) const {
    const double sumX = older.x + newer.x;
    const double sumY = older.y + newer.y;
    const double varianceX = older.xx + newer.xx - sumX * (sumX * perBar);
    const double varianceY = older.yy + newer.yy - sumY * (sumY * perBar);
    const double covariance = older.xy + newer.xy - sumX * (sumY * perBar);
    if (varianceX <= 0.0 || varianceY <= 0.0) return 0.0;
    const double product = varianceX * varianceY;
    return product == 0.0 ? 0.0 : covariance / std::sqrt(product);
  }
};

// Windows of many blocks, each with five numbers, cost more than long windows do.
bool HasFewBlocks(int n) {
  int blocks = 0;
  for (int digits = n; digits != 0; digits &= digits - 1) ++blocks;
  return n < 32 && blocks <= 3;
}

void Correlation(const double *x, const double *y, int from, int to, int n, double *out) {
  if (!HasFewBlocks(n)) {
    return SlideLongWindows(LongCorrelation{x, y, 1.0 / n}, from, to, n, out);
  }
  SlideShortWindows(CorrelationOfBars{{x, y}, BlockShares(n)}, from, to, n, out);
}

}  // namespace
}  // namespace trovenu
