#include "trovenu/formula/functions/momentum.h"

#include <algorithm>
#include <cmath>

#include "trovenu/formula/messages.h"
#include "trovenu/support/kernels/kernels.h"

namespace trovenu {
namespace {

struct Change {
  double rise;
  double fall;
};

Change Split(double difference) {
  return difference >= 0.0 ? Change{difference, 0.0} : Change{0.0, -difference};
}

double StrengthOf(double rise, double fall) {
  const double sum = rise + fall;
  return sum == 0.0 ? 0.0 : 100.0 * rise / sum;
}

Operand RsiRule(Call &call) { return Rsi(call.Bound(Column::Close), call.N(0)); }

Operand CciRule(Call &call) {
  const int n = call.N(0);
  if (n < 1) call.FailPeriod();
  return Cci(call.Bound(Column::High), call.Bound(Column::Low), call.Bound(Column::Close), n);
}

constexpr Function kRows[] = {
    {FunctionId::Rsi, Reading::Plain, 1, 1, FullCalc::Always, nullptr, nullptr, RsiRule, "n",
     "Relative strength index of close, 0 to 100"},
    {FunctionId::Cci, Reading::Plain, 1, 1, FullCalc::Never, messages::kCciPeriod, nullptr, CciRule, "n",
     "Commodity channel index"},
};

}  // namespace

SVector Rsi(const SVector &close, int n) {
  const int first = MoveIndex(std::max(close.startIndex, 0), n);
  if (n < 1 || first >= close.size) return SVector();
  SVector result;
  result.BeginResult(close.size, first);
  if (result.size == 0) return SVector();
  const double *x = close.data;
  double rise = 0.0;
  double fall = 0.0;
  for (int i = first; i > first - n; --i) {
    const Change change = Split(x[i] - x[i - 1]);
    rise += change.rise;
    fall += change.fall;
  }
  rise /= n;
  fall /= n;
  result.data[first] = StrengthOf(rise, fall);
  const double kept = static_cast<double>(n) - 1.0;
  for (int i = first + 1; i < result.size; ++i) {
    const Change change = Split(x[i] - x[i - 1]);
    rise = (kept * rise + change.rise) / n;
    fall = (kept * fall + change.fall) / n;
    result.data[i] = StrengthOf(rise, fall);
  }
  return result;
}

SVector Cci(const SVector &high, const SVector &low, const SVector &close, int n) {
  SVector result;
  if (n < 1) {
    result.BeginResult(close.size, kNoValidBar);
    return result;
  }
  const int first = std::max(close.startIndex, 0);
  result.BeginResult(close.size, MoveIndex(first, n - 1));
  SVector typical;
  typical.BeginResult(close.size, first);
  for (int i = first; i < typical.size; ++i) typical.data[i] = (high[i] + low[i] + close[i]) / 3.0;
  const int end = std::min(typical.size, result.size);
  if (end - first < n) return result;
  double *out = result.data;
  const double *price = typical.data;
  ActiveKernels().mean(price, first + n - 1, end, n, out);
  for (int i = first + n - 1; i < end; ++i) {
    const double mean = out[i];
    double deviations = 0.0;
    for (int j = i - n + 1; j <= i; ++j) deviations += std::fabs(price[j] - mean);
    out[i] = deviations == 0.0 ? 0.0 : (price[i] - mean) / (0.015 * (deviations / n));
  }
  return result;
}

FunctionRows MomentumRows() { return kRows; }

}  // namespace trovenu
