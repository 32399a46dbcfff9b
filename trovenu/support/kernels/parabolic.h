#pragma once

/// \file
/// The walk of the parabolic stop-and-reverse.

#include "trovenu/support/kernels/four_bars.h"

namespace trovenu {
namespace {

// Of each Part the first element counts: that way the choices between numbers which fall one way at half of
// the bars and the other way at the rest are made without a branch. Only a reversal takes one.
struct ParabolicWalk {
  Part stop;
  Part extreme;
  Part acceleration;
  Part step;
  Part maximum;
  Part restart;

  // Takes the walk over the bars from i on up to a reversal, that bar included. `towards` are the prices in
  // the direction of the walk, `against` those that may reverse it. \return the bar behind the last one.
  template <bool kRising>
  TROVENU_INLINE int Walk(const double *towards, const double *against, int i, int to, double *out) {
    while (i < to) {
      stop = (extreme - stop) * acceleration + stop;
      const Part other = Single(against[i]);
      const Part price = Single(towards[i]);
      if (IsBeyond<kRising>(First(stop), against[i])) {
        stop = extreme;
        extreme = other;
        acceleration = restart;
        out[i] = First(stop);
        return i + 1;
      }
      out[i] = First(stop);
      const Part faster = SmallerOf(acceleration + step, maximum);
      acceleration = kRising ? WhereBelow(extreme, price, faster, acceleration)
                             : WhereBelow(price, extreme, faster, acceleration);
      extreme = kRising ? LargerOf(price, extreme) : SmallerOf(price, extreme);
      ++i;
    }
    return i;
  }

  template <bool kRising>
  static bool IsBeyond(double limit, double price) {
    return kRising ? price < limit : price > limit;
  }
};

void Parabolic(const double *high, const double *low, const ParabolicStart &start, int from, int to,
               double *out) {
  ParabolicWalk walk{Single(start.stop), Single(start.extreme), Single(start.acceleration),
                     Single(start.step), Single(start.maximum), Single(start.acceleration)};
  int i = start.rising ? from : walk.Walk<false>(low, high, from, to, out);
  while (i < to) {
    i = walk.Walk<true>(high, low, i, to, out);
    i = walk.Walk<false>(low, high, i, to, out);
  }
}

}  // namespace
}  // namespace trovenu
