#pragma once

/// \file
/// Long windows of sums and extremes, four bars at a time.
///
/// A window of n = 4k + e bars consists of k runs of four bars, which end 0, 4, 8 ... bars before the newest
/// one, and of the e oldest bars. The runs that end at the four bars of a place are put together side by
/// side, so that k places stand for k bars of a long window (long_windows.h).
///
/// `Places<V, kRest>(x, n)` is a statistic of long windows whose bars are places, V being FourBars, or double
/// for one bar of each place, and kRest being e. `PlacesOf` makes one of what is simply put together.

#include "trovenu/support/kernels/long_windows.h"
#include "trovenu/support/kernels/short_windows.h"

namespace trovenu {
namespace {

// From a statistic that is an aggregate of the series and n, and supplies
//   V None()                   of no bars
//   V Run(int i)               of the bars i - 3 to i
//   V Join(V total, V other)   of what is put together so far and another run or bar
//   V One(int i)               of one bar, for Join
//   V Result(V total)
template <class Statistic, int kRest>
class PlacesOf {
 public:
  using Part = typename Statistic::Number;

  PlacesOf(const double *x, int n) : statistic_{x, n} {}

  Part None() const { return statistic_.None(); }
  TROVENU_INLINE void Append(Part &part, int place, int /*block*/) const {
    part = statistic_.Join(part, statistic_.Run(kPlaceBars * place));
  }
  TROVENU_INLINE void Prepend(Part &part, int place, int block) const { Append(part, place, block); }
  TROVENU_INLINE Part Value(const Part &older, const Part &newer, int, int place, int) const {
    Part total = statistic_.Join(older, newer);
    const int oldest = kPlaceBars * place - statistic_.n + 1;
    for (int k = 0; k < kRest; ++k) total = statistic_.Join(total, statistic_.One(oldest + k));
    return statistic_.Result(total);
  }

 private:
  const Statistic statistic_;
};

// Bars of places that are not whole, each as the first of the four that a place has in a series that begins
// as many bars later.
template <class Places>
void SlideSingleBars(const double *x, int from, int to, int n, double *out) {
  for (int i = from; i < to; ++i) {
    const int place = i / kPlaceBars;
    SlideLongWindows(Places(x + i % kPlaceBars, n), place, place + 1, n / kPlaceBars, out + (i - place));
  }
}

template <template <class, int> class Places, int kRest>
void SlidePlacesWithRest(const double *x, int from, int to, int n, double *out) {
  using SingleBars = Places<double, kRest>;
  const int aligned = (from + kPlaceBars - 1) / kPlaceBars;
  const int whole = to / kPlaceBars;
  if (aligned >= whole) return SlideSingleBars<SingleBars>(x, from, to, n, out);
  SlideSingleBars<SingleBars>(x, from, aligned * kPlaceBars, n, out);
  SlideLongWindows(Places<FourBars, kRest>(x, n), aligned, whole, n / kPlaceBars, out);
  SlideSingleBars<SingleBars>(x, whole * kPlaceBars, to, n, out);
}

template <template <class, int> class Places>
void SlideLongPlaces(const double *x, int from, int to, int n, double *out) {
  switch (n % kPlaceBars) {
    case 0:
      return SlidePlacesWithRest<Places, 0>(x, from, to, n, out);
    case 1:
      return SlidePlacesWithRest<Places, 1>(x, from, to, n, out);
    case 2:
      return SlidePlacesWithRest<Places, 2>(x, from, to, n, out);
    default:
      return SlidePlacesWithRest<Places, 3>(x, from, to, n, out);
  }
}

}  // namespace
}  // namespace trovenu
