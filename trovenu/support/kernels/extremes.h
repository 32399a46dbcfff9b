#pragma once

/// \file
/// Largest and smallest element of a window. NaN is passed over.

#include "trovenu/support/kernels/long_places.h"
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

template <bool kLargest, class V>
struct LongExtreme {
  using Number = V;
  const double *x;
  int n;

  TROVENU_INLINE static V None() { return AllAs<V>(kBeyondAll<kLargest>); }
  TROVENU_INLINE V One(int i) const { return LoadAs<V>(x + i); }
  TROVENU_INLINE V Run(int i) const {
    return Join(Join(Join(Join(None(), One(i)), One(i - 1)), One(i - 2)), One(i - 3));
  }
  // `total`, which is never NaN, unless the other one lies beyond it.
  TROVENU_INLINE static V Join(V total, V other) {
    if constexpr (kLargest) {
      return Larger(other, total);
    } else {
      return Smaller(other, total);
    }
  }
  TROVENU_INLINE static V Result(V total) { return total; }
};

template <class V, int kRest>
using LongHighestPlaces = PlacesOf<LongExtreme<true, V>, kRest>;
template <class V, int kRest>
using LongLowestPlaces = PlacesOf<LongExtreme<false, V>, kRest>;

template <bool kLargest>
void Extreme(const double *x, int from, int to, int n, double *out) {
  if (n <= kLongestShortWindow) return SlideShortWindows(ExtremeOfBars<kLargest>{{x}}, from, to, n, out);
  if constexpr (kLargest) {
    SlideLongPlaces<LongHighestPlaces>(x, from, to, n, out);
  } else {
    SlideLongPlaces<LongLowestPlaces>(x, from, to, n, out);
  }
}

void Highest(const double *x, int from, int to, int n, double *out) { Extreme<true>(x, from, to, n, out); }

void Lowest(const double *x, int from, int to, int n, double *out) { Extreme<false>(x, from, to, n, out); }

}  // namespace
}  // namespace trovenu
