#include "trovenu/formula/functions/sums.h"

#include "trovenu/formula/messages.h"

namespace trovenu {
namespace {

Operand SumRule(Call &call) {
  SVector result;
  if (call.Count() == 1) {
    result.CalcSumCum(call.X(0), call.GrowingBars(0));
    return result;
  }
  if (call.N(1) < 1) return call.FailPeriod();
  result.CalcSum(call.X(0), call.N(1));
  return result;
}

Operand ESumRule(Call &call) {
  SVector result;
  if (call.Count() == 1) {
    result.CalcESumCum(call.X(0), call.X(0).GetSize());
    return result;
  }
  if (call.N(1) < 1) return call.FailPeriod();
  result.CalcESum(call.X(0), call.N(1));
  return result;
}

constexpr Function kRows[] = {
    {FunctionId::Sum, Reading::OptionalPeriod, 1, 2, FullCalc::WithoutPeriod, messages::kSumPeriod,
     messages::kUnknownSumError, SumRule, "x[, n]", "Sum of the last n bars; without n of all bars so far"},
    {FunctionId::ESum, Reading::OptionalPeriod, 1, 2, FullCalc::Always, messages::kExponentialSumPeriod,
     nullptr, ESumRule, "x[, n]",
     "Exponential sum: the value before times (n - 1) / n, plus x; without n, n is the bar's index"},
};

}  // namespace

FunctionRows SumRows() { return kRows; }

}  // namespace trovenu
