#include "trovenu/formula/functions/momentum.h"

#include <algorithm>

#include "trovenu/formula/messages.h"
#include "trovenu/support/kernels/kernels.h"

namespace trovenu {
namespace {

// Bars that are taken through all steps of a calculation while they are in the cache.
constexpr int kStripBars = 1024;

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
  ActiveKernels().relativeStrength(close.data, first, result.size, n, result.data);
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
  const int end = std::min(typical.size, result.size);
  if (end - first < n) return result;
  const int whole = std::min({high.size, low.size, end});
  const Kernels &kernels = ActiveKernels();
  double *const price = typical.data;
  int priced = first;
  for (int from = result.startIndex; from < end; from += kStripBars) {
    const int to = std::min(end, from + kStripBars);
    if (priced < whole) {
      const int upTo = std::min(whole, to);
      kernels.typicalPrice(high.data, low.data, close.data, priced, upTo, price);
      priced = upTo;
    }
    // A series that ends early counts as 0 from there on.
    for (; priced < to; ++priced) price[priced] = (high[priced] + low[priced] + close[priced]) / 3.0;
    kernels.mean(price, from, to, n, result.data);
    kernels.channelIndex(price, from, to, n, result.data);
  }
  return result;
}

FunctionRows MomentumRows() { return kRows; }

}  // namespace trovenu
