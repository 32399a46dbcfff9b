#include "trovenu/formula/functions/parabolic.h"

#include <algorithm>

namespace trovenu {
namespace {

constexpr double kReversalAcceleration = 0.02;
constexpr int kBarsBeforeValid = 5;

struct Walker {
  double step;
  double maximum;
  bool rising;
  double extreme;
  double stop;
  double acceleration = kReversalAcceleration;

  // Takes the walk over one bar; `stop` is then the bar's value.
  void Advance(double high, double low) {
    stop = (extreme - stop) * acceleration + stop;
    if (rising ? low < stop : high > stop) {
      stop = extreme;
      extreme = rising ? low : high;
      acceleration = kReversalAcceleration;
      rising = !rising;
    } else if (rising ? extreme < high : extreme > low) {
      extreme = rising ? high : low;
      const double faster = acceleration + step;
      acceleration = faster < maximum ? faster : maximum;
    }
  }
};

Operand SarRule(Call &call) {
  return Parabolic(call.Bound(Column::High), call.Bound(Column::Low), call.Bound(Column::Close), call.X(0)[0],
                   call.X(1)[0]);
}

// The same on closing prices alone.
Operand CSarRule(Call &call) {
  const SVector &close = call.Bound(Column::Close);
  return Parabolic(close, close, close, call.X(0)[0], call.X(1)[0]);
}

constexpr Function kRows[] = {
    {FunctionId::Sar, Reading::Plain, 2, 2, FullCalc::Always, nullptr, nullptr, SarRule, "step, maximum",
     "Parabolic stop-and-reverse"},
    {FunctionId::CSar, Reading::Plain, 2, 2, FullCalc::Always, nullptr, nullptr, CSarRule, "step, maximum",
     "Parabolic stop-and-reverse on closing prices alone"},
};

}  // namespace

SVector Parabolic(const SVector &high, const SVector &low, const SVector &close, double step,
                  double maximum) {
  SVector result;
  const int first = std::max(close.startIndex, 0);
  result.BeginResult(close.size, MoveIndex(first, 1));
  result.startIndex = MoveIndex(first, kBarsBeforeValid);
  if (result.size - first < 2) return result;
  const bool rising = close[first] < close[first + 1];
  const double highest = high[high.startIndex];
  const double lowest = low[low.startIndex];
  Walker walker{step, maximum, rising, rising ? highest : lowest, rising ? lowest : highest};
  // Required: the second bar moves by the step and not by the acceleration.
  walker.stop = (walker.extreme - walker.stop) * step + walker.stop;
  result.data[first + 1] = walker.stop;
  for (int i = first + 2; i < result.size; ++i) {
    walker.Advance(high[i], low[i]);
    result.data[i] = walker.stop;
  }
  return result;
}

FunctionRows ParabolicRows() { return kRows; }

}  // namespace trovenu
