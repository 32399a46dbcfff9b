#include "trovenu/formula/functions/conditions.h"

#include <algorithm>

#include "trovenu/support/select.h"

namespace trovenu {
namespace {

Operand IfRule(Call &call) {
  const bool numbers = call.X(0).IsConstant() && call.X(1).IsConstant() && call.X(2).IsConstant();
  return Choose(call.X(0), call.X(1), call.X(2), numbers ? call.Bound(Column::Close) : call.X(0));
}

constexpr Function kRows[] = {
    {FunctionId::If, Reading::Plain, 3, 3, FullCalc::Never, nullptr, nullptr, IfRule, "cond, a, b",
     "a where the condition is true (not 0), else b"},
};

}  // namespace

SVector Choose(const SVector &condition, const SVector &a, const SVector &b, const SVector &close) {
  const SVector &bars = !condition.IsConstant() ? condition
                        : !a.IsConstant()       ? a
                        : !b.IsConstant()       ? b
                                                : close;
  // Required: a start index that comes from the three alone. Where the bars came from close it may lie before
  // them, and the bars between hold 0.0.
  const int start = std::max({condition.startIndex, a.startIndex, b.startIndex});
  SVector result;
  result.BeginResult(bars.size, start);
  int i = std::max(start, 0);
  for (; i < std::min(bars.startIndex, result.size); ++i) result.data[i] = 0.0;
  for (; i < result.size; ++i) result.data[i] = Select(condition[i] != 0.0, a[i], b[i]);
  return result;
}

FunctionRows ConditionRows() { return kRows; }

}  // namespace trovenu
