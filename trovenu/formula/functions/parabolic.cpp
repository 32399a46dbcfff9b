#include "trovenu/formula/functions/parabolic.h"

#include <algorithm>

#include "trovenu/support/kernels/kernels.h"

namespace trovenu {
namespace {

constexpr double kReversalAcceleration = 0.02;
constexpr int kBarsBeforeValid = 5;

// The elements of a series up to `size`, made longer where it ends before; null when memory is exhausted.
const double *Elements(const SVector &series, int size, SVector &longer) {
  if (!series.IsConstant() && series.size >= size) return series.data;
  longer.BeginResult(size, 0);
  for (int i = 0; i < longer.size; ++i) longer.data[i] = series[i];
  return longer.size == size ? longer.data : nullptr;
}

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
  const double extreme = rising ? highest : lowest;
  const double opposite = rising ? lowest : highest;
  // Required: the second bar moves by the step and not by the acceleration.
  const double stop = (extreme - opposite) * step + opposite;
  result.data[first + 1] = stop;
  SVector longerHigh;
  SVector longerLow;
  const double *const highs = Elements(high, result.size, longerHigh);
  const double *const lows = Elements(low, result.size, longerLow);
  if (highs == nullptr || lows == nullptr) return SVector();
  ActiveKernels().parabolic(highs, lows, {rising, stop, extreme, kReversalAcceleration, step, maximum},
                            first + 2, result.size, result.data);
  return result;
}

FunctionRows ParabolicRows() { return kRows; }

}  // namespace trovenu
