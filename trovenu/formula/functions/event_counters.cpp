#include "trovenu/formula/functions/event_counters.h"

#include <algorithm>

#include "trovenu/formula/messages.h"
#include "trovenu/support/select.h"

namespace trovenu {
namespace {

// The first true bar at or after the start index; 0 if there is none.
int FirstTrue(const SVector &condition) {
  return std::max(condition.FindFirstNonZeroIndex(condition.startIndex), 0);
}

template <class Pick>
SVector ExtremeSince(int n, const SVector &condition, const SVector &x, Pick pick) {
  SVector result;
  const int end = std::min(condition.size, x.size);
  const int first = std::max(FirstTrue(condition), x.startIndex);
  result.BeginResult(end, end);
  int nth = first;
  for (int left = n; nth < end; ++nth) {
    if (condition[nth] != 0.0 && --left == 0) break;
  }
  if (nth >= end) {
    result.startIndex = MoveIndex(end, 1);
    return result;
  }
  result.BeginResult(end, nth);
  const int displaced = nth - first;
  double extreme = 0.0;
  for (int i = first; i + displaced < result.size; ++i) {
    extreme = Select(condition[i] != 0.0, x[i], pick(extreme, x[i]));
    result.data[i + displaced] = extreme;
  }
  return result;
}

Operand BarsSinceRule(Call &call) { return BarsSince(call.X(0)); }

Operand CountSinceRule(Call &call) { return CountSince(call.X(0), call.X(1)); }

Operand HighestSinceRule(Call &call) {
  if (call.N(0) < 1) return call.FailPeriod();
  return HighestSince(call.N(0), call.X(1), call.X(2));
}

Operand LowestSinceRule(Call &call) {
  if (call.N(0) < 1) return call.FailPeriod();
  return LowestSince(call.N(0), call.X(1), call.X(2));
}

Operand ValueWhenRule(Call &call) {
  if (call.N(0) < 1) call.FailPeriod();
  return ValueWhen(call.N(0), call.X(1), call.X(2));
}

constexpr Function kRows[] = {
    {FunctionId::BarsSince, Reading::Plain, 1, 1, FullCalc::Always, nullptr, nullptr, BarsSinceRule, "cond",
     "Bars since the condition was last true"},
    {FunctionId::CountSince, Reading::Plain, 2, 2, FullCalc::Always, nullptr, nullptr, CountSinceRule, "a, b",
     "How often b has been true since a last was"},
    {FunctionId::HighestSince, Reading::Plain, 3, 3, FullCalc::Always, messages::kHighestSinceCount, nullptr,
     HighestSinceRule, "n, cond, x",
     "Largest x since the condition was last true, from its n-th true bar on"},
    {FunctionId::LowestSince, Reading::Plain, 3, 3, FullCalc::Always, messages::kLowestSinceCount, nullptr,
     LowestSinceRule, "n, cond, x",
     "Smallest x since the condition was last true, from its n-th true bar on"},
    {FunctionId::ValueWhen, Reading::Plain, 3, 3, FullCalc::Always, messages::kPositiveInteger, nullptr,
     ValueWhenRule, "n, cond, x", "x at the n-th most recent bar on which the condition was true"},
};

}  // namespace

SVector BarsSince(const SVector &condition) {
  SVector result;
  const int first = FirstTrue(condition);
  result.BeginResult(condition.size, first);
  double bars = 0.0;
  for (int i = first; i < result.size; ++i) {
    bars = Select(condition[i] != 0.0, 0.0, bars);
    result.data[i] = bars;
    bars += 1.0;
  }
  return result;
}

SVector CountSince(const SVector &a, const SVector &b) {
  SVector result;
  const int size = std::min(a.size, b.size);
  const int first = a.FindFirstNonZeroIndex(a.startIndex);
  if (first < 0 || first >= size) {
    result.BeginResult(size, kNoValidBar);
    return result;
  }
  result.BeginResult(size, first);
  double count = 0.0;
  for (int i = first; i < result.size; ++i) {
    count = Select(a[i] != 0.0, 0.0, count) + static_cast<double>(b[i] != 0.0);
    result.data[i] = count;
  }
  return result;
}

SVector HighestSince(int n, const SVector &condition, const SVector &x) {
  return ExtremeSince(n, condition, x, [](double a, double b) { return b > a ? b : a; });
}

SVector LowestSince(int n, const SVector &condition, const SVector &x) {
  return ExtremeSince(n, condition, x, [](double a, double b) { return b < a ? b : a; });
}

SVector ValueWhen(int n, const SVector &condition, const SVector &x) {
  SVector result;
  const int size = std::min(condition.size, x.size);
  const int first = std::max({condition.startIndex, x.startIndex, 0});
  if (n < 1) {
    result.BeginResult(size, kNoValidBar);
    return result;
  }
  result.BeginResult(size, first);
  result.startIndex = kNoValidBar;
  // The values at the true bars so far, and behind them that of the bar that may be the next.
  SVector values;
  values.BeginResult(result.size, 0);
  int count = 0;
  for (int i = first; i < values.size; ++i) {
    values.data[count] = x[i];
    count += condition[i] != 0.0;
    const bool reached = count >= n;
    if (reached && result.startIndex == kNoValidBar) result.startIndex = i;
    result.data[i] = reached ? values.data[count - n] : 0.0;
  }
  if (values.size < result.size) result.SetSize(0);
  return result;
}

FunctionRows EventCounterRows() { return kRows; }

}  // namespace trovenu
