#include "trovenu/support/date_number.h"

#include <gtest/gtest.h>

#include <climits>
#include <limits>

namespace trovenu {
namespace {

const double kNan = std::numeric_limits<double>::quiet_NaN();
const double kInf = std::numeric_limits<double>::infinity();

TEST(DateNumber, Fields) {
  const struct {
    double date;
    int year, month, day, hour, minute;
  } cases[] = {{20240102.75, 2024, 1, 2, 0, 0}, {20241231235959.0, 2024, 12, 31, 23, 59},
               {1e8, 10000, 0, 0, 0, 0},        {101000001.0, 0, 1, 1, 0, 0},
               {-20240102.0, 0, 0, 0, 0, 0},    {kNan, 0, 0, 0, 0, 0}};
  for (const auto &c : cases) {
    EXPECT_EQ(GetYear(c.date), c.year) << c.date;
    EXPECT_EQ(GetMonth(c.date), c.month) << c.date;
    EXPECT_EQ(GetDate(c.date), c.day) << c.date;
    EXPECT_EQ(GetHour(c.date), c.hour) << c.date;
    EXPECT_EQ(GetMinute(c.date), c.minute) << c.date;
  }
  for (double date : {kInf, 1e300, 1e17, 9e15}) {
    for (int (*field)(double) : {GetYear, GetMonth, GetDate, GetHour, GetMinute})
      EXPECT_GE(field(date), 0) << date;
    EXPECT_EQ(GetNextTime(date, 5), date);
    EXPECT_EQ(GetLongDate(date), 2147483647L) << date;
  }
}

TEST(DateNumber, NextTime) {
  const struct {
    double date;
    int minutes;
    double expected;
  } cases[] = {{20240102095930.0, 1, 20240102100030.0},
               {20241231233000.0, 60, 20250101003000.0},
               {20240301000000.0, -1, 20240229235900.0},
               {20240102240000.0, 15, 20240103001500.0},
               {20240102097500.0, 0, 20240102101500.0},
               {20240102.0, 1441, 20240104.0},
               {20240102.0, -30, 20240102.0},
               {20240230.0, 0, 20240301.0},
               {20241399.0, 0, 20241231.0},
               {-5.0, 30, -5.0},
               {99991231.0, 1, 99991231.0},
               {101000000.0, -1, 0.0},
               {20240102.0, INT_MIN, 0.0},
               {20240102.0, INT_MAX, 61070126.0}};
  for (const auto &c : cases)
    EXPECT_EQ(GetNextTime(c.date, c.minutes), c.expected) << c.date << ' ' << c.minutes;
}

TEST(DateNumber, NextTimeStepsThroughEveryDay) {
  const int monthDays[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  double date = 18981231.0;
  double moment = 18981231120000.0;
  for (int year = 1899; year <= 2101; ++year) {
    const bool leap = (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
    for (int month = 1; month <= 12; ++month) {
      const int days = month == 2 && leap ? 29 : monthDays[month - 1];
      for (int day = 1; day <= days; ++day) {
        const double expected = year * 10000 + month * 100 + day;
        date = GetNextTime(date, 1440);
        ASSERT_EQ(date, expected);
        moment = GetNextTime(moment, 1440);
        ASSERT_EQ(moment, expected * 1e6 + 120000.0);
        ASSERT_EQ(GetNextTime(GetNextTime(moment, -86400), 86400), moment);
      }
    }
  }
}

}  // namespace
}  // namespace trovenu
