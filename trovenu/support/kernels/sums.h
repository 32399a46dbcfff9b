#pragma once

/// \file
/// Sum and mean of a window.

#include "trovenu/support/kernels/long_windows.h"
#include "trovenu/support/kernels/short_windows.h"

namespace trovenu {
namespace {

struct SumOfBars {
  static constexpr int kOperands = 1;
  static constexpr bool kFlatIsElement = false;
  struct Block {
    FourBars sum;
  };
  using Total = Block;
  const double *operand[kOperands];

  TROVENU_INLINE Block One(int i) const { return {Load(operand[0] + i)}; }
  TROVENU_INLINE Block Two(int i) const { return {Load(operand[0] + i) + Load(operand[0] + i - 1)}; }
  TROVENU_INLINE static Block Merge(const Block &newer, const Block &older, BlockPlace /*at*/) {
    return {newer.sum + older.sum};
  }
  TROVENU_INLINE static Block Earlier(const Block &before, const Block &now) {
    return {TwoBarsEarlier(before.sum, now.sum)};
  }
  TROVENU_INLINE static Total Begin(const Block &block, BlockPlace /*at*/) { return block; }
  TROVENU_INLINE static void Add(Total &total, const Block &block, BlockPlace /*at*/) {
    total.sum = total.sum + block.sum;
  }
  TROVENU_INLINE static FourBars Value(const Total &total) { return total.sum; }
};

struct MeanOfBars : SumOfBars {
  static constexpr bool kFlatIsElement = true;
  double n;

  TROVENU_INLINE FourBars Value(const Total &total) const { return total.sum / All(n); }
};

struct LongSum {
  struct Part {
    double sum;
  };
  const double *x;

  static Part None() { return {0.0}; }
  void Append(Part &part, int i, int /*block*/) const { part.sum += x[i]; }
  void Prepend(Part &part, int i, int /*block*/) const { part.sum += x[i]; }
  double Value(const Part &older, const Part &newer, int, int, int) const { return older.sum + newer.sum; }
};

struct LongMean : LongSum {
  double n;

  double Value(const Part &older, const Part &newer, int, int, int) const {
    return (older.sum + newer.sum) / n;
  }
};

void Sum(const double *x, int from, int to, int n, double *out) {
  if (n <= kLongestShortWindow) return SlideShortWindows(SumOfBars{{x}}, from, to, n, out);
  SlideLongWindows(LongSum{x}, from, to, n, out);
}

void Mean(const double *x, int from, int to, int n, double *out) {
  const double count = n;
  if (n <= kLongestShortWindow) return SlideShortWindows(MeanOfBars{{{x}}, count}, from, to, n, out);
  SlideLongWindows(LongMean{{x}, count}, from, to, n, out);
  MendFlatWindows(x, from, to, n, out + from);
}

}  // namespace
}  // namespace trovenu
