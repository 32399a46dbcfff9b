#pragma once

/// \file
/// The walk of the parabolic stop-and-reverse.
///
/// Each bar waits for the one before, and nobody can tell which bar reverses: a branch that depends on it
/// goes wrong at every reversal, which costs as much as ten bars. But walks that begin differently soon
/// reverse at the same bars and are one from then on. So four walks go side by side without a branch, each
/// over a piece of the bars. All but the first begin with a guess some bars ahead of their piece; where the
/// walk before arrives there in the same state, the guess has come true and the piece holds what a single
/// walk gives.

#include "trovenu/support/kernels/four_bars.h"

namespace trovenu {
namespace {

// Bars after which a walk from a guess has nearly always joined the true one.
constexpr int kJoinBars = 256;
constexpr int kMostPieceBars = 4096;

struct WalkState {
  bool rising;
  double stop;
  double extreme;
  double acceleration;
};

bool AreSame(const WalkState &a, const WalkState &b) {
  return a.rising == b.rising && a.stop == b.stop && a.extreme == b.extreme &&
         a.acceleration == b.acceleration;
}

// A single walk. Of each Part the first element counts: that way the choices between numbers which fall one
// way at half of the bars and the other way at the rest are made without a branch. Only a reversal takes one.
struct ParabolicWalk {
  ParabolicWalk(const ParabolicStart &start, const WalkState &state)
      : rising(state.rising),
        stop(Single(state.stop)),
        extreme(Single(state.extreme)),
        acceleration(Single(state.acceleration)),
        step(Single(start.step)),
        maximum(Single(start.maximum)),
        restart(Single(start.acceleration)) {}

  void Walk(const double *high, const double *low, int i, int to, double *out) {
    while (i < to) {
      i = rising ? WalkOneWay<true>(high, low, i, to, out) : WalkOneWay<false>(low, high, i, to, out);
    }
  }

  WalkState State() const { return {rising, First(stop), First(extreme), First(acceleration)}; }

 private:
  // Takes the walk over the bars from i on up to a reversal, that bar included. `towards` are the prices in
  // the direction of the walk, `against` those that may reverse it. \return the bar behind the last one.
  template <bool kRising>
  TROVENU_INLINE int WalkOneWay(const double *towards, const double *against, int i, int to, double *out) {
    while (i < to) {
      stop = (extreme - stop) * acceleration + stop;
      const Part other = Single(against[i]);
      const Part price = Single(towards[i]);
      if (IsBeyond<kRising>(First(stop), against[i])) {
        rising = !kRising;
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

  bool rising;
  Part stop;
  Part extreme;
  Part acceleration;
  Part step;
  Part maximum;
  Part restart;
};

// Four walks, the first at bar i, each of the others `apart` bars behind the one before. Prices count in the
// direction of their walk: those of a falling one are negated, so that all walks rise.
class FourWalks {
 public:
  FourWalks(const ParabolicStart &start, const WalkState (&states)[4])
      : step_(All(start.step)), maximum_(All(start.maximum)), restart_(All(start.acceleration)) {
    double fields[4][4];
    for (int k = 0; k < 4; ++k) {
      const double direction = states[k].rising ? 1.0 : -1.0;
      fields[0][k] = direction;
      fields[1][k] = direction * states[k].stop;
      fields[2][k] = direction * states[k].extreme;
      fields[3][k] = states[k].acceleration;
    }
    direction_ = Load(fields[0]);
    stop_ = Load(fields[1]);
    extreme_ = Load(fields[2]);
    acceleration_ = Load(fields[3]);
  }

  void Walk(const double *high, const double *low, int bars, int apart, double *out) {
    for (int i = 0; i < bars; ++i)
      Scatter(out + i, apart, Next(Gather(high + i, apart), Gather(low + i, apart)));
  }

  WalkState State(int k) const {
    double fields[4][4];
    Store(fields[0], direction_);
    Store(fields[1], direction_ * stop_ + All(0.0));
    Store(fields[2], direction_ * extreme_ + All(0.0));
    Store(fields[3], acceleration_);
    return {fields[0][k] > 0.0, fields[1][k], fields[2][k], fields[3][k]};
  }

 private:
  TROVENU_INLINE FourBars Next(FourBars high, FourBars low) {
    const FourBars zero = All(0.0);
    const FourBars towards = WhereBelow(direction_, zero, zero - low, high);
    const FourBars against = WhereBelow(direction_, zero, zero - high, low);
    const FourBars stop = (extreme_ - stop_) * acceleration_ + stop_;
    const FourBars value = direction_ * WhereBelow(against, stop, extreme_, stop);
    const FourBars faster = Smaller(acceleration_ + step_, maximum_);
    acceleration_ = WhereBelow(against, stop, restart_, WhereBelow(extreme_, towards, faster, acceleration_));
    stop_ = WhereBelow(against, stop, zero - extreme_, stop);
    extreme_ = WhereBelow(against, stop, zero - against, Larger(towards, extreme_));
    direction_ = WhereBelow(against, stop, zero - direction_, direction_);
    // Zero gets the sign that a single walk gives it.
    return value + zero;
  }

  FourBars direction_;
  FourBars stop_;
  FourBars extreme_;
  FourBars acceleration_;
  const FourBars step_;
  const FourBars maximum_;
  const FourBars restart_;
};

// Takes the walk over four pieces of `bars` bars from bar i on and `kJoinBars` more. \return its state there.
WalkState WalkFourPieces(const ParabolicStart &start, const WalkState &state, const double *high,
                         const double *low, int i, int bars, double *out) {
  WalkState begin[4] = {state};
  for (int k = 1; k < 4; ++k) begin[k] = {true, low[i + k * bars], high[i + k * bars], start.acceleration};
  FourWalks walks(start, begin);
  walks.Walk(high + i, low + i, kJoinBars, bars, out + i);
  const FourWalks joined = walks;
  walks.Walk(high + i + kJoinBars, low + i + kJoinBars, bars, bars, out + i + kJoinBars);
  const int end = i + 4 * bars + kJoinBars;
  for (int k = 1; k < 4; ++k) {
    if (AreSame(walks.State(k - 1), joined.State(k))) continue;
    ParabolicWalk walk(start, walks.State(k - 1));
    walk.Walk(high, low, i + k * bars + kJoinBars, end, out);
    return walk.State();
  }
  return walks.State(3);
}

void Parabolic(const double *high, const double *low, const ParabolicStart &start, int from, int to,
               double *out) {
  WalkState state{start.rising, start.stop, start.extreme, start.acceleration};
  int i = from;
  while (to - i >= 5 * kJoinBars) {
    const int fitting = (to - i - kJoinBars) / 4;
    const int bars = fitting < kMostPieceBars ? fitting : kMostPieceBars;
    state = WalkFourPieces(start, state, high, low, i, bars, out);
    i += 4 * bars + kJoinBars;
  }
  ParabolicWalk walk(start, state);
  walk.Walk(high, low, i, to, out);
}

}  // namespace
}  // namespace trovenu
