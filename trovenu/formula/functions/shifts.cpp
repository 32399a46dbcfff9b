#include "trovenu/formula/functions/shifts.h"

#include <algorithm>

#include "trovenu/formula/messages.h"

namespace trovenu {
namespace {

// A shift by more bars than this, or a result so much longer than the chart, is a fault.
constexpr long long kLongestShift = 1000000;

Operand RefRule(Call &call) { return call.X(0)(call.N(1)); }

Operand ShiftRule(Call &call) {
  const long long n = call.N(1);
  const long long size = call.X(0).GetSize() + n;
  if (n > kLongestShift || n < -kLongestShift || size > call.Bound(Column::Close).GetSize() + kLongestShift) {
    return call.FailPeriod();
  }
  return ShiftBars(call.X(0), static_cast<int>(n));
}

constexpr Function kRows[] = {
    {FunctionId::Shift, Reading::Plain, 2, 2, FullCalc::Always, messages::kPeriodTooLarge, nullptr, ShiftRule,
     "x, n", "x moved by n bars with its end: into the future for a positive n"},
    {FunctionId::Ref, Reading::Plain, 2, 2, FullCalc::Never, nullptr, nullptr, RefRule, "x, n",
     "x of n bars before; a negative n looks ahead"},
};

}  // namespace

SVector ShiftBars(const SVector &x, int n) {
  SVector result;
  const int start = std::max(MoveIndex(x.startIndex, n), 0);
  result.BeginResult(MoveIndex(x.size, n), start);
  for (int i = start; i < result.size; ++i) result.data[i] = x[i - n];
  return result;
}

FunctionRows ShiftRows() { return kRows; }

}  // namespace trovenu
