#include "trovenu/formula/functions/extremes.h"

#include <algorithm>

#include "trovenu/formula/messages.h"

namespace trovenu {
namespace {

using Moving = void (SVector::*)(const SVector &source, int n);

template <Moving kWindow>
Operand ExtremeRule(Call &call) {
  const int n = call.N(1);
  if (n < 1) return call.FailPeriod();
  if (n == 1) return call.Take(0);
  SVector result;
  (result.*kWindow)(call.X(0), n);
  return result;
}

using Fold = void (*)(SVector &, const SVector &);

template <Fold kFold>
Operand FoldRule(Call &call) {
  kFold(call.Own(0), call.X(1));
  return call.Take(0);
}

template <class Pick>
void FoldInto(SVector &x, const SVector &y, Pick pick) {
  const bool constant = x.IsConstant() && y.IsConstant();
  // A copy knows of fewer written elements than will be written from its start index on.
  x.SetStartIndex(x.startIndex);
  x.InitTemp();
  for (int i = std::max(x.startIndex, 0); i < x.size; ++i) x.data[i] = pick(x.data[i], y[i]);
  x.SetStartIndex(std::max(x.startIndex, y.startIndex));
  if (y.size < x.size) x.SetSize(y.size);
  x.isSeries = constant ? 0 : 1;
}

constexpr Function kRows[] = {
    {FunctionId::Highest, Reading::Plain, 2, 2, FullCalc::Never, messages::kExtremePeriod, nullptr,
     ExtremeRule<&SVector::CalcHighest>, "x, n", "Largest value of the last n bars"},
    {FunctionId::Lowest, Reading::Plain, 2, 2, FullCalc::Never, messages::kExtremePeriod, nullptr,
     ExtremeRule<&SVector::CalcLowest>, "x, n", "Smallest value of the last n bars"},
    {FunctionId::Min, Reading::OneOrMore, 1, 2, FullCalc::Never, nullptr, nullptr, FoldRule<FoldMin>,
     "x, y, ...", "Smallest of several series at each bar; a number among them leaves a single bar"},
    {FunctionId::Max, Reading::OneOrMore, 1, 2, FullCalc::Never, nullptr, nullptr, FoldRule<FoldMax>,
     "x, y, ...", "Largest of several series at each bar; a number among them leaves a single bar"},
};

}  // namespace

void FoldMax(SVector &x, const SVector &y) {
  FoldInto(x, y, [](double a, double b) { return b < a ? a : b; });
}

void FoldMin(SVector &x, const SVector &y) {
  FoldInto(x, y, [](double a, double b) { return b > a ? a : b; });
}

FunctionRows ExtremeRows() { return kRows; }

}  // namespace trovenu
