#include "trovenu/support/date_number.h"

#include <algorithm>

#include "trovenu/support/series.h"

namespace trovenu {

namespace {

constexpr std::int64_t kSecondsPerDay = 86400;
constexpr double kLastMoment = 99991231235959.0;
constexpr int kLastDate = 99991231;

struct Day {
  int year;
  int month;
  int day;
};

/// The date part as an integer, 0 for what is no date.
int DatePart(double date) { return std::max(TruncateToInt(GetCompDate(date)), 0); }

/// hhmmss, 0 for a plain date.
int TimePart(double date) {
  if (!(date > kLargestPlainDate)) return 0;
  // The difference is exact, and far cheaper than the remainder.
  return TruncateToInt(date < kShortDateEnd ? date - GetCompDate(date) * kTimeOfDayDigits
                                            : std::fmod(date, kTimeOfDayDigits));
}

Day SplitDate(int date) { return {date / 10000, date / 100 % 100, date % 100}; }

// The calendar is counted in years from March on, which puts the leap day at the end of a year, and in cycles
// of 400 years. Day 0 is 1 March of the year 0.
constexpr int kDaysPerCycle = 146097;

std::int64_t DayNumber(const Day &date) {
  const int year = date.month > 2 ? date.year : date.year - 1;
  const int cycle = (year >= 0 ? year : year - 399) / 400;
  const int yearOfCycle = year - cycle * 400;
  const int dayOfYear = (153 * (date.month > 2 ? date.month - 3 : date.month + 9) + 2) / 5 + date.day - 1;
  const int dayOfCycle = yearOfCycle * 365 + yearOfCycle / 4 - yearOfCycle / 100 + dayOfYear;
  return static_cast<std::int64_t>(cycle) * kDaysPerCycle + dayOfCycle;
}

Day DayOfNumber(std::int64_t number) {
  const std::int64_t cycle = (number >= 0 ? number : number - (kDaysPerCycle - 1)) / kDaysPerCycle;
  const int dayOfCycle = static_cast<int>(number - cycle * kDaysPerCycle);
  const int yearOfCycle = (dayOfCycle - dayOfCycle / 1460 + dayOfCycle / 36524 - dayOfCycle / 146096) / 365;
  const int dayOfYear = dayOfCycle - (365 * yearOfCycle + yearOfCycle / 4 - yearOfCycle / 100);
  const int monthFromMarch = (5 * dayOfYear + 2) / 153;
  const int day = dayOfYear - (153 * monthFromMarch + 2) / 5 + 1;
  const int month = monthFromMarch < 10 ? monthFromMarch + 3 : monthFromMarch - 9;
  const int year = static_cast<int>(cycle * 400) + yearOfCycle + (month <= 2 ? 1 : 0);
  return {year, month, day};
}

/// yyyymmdd of a day, 0 before the year 0.
int PlainDate(std::int64_t dayNumber) {
  const Day day = DayOfNumber(dayNumber);
  return day.year < 0 ? 0 : day.year * 10000 + day.month * 100 + day.day;
}

}  // namespace

long GetLongDate(double date) { return TruncateToInt(GetCompDate(date)); }

int GetYear(double date) { return SplitDate(DatePart(date)).year; }
int GetMonth(double date) { return SplitDate(DatePart(date)).month; }
int GetDate(double date) { return SplitDate(DatePart(date)).day; }
int GetHour(double date) { return TimePart(date) / 10000; }
int GetMinute(double date) { return TimePart(date) / 100 % 100; }

double GetNextTime(double date, int minutes) {
  if (!(date >= 1.0 && date <= kLastMoment)) return date;
  Day day = SplitDate(DatePart(date));
  day.month = std::clamp(day.month, 1, 12);
  day.day = std::clamp(day.day, 1, 31);
  const int time = TimePart(date);
  const std::int64_t secondOfDay = time / 10000 * 3600 + time / 100 % 100 * 60 + time % 100;
  const std::int64_t moment =
      DayNumber(day) * kSecondsPerDay + secondOfDay + static_cast<std::int64_t>(minutes) * 60;

  std::int64_t dayNumber = moment / kSecondsPerDay;
  std::int64_t rest = moment % kSecondsPerDay;
  if (rest < 0) {
    rest += kSecondsPerDay;
    --dayNumber;
  }
  if (!(date > kLargestPlainDate)) {
    return std::min(PlainDate(rest > 0 ? dayNumber + 1 : dayNumber), kLastDate);
  }

  const int plain = PlainDate(dayNumber);
  if (plain == 0) return 0.0;
  const std::int64_t hhmmss = rest / 3600 * 10000 + rest / 60 % 60 * 100 + rest % 60;
  return std::min(plain * kTimeOfDayDigits + static_cast<double>(hhmmss), kLastMoment);
}

}  // namespace trovenu
