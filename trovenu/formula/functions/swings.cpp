#include "trovenu/formula/functions/swings.h"

#include <algorithm>
#include <cmath>

#include "trovenu/formula/calc.h"
#include "trovenu/support/kernels/kernels.h"
#include "trovenu/support/select.h"

namespace trovenu {
namespace {

constexpr double kNoSwing = -1.0;
// Past the end of every series whose parameters make no sense.
constexpr int kFaultyStart = 10000;

// At each bar the extreme of the `strength` bars up to it. What lies before the series counts as 0.0, and NaN
// is passed over: a comparison with it never refuses a swing.
SVector ExtremesUpTo(bool isHigh, const SVector &x, int strength) {
  SVector extremes;
  extremes.BeginResult(x.size, 0);
  double extreme = 0.0;
  for (int i = 0; i < std::min(strength - 1, extremes.size); ++i) {
    if (isHigh ? extreme < x.data[i] : x.data[i] < extreme) extreme = x.data[i];
    extremes.data[i] = extreme;
  }
  if (extremes.size < strength) return extremes;
  const Kernels &kernels = ActiveKernels();
  (isHigh ? kernels.highest : kernels.lowest)(x.data, strength - 1, x.size, strength, extremes.data);
  return extremes;
}

// Whether the bars from `from` to `to` hold a number. The extreme of those that hold none is an infinity,
// which must not be taken for one of theirs.
bool HasNumber(const SVector &x, int from, int to) {
  return std::any_of(x.data + from, x.data + to + 1, [](double v) { return !std::isnan(v); });
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
  SVector extremes = ExtremesUpTo(isHigh, x, strength);
  if (extremes.size < result.size) {
    result.SetSize(0);
    return result;
  }
  // The candidates of bar i run from i - depth + 1 to i - strength. The bars of the swings among them are
  // kept at the front of `extremes`, whose elements there have been read.
  double *const swings = extremes.data;
  int count = 0;
  int candidate = std::max(first - depth + 1, 0);
  double older = candidate > 0 ? extremes.data[candidate - 1] : 0.0;
  const double side = isHigh ? 1.0 : -1.0;
  for (int i = first; i < result.size; ++i) {
    for (; candidate <= i - strength; ++candidate) {
      const double level = side * x.data[candidate];
      // An equal older bar is allowed, an equal newer one is not.
      const double newer = side * extremes.data[candidate + strength];
      bool refused = level <= newer;
      if (level == newer && std::isinf(level)) refused = HasNumber(x, candidate + 1, candidate + strength);
      refused |= level < side * older;
      older = extremes.data[candidate];
      swings[count] = candidate;
      count += !refused;
    }
    const int nth = count >= n ? static_cast<int>(swings[count - n]) : 0;
    const bool recent = (count >= n) & (nth > i - depth);
    result.data[i] = Select(recent, x.data[nth], kNoSwing);
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
