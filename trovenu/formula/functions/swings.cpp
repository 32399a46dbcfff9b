#include "trovenu/formula/functions/swings.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <vector>

#include "trovenu/formula/calc.h"

namespace trovenu {
namespace {

constexpr double kNoSwing = -1.0;
// Past the end of every series whose parameters make no sense.
constexpr int kFaultyStart = 10000;

// Marks the bars of x that stand out against `strength` bars on either side. An equal older bar is allowed,
// an equal newer one is not; what lies outside x counts as 0.0, and a comparison with what is no number never
// fails.
std::vector<unsigned char> MarkSwings(bool isHigh, const SVector &x, int strength) {
  const int size = x.size;
  std::vector<unsigned char> swings(static_cast<std::size_t>(size), 1);
  const auto isBeyond = [isHigh](double other, double p) { return isHigh ? p < other : other < p; };
  const auto refuse = [&swings](int i) { swings[static_cast<std::size_t>(i)] = 0; };
  // Bars that no later one has passed yet; each bar enters and leaves once.
  std::vector<int> open;
  for (int i = 0; i < size; ++i) {
    const double p = x[i];
    if (std::isnan(p)) continue;
    // A newer bar at or beyond the level refuses the older ones that it reaches, and hides them from those to
    // come.
    while (!open.empty() && (isBeyond(p, x[open.back()]) || p == x[open.back()])) {
      if (i - open.back() <= strength) refuse(open.back());
      open.pop_back();
    }
    const bool reachesOutside = i - strength < 0;
    if (reachesOutside && isBeyond(0.0, p)) refuse(i);
    if (!open.empty() && i - open.back() <= strength) refuse(i);
    open.push_back(i);
  }
  return swings;
}

Operand SwingHighRule(Call &call) { return FindSwings(true, call.N(0), call.X(1), call.N(2), call.N(3)); }

Operand SwingLowRule(Call &call) { return FindSwings(false, call.N(0), call.X(1), call.N(2), call.N(3)); }

Operand ZigZagRule(Call &call) {
  const SVector &high = call.Bound(Column::High);
  const SVector &low = call.Bound(Column::Low);
  return ZigZag(call.X(0)[0], FindSwings(true, 1, high, 1, 2), FindSwings(false, 1, low, 1, 2), high, low);
}

constexpr Function kRows[] = {
    {FunctionId::SwingHigh, Reading::Plain, 4, 4, FullCalc::Always, nullptr, nullptr, SwingHighRule,
     "n, x, strength, depth", "Value of the n-th most recent swing high within depth bars, -1 without one"},
    {FunctionId::SwingLow, Reading::Plain, 4, 4, FullCalc::Always, nullptr, nullptr, SwingLowRule,
     "n, x, strength, depth", "Value of the n-th most recent swing low within depth bars, -1 without one"},
    {FunctionId::ZigZag, Reading::Plain, 1, 1, FullCalc::Always, nullptr, nullptr, ZigZagRule, "percent",
     "Turning points of a line that turns by percent, at their bars, 0 elsewhere; the last one can move"},
};

}  // namespace

SVector FindSwings(bool isHigh, int n, const SVector &x, int strength, int depth) {
  SVector result;
  if (n < 1 || strength < 1 || depth < 1) {
    result.BeginResult(x.size, x.size);
    result.startIndex = MoveIndex(x.size, kFaultyStart);
    return result;
  }
  const int first = std::max(MoveIndex(MoveIndex(x.startIndex, depth), 1), 0);
  result.BeginResult(x.size, first);
  if (first >= result.size) return result;
  const std::vector<unsigned char> swings = MarkSwings(isHigh, x, strength);
  const auto isSwing = [&swings](int i) { return i >= 0 && swings[static_cast<std::size_t>(i)] != 0; };
  // The candidates of bar i run from i - depth + 1 to i - strength. `nth` is the n-th most recent swing up to
  // `newest`, or the oldest of fewer.
  int count = 0;
  int newest = first - depth;
  int nth = newest;
  for (int i = first; i < result.size; ++i) {
    while (newest < i - strength) {
      if (!isSwing(++newest)) continue;
      if (count == n) {
        do ++nth;
        while (!isSwing(nth));
      } else if (++count == 1) {
        nth = newest;
      }
    }
    result.data[i] = count == n && nth > i - depth ? x[nth] : kNoSwing;
  }
  return result;
}

SVector ZigZag(double percent, const SVector &swingHigh, const SVector &swingLow, const SVector &high,
               const SVector &low) {
  SVector result;
  const int first = std::max({swingHigh.startIndex, swingLow.startIndex, high.startIndex, low.startIndex, 0});
  const int end = std::min({swingHigh.size, swingLow.size, high.size, low.size});
  // Pivots are stored up to one bar before the walk, the first one at index 0.
  result.BeginResult(end, 0);
  std::fill_n(result.data, result.size, 0.0);
  result.startIndex = first;
  if (first >= result.size) return result;

  enum class Direction { None, Falling, Rising };
  Direction direction = Direction::None;
  double pivot = (high[first] + low[first]) / 2.0;
  int pivotIndex = 0;
  result.data[first] = pivot;
  // Turns the line at the pivot or moves the pivot along; the swing marked at bar i stands at i - 1.
  const auto visit = [&](Direction toward, double swing, int i, bool turns, bool extends) {
    if (direction != toward && turns) {
      direction = toward;
      result[pivotIndex] = pivot;
    } else if (direction != toward || !extends) {
      return;
    }
    pivot = swing;
    pivotIndex = i - 1;
  };
  for (int i = first; i < result.size; ++i) {
    const double highest = swingHigh[i];
    const double lowest = swingLow[i];
    if (highest != kNoSwing) {
      visit(Direction::Rising, highest, i, highest >= (1.0 + percent * 0.01) * pivot, highest >= pivot);
    } else if (lowest != kNoSwing) {
      visit(Direction::Falling, lowest, i, lowest <= (1.0 - percent * 0.01) * pivot, lowest <= pivot);
    }
  }
  result[pivotIndex] = pivot;
  return result;
}

SVector SCalc::CalcSwingHighLow(int isHigh, int n, const SVector &x, int strength, int depth) {
  return FindSwings(isHigh != 0, n, x, strength, depth);
}

SVector SCalc::CalcZigZag(double percent, const SVector &swingHigh, const SVector &swingLow,
                          const SVector &highSeries, const SVector &lowSeries) {
  return ZigZag(percent, swingHigh, swingLow, highSeries, lowSeries);
}

FunctionRows SwingRows() { return kRows; }

}  // namespace trovenu
