#pragma once

/// \file
/// Sum and mean of a window.

#include "trovenu/support/kernels/long_places.h"
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

template <class V>
struct LongSum {
  using Number = V;
  const double *x;
  int n;

  TROVENU_INLINE static V None() { return AllAs<V>(0.0); }
  TROVENU_INLINE V One(int i) const { return LoadAs<V>(x + i); }
  TROVENU_INLINE V Run(int i) const { return (One(i) + One(i - 1)) + (One(i - 2) + One(i - 3)); }
  TROVENU_INLINE static V Join(V total, V other) { return total + other; }
  TROVENU_INLINE static V Result(V total) { return total; }
};

template <class V>
struct LongMean : LongSum<V> {
  TROVENU_INLINE V Result(V total) const { return total / AllAs<V>(this->n); }
};

template <class V, int kRest>
using LongSumPlaces = PlacesOf<LongSum<V>, kRest>;
template <class V, int kRest>
using LongMeanPlaces = PlacesOf<LongMean<V>, kRest>;

void Sum(const double *x, int from, int to, int n, double *out) {
  if (n <= kLongestShortWindow) return SlideShortWindows(SumOfBars{{x}}, from, to, n, out);
  SlideLongPlaces<LongSumPlaces>(x, from, to, n, out);
}

void Mean(const double *x, int from, int to, int n, double *out) {
  if (n <= kLongestShortWindow)
    return SlideShortWindows(MeanOfBars{{{x}}, static_cast<double>(n)}, from, to, n, out);
  SlideLongPlaces<LongMeanPlaces>(x, from, to, n, out);
  MendFlatWindows(x, from, to, n, out + from);
}

}  // namespace
}  // namespace trovenu
