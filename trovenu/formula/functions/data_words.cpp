#include "trovenu/formula/functions/data_words.h"

#include <cmath>

#include "trovenu/formula/messages.h"
#include "trovenu/support/date_number.h"

namespace trovenu {
namespace {

template <class Convert>
SVector MapDates(const SVector &date, Convert convert) {
  SVector result;
  result.BeginResult(date.size, 0);
  for (int i = 0; i < result.size; ++i) result.data[i] = convert(date.data[i]);
  result.startIndex = date.startIndex;
  return result;
}

template <Column kColumn>
Operand BoundSeries(Call &call) {
  return Operand::Borrow(call.Bound(kColumn));
}

Operand DateRule(Call &call) { return CalendarDates(call.Bound(Column::Date)); }

Operand TimeRule(Call &call) { return TimesOfDay(call.Bound(Column::Date)); }

// Required: the word is known and has no calculation.
Operand FaultyRule(Call &call) { return call.Fail(messages::kFaultyVariable); }

constexpr Function Word(FunctionId id, Rule rule, const char *help) {
  return {id, Reading::None, 0, 0, FullCalc::Never, nullptr, nullptr, rule, "", help};
}

constexpr Function kRows[] = {
    Word(FunctionId::Close, BoundSeries<Column::Close>, "Closing price"),
    Word(FunctionId::Open, BoundSeries<Column::Open>, "Opening price"),
    Word(FunctionId::High, BoundSeries<Column::High>, "Highest price"),
    Word(FunctionId::Low, BoundSeries<Column::Low>, "Lowest price"),
    Word(FunctionId::Volume, BoundSeries<Column::Volume>, "Volume"),
    Word(FunctionId::OpenInterest, BoundSeries<Column::OpenInterest>, "Open interest"),
    Word(FunctionId::Amount, BoundSeries<Column::Amount>, "Traded amount"),
    Word(FunctionId::Date, DateRule, "Date of the bar as yyyymmdd"),
    Word(FunctionId::Time, TimeRule, "Time of the bar as hhmmss, 0 for a daily bar"),
    Word(FunctionId::Year, FaultyRule, "Known but without a calculation: always an error"),
    Word(FunctionId::Month, FaultyRule, "Known but without a calculation: always an error"),
};

}  // namespace

SVector CalendarDates(const SVector &date) {
  return MapDates(date, [](double x) { return x > kLargestPlainDate ? GetCompDate(x) : x; });
}

SVector TimesOfDay(const SVector &date) {
  // 0.001 guards the truncation against a remainder that falls just short.
  return MapDates(date, [](double x) {
    return x > kLargestPlainDate ? static_cast<double>(TruncateToInt(std::fmod(x, 1e6) + 0.001)) : 0.0;
  });
}

FunctionRows DataWordRows() { return kRows; }

}  // namespace trovenu
