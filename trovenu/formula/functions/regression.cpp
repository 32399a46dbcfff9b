#include "trovenu/formula/functions/regression.h"

#include <algorithm>

#include "trovenu/formula/messages.h"
#include "trovenu/support/kernels/kernels.h"

namespace trovenu {
namespace {

// A series of `size` elements, of which `fill(first, last + 1, out)` writes those whose window of n bars lies
// at or after `start`.
template <class Fill>
SVector Windows(int size, int start, int n, Fill fill) {
  SVector result;
  const int first = std::max(start, 0);
  result.BeginResult(size, n < 1 ? kNoValidBar : MoveIndex(first, n - 1));
  if (result.startIndex < result.size) fill(result.startIndex, result.size, result.data);
  return result;
}

SVector Windows(const SVector &x, int n, WindowKernel kernel) {
  return Windows(x.size, x.startIndex, n,
                 [&x, n, kernel](int from, int to, double *out) { kernel(x.data, from, to, n, out); });
}

Operand SlopeRule(Call &call) {
  if (call.N(1) < 1) call.FailPeriod();
  return LinearRegressionSlope(call.X(0), call.N(1));
}

Operand ValueRule(Call &call) {
  if (call.N(1) < 1) call.FailPeriod();
  return LinearRegressionValue(call.X(0), call.N(1), call.N(2));
}

Operand CorrelationRule(Call &call) {
  if (call.N(2) < 1) call.FailPeriod();
  return Correlation(call.X(0), call.X(1), call.N(2));
}

Operand RSquaredRule(Call &call) {
  if (call.N(1) < 1) call.FailPeriod();
  return RSquared(call.X(0), call.N(1));
}

constexpr Function kRows[] = {
    {FunctionId::LinearRegressionValue, Reading::Plain, 3, 3, FullCalc::Never, messages::kRegressionPeriod,
     nullptr, ValueRule, "x, n, k", "Regression line through the last n bars, at k bars before its end"},
    {FunctionId::LinearRegressionSlope, Reading::Plain, 2, 2, FullCalc::Never, messages::kRegressionPeriod,
     nullptr, SlopeRule, "x, n", "Slope of the regression line through the last n bars"},
    {FunctionId::Correlation, Reading::Plain, 3, 3, FullCalc::Never, messages::kCorrelationPeriod, nullptr,
     CorrelationRule, "x, y, n", "Correlation of x and y over the last n bars, -1 to 1"},
    {FunctionId::RSquared, Reading::Plain, 2, 2, FullCalc::Never, messages::kRSquaredPeriod, nullptr,
     RSquaredRule, "x, n", "How well a line fits the last n bars, 0 to 1"},
};

}  // namespace

SVector LinearRegressionSlope(const SVector &x, int n) { return Windows(x, n, ActiveKernels().lineSlope); }

SVector LinearRegressionValue(const SVector &x, int n, int k) {
  const double distance = (static_cast<double>(n) - 1.0) / 2.0 - static_cast<double>(k);
  return Windows(x.size, x.startIndex, n, [&x, n, distance](int from, int to, double *out) {
    ActiveKernels().lineValue(x.data, from, to, n, distance, out);
  });
}

SVector Correlation(const SVector &x, const SVector &y, int n) {
  return Windows(std::min(x.size, y.size), std::max(x.startIndex, y.startIndex), n,
                 [&x, &y, n](int from, int to, double *out) {
                   ActiveKernels().correlation(x.data, y.data, from, to, n, out);
                 });
}

SVector RSquared(const SVector &x, int n) {
  SVector result = Windows(x, n, ActiveKernels().lineFit);
  double before = 0.0;
  for (int i = result.startIndex; i < result.size; ++i) {
    if (result.data[i] == kNoFit) result.data[i] = before;
    before = result.data[i];
  }
  return result;
}

FunctionRows RegressionRows() { return kRows; }

}  // namespace trovenu
