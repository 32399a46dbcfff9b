#include "trovenu/formula/functions/day_values.h"

#include <algorithm>

#include "trovenu/support/date_number.h"

namespace trovenu {
namespace {

// Tells at which bars a new date begins.
class DayWalk {
 public:
  DayWalk(const SVector &date, int first) : date_(date), day_(GetCompDate(date[first])) {}
  // Asked for each bar behind the first one, in order.
  bool BeginsAt(int i) {
    const double day = GetCompDate(date_[i]);
    const bool begins = day != day_;
    day_ = day;
    return begins;
  }

 private:
  const SVector &date_;
  double day_;
};

// The value of the day so far from the second date on: `begin(i)` at the first bar of a day, `join(value, i)`
// on the others.
template <class Begin, class Join>
SVector DayValue(const SVector &date, Begin begin, Join join) {
  SVector result;
  const int first = std::max(date.startIndex, 0);
  result.BeginResult(date.size, first);
  result.startIndex = kNoValidBar;
  DayWalk days(date, first);
  double value = 0.0;
  for (int i = first; i < result.size; ++i) {
    if (i > first && days.BeginsAt(i)) {
      value = begin(i);
      if (result.startIndex == kNoValidBar) result.startIndex = i;
    } else if (result.startIndex != kNoValidBar) {
      value = join(value, i);
    }
    result.data[i] = value;
  }
  return result;
}

// The value of the day before, from the last bar of the second date on, which holds that date's own value.
// `firstShown(own, i)` is what the third date shows, which begins at bar i, where `own` is the second date's
// value.
template <class Begin, class Join, class FirstShown>
SVector PreDayValue(const SVector &date, Begin begin, Join join, FirstShown firstShown) {
  SVector result;
  const int first = std::max(date.startIndex, 0);
  result.BeginResult(date.size, first);
  result.startIndex = kNoValidBar;
  DayWalk days(date, first);
  int changes = 0;
  double current = 0.0;
  double shown = 0.0;
  for (int i = first; i < result.size; ++i) {
    if (i > first && days.BeginsAt(i)) {
      ++changes;
      if (changes == 2) {
        result.startIndex = i - 1;
        result.data[i - 1] = current;
        shown = firstShown(current, i);
      } else if (changes > 2) {
        shown = current;
      }
      current = begin(i);
    } else if (changes > 0) {
      current = join(current, i);
    }
    result.data[i] = shown;
  }
  return result;
}

double Larger(double a, double b) { return b > a ? b : a; }
double Smaller(double a, double b) { return b < a ? b : a; }

using DayFunction = SVector (*)(const SVector &date, const SVector &price);

template <DayFunction kFunction, Column kPrice>
Operand DayRule(Call &call) {
  return kFunction(call.Bound(Column::Date), call.Bound(kPrice));
}

Operand DayIndexRule(Call &call) { return DayIndex(call.Bound(Column::Date)); }

constexpr Function Day(FunctionId id, Rule rule, const char *help) {
  return {id, Reading::Plain, 0, 0, FullCalc::Always, nullptr, nullptr, rule, "", help};
}

constexpr Function kRows[] = {
    Day(FunctionId::DayOpen, DayRule<DayOpen, Column::Open>, "Open of the current day"),
    Day(FunctionId::DayHigh, DayRule<DayHigh, Column::High>, "High of the current day so far"),
    Day(FunctionId::DayLow, DayRule<DayLow, Column::Low>, "Low of the current day so far"),
    Day(FunctionId::PreDayOpen, DayRule<PreDayOpen, Column::Open>,
        "Open of the day before (on the third date of the data its own)"),
    Day(FunctionId::PreDayHigh, DayRule<PreDayHigh, Column::High>, "High of the day before"),
    Day(FunctionId::PreDayLow, DayRule<PreDayLow, Column::Low>, "Low of the day before"),
    Day(FunctionId::PreDayClose, DayRule<PreDayClose, Column::Close>, "Close of the day before"),
    Day(FunctionId::DayIndex, DayIndexRule, "Number of the bar within its day, from 0"),
};

}  // namespace

SVector DayOpen(const SVector &date, const SVector &open) {
  return DayValue(
      date, [&](int i) { return open[i]; }, [](double value, int) { return value; });
}

SVector DayHigh(const SVector &date, const SVector &high) {
  return DayValue(
      date, [&](int i) { return high[i]; }, [&](double value, int i) { return Larger(value, high[i]); });
}

SVector DayLow(const SVector &date, const SVector &low) {
  return DayValue(
      date, [&](int i) { return low[i]; }, [&](double value, int i) { return Smaller(value, low[i]); });
}

SVector PreDayClose(const SVector &date, const SVector &close) {
  return DayValue(
      date, [&](int i) { return close[i - 1]; }, [](double value, int) { return value; });
}

SVector PreDayOpen(const SVector &date, const SVector &open) {
  return PreDayValue(
      date, [&](int i) { return open[i]; }, [](double value, int) { return value; },
      [&](double, int i) { return open[i]; });
}

SVector PreDayHigh(const SVector &date, const SVector &high) {
  return PreDayValue(
      date, [&](int i) { return high[i]; }, [&](double value, int i) { return Larger(value, high[i]); },
      [](double own, int) { return own; });
}

SVector PreDayLow(const SVector &date, const SVector &low) {
  return PreDayValue(
      date, [&](int i) { return low[i]; }, [&](double value, int i) { return Smaller(value, low[i]); },
      [](double own, int) { return own; });
}

SVector DayIndex(const SVector &date) {
  SVector result;
  const int first = std::max(date.startIndex, 0);
  result.BeginResult(date.size, first);
  DayWalk days(date, first);
  int index = 0;
  for (int i = first; i < result.size; ++i) {
    if (i > first) index = days.BeginsAt(i) ? 0 : index + 1;
    result.data[i] = index;
  }
  return result;
}

FunctionRows DayValueRows() { return kRows; }

}  // namespace trovenu
