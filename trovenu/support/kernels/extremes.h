#pragma once

/// \file
/// Largest and smallest element of a window. NaN is passed over.

#include "trovenu/support/kernels/long_windows.h"
#include "trovenu/support/kernels/short_windows.h"

namespace trovenu {
namespace {

template <bool kLargest>
constexpr double kBeyondAll = kLargest ? -__builtin_inf() : __builtin_inf();

template <bool kLargest>
struct ExtremeOfBars {
  static constexpr int kOperands = 1;
  static constexpr bool kFlatIsElement = false;
  struct Block {
    FourBars extreme;
  };
  using Total = Block;
  const double *operand[kOperands];

  // `b` unless `a` lies beyond it; never NaN where `b` is not.
  TROVENU_INLINE static FourBars Pick(FourBars a, FourBars b) {
    if constexpr (kLargest) {
      return Larger(a, b);
    } else {
      return Smaller(a, b);
    }
  }
  TROVENU_INLINE Block One(int i) const { return {Pick(Load(operand[0] + i), All(kBeyondAll<kLargest>))}; }
  TROVENU_INLINE Block Two(int i) const { return {Pick(Load(operand[0] + i - 1), One(i).extreme)}; }
  TROVENU_INLINE static Block Merge(const Block &newer, const Block &older, BlockPlace /*at*/) {
    return {Pick(newer.extreme, older.extreme)};
  }
  TROVENU_INLINE static Block Earlier(const Block &before, const Block &now) {
    return {TwoBarsEarlier(before.extreme, now.extreme)};
  }
  TROVENU_INLINE static Total Begin(const Block &block, BlockPlace /*at*/) { return block; }
  TROVENU_INLINE static void Add(Total &total, const Block &block, BlockPlace /*at*/) {
    total.extreme = Pick(block.extreme, total.extreme);
  }
  TROVENU_INLINE static FourBars Value(const Total &total) { return total.extreme; }
};

template <bool kLargest>
struct LongExtreme {
  struct Part {
    double extreme;
  };
  const double *x;

  static double Pick(double a, double b) {
    if constexpr (kLargest) {
      return b > a ? b : a;
    } else {
      return b < a ? b : a;
    }
  }
  static Part None() { return {kBeyondAll<kLargest>}; }
  void Append(Part &part, int i, int /*block*/) const { part.extreme = Pick(part.extreme, x[i]); }
  void Prepend(Part &part, int i, int /*block*/) const { part.extreme = Pick(part.extreme, x[i]); }
  double Value(const Part &older, const Part &newer, int, int, int) const {
    return Pick(older.extreme, newer.extreme);
  }
};

template <bool kLargest>
void Extreme(const double *x, int from, int to, int n, double *out) {
  if (n <= kLongestShortWindow) return SlideShortWindows(ExtremeOfBars<kLargest>{{x}}, from, to, n, out);
  SlideLongWindows(LongExtreme<kLargest>{x}, from, to, n, out);
}

void Highest(const double *x, int from, int to, int n, double *out) { Extreme<true>(x, from, to, n, out); }

void Lowest(const double *x, int from, int to, int n, double *out) { Extreme<false>(x, from, to, n, out); }

}  // namespace
}  // namespace trovenu
