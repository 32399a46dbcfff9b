#include "trovenu/formula/functions/crossings.h"

#include <algorithm>

namespace trovenu {
namespace {

template <class Crosses>
SVector FindCrossings(const SVector &a, const SVector &b, Crosses crosses) {
  SVector result;
  const int first = std::max({a.startIndex, b.startIndex, 0});
  result.BeginResult(std::max(a.size, b.size), MoveIndex(first, 1));
  for (int i = result.startIndex; i < result.size; ++i) {
    result.data[i] = static_cast<double>(crosses(a[i - 1], b[i - 1], a[i], b[i]));
  }
  return result;
}

Operand CrossUpRule(Call &call) { return CrossUp(call.X(0), call.X(1)); }

Operand CrossDownRule(Call &call) { return CrossDown(call.X(0), call.X(1)); }

constexpr Function kRows[] = {
    {FunctionId::CrossUp, Reading::Plain, 2, 2, FullCalc::Never, nullptr, nullptr, CrossUpRule, "a, b",
     "1 where a crosses above b, else 0"},
    {FunctionId::CrossDown, Reading::Plain, 2, 2, FullCalc::Never, nullptr, nullptr, CrossDownRule, "a, b",
     "1 where a crosses below b, else 0"},
};

}  // namespace

SVector CrossUp(const SVector &a, const SVector &b) {
  return FindCrossings(a, b,
                       [](double a0, double b0, double a1, double b1) { return (a0 <= b0) & (a1 > b1); });
}

SVector CrossDown(const SVector &a, const SVector &b) {
  return FindCrossings(a, b,
                       [](double a0, double b0, double a1, double b1) { return (a0 >= b0) & (a1 < b1); });
}

FunctionRows CrossingRows() { return kRows; }

}  // namespace trovenu
