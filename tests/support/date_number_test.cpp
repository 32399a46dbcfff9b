#include "trovenu/support/date_number.h"

#include <gtest/gtest.h>

#include <climits>
#include <cmath>
#include <limits>

namespace trovenu {
namespace {

const double kNan = std::numeric_limits<double>::quiet_NaN();
const double kInf = std::numeric_limits<double>::infinity();

TEST(DateNumber, Fields) {
  struct Case {
    double date;
    int year, month, day, hour, minute;
  };
  const Case cases[] = {
      {20240102.0, 2024, 1, 2, 0, 0},
      {20240102093015.0, 2024, 1, 2, 9, 30},
      {20241231235959.0, 2024, 12, 31, 23, 59},
      {20240102000000.0, 2024, 1, 2, 0, 0},
      {99991231235959.0, 9999, 12, 31, 23, 59},
      {20240102.75, 2024, 1, 2, 0, 0},
      {1e8, 10000, 0, 0, 0, 0},      // still a plain date
      {101000001.0, 0, 1, 1, 0, 0},  // a short date with a time
      {0.0, 0, 0, 0, 0, 0},
      {-20240102.0, 0, 0, 0, 0, 0},
      {kNan, 0, 0, 0, 0, 0},
      {-kInf, 0, 0, 0, 0, 0},
  };
  for (const Case &c : cases) {
    EXPECT_EQ(GetYear(c.date), c.year) << c.date;
    EXPECT_EQ(GetMonth(c.date), c.month) << c.date;
    EXPECT_EQ(GetDate(c.date), c.day) << c.date;
    EXPECT_EQ(GetHour(c.date), c.hour) << c.date;
    EXPECT_EQ(GetMinute(c.date), c.minute) << c.date;
  }
}

TEST(DateNumber, HugeNumbersAreHarmless) {
  for (double date : {kInf, 1e300, 1e17, 9e15}) {
    for (int (*field)(double) : {GetYear, GetMonth, GetDate, GetHour, GetMinute})
      EXPECT_GE(field(date), 0) << date;
    EXPECT_EQ(GetNextTime(date, 5), date);
    EXPECT_EQ(GetLongDate(date), 2147483647L) << date;
  }
}

TEST(DateNumber, BothFormsHaveTheSamePlainDate) {
  for (double date : {20240102.0, 20240102000000.0, 20240102000001.0, 20240102235959.0}) {
    EXPECT_EQ(GetCompDate(date), 20240102.0);
    EXPECT_EQ(GetLongDate(date), 20240102);
  }
  EXPECT_EQ(GetCompDate(1e8), 1e8);
  EXPECT_EQ(GetCompDate(0.5), 0.5);
  EXPECT_EQ(GetCompDate(-3.0), -3.0);
  EXPECT_EQ(GetCompDate(2147483647999999.0), 2147483647.0);
  EXPECT_EQ(GetCompDate(2147483648000000.0), 2147483648.0);
  EXPECT_TRUE(std::isnan(GetCompDate(kNan)));
  EXPECT_EQ(GetLongDate(kNan), 0);
}

TEST(DateNumber, NextTime) {
  struct Case {
    double date;
    int minutes;
    double expected;
  };
  const Case cases[] = {
      // With a time.
      {20240102090000.0, 15, 20240102091500.0},
      {20240102095930.0, 1, 20240102100030.0},
      {20240102090000.0, 0, 20240102090000.0},
      {20240102235900.0, 1, 20240103000000.0},
      {20240228235959.0, 1, 20240229000059.0},
      {20230228235959.0, 1, 20230301000059.0},
      {19000228120000.0, 1440, 19000301120000.0},  // a century without a leap day
      {20000228120000.0, 1440, 20000229120000.0},
      {20241231233000.0, 60, 20250101003000.0},
      {20240301000000.0, -1, 20240229235900.0},
      {20250101000000.0, -1, 20241231235900.0},
      {20240101000000.0, 366 * 1440, 20250101000000.0},
      {20240102240000.0, 15, 20240103001500.0},  // hour 24 is the next midnight
      {20240102097500.0, 0, 20240102101500.0},   // a minute past 59 carries over
      // Plain dates.
      {20240102.0, 30, 20240103.0},
      {20240102.0, 0, 20240102.0},
      {20240102.0, 1440, 20240103.0},
      {20240102.0, 1441, 20240104.0},
      {20240102.0, -30, 20240102.0},
      {20240102.0, -1440, 20240101.0},
      {20231231.0, 1, 20240101.0},
      // No days of a calendar.
      {20240230.0, 0, 20240301.0},
      {20240000.0, 0, 20240101.0},
      {20241399.0, 0, 20241231.0},
      // No dates.
      {0.0, 30, 0.0},
      {-5.0, 30, -5.0},
      // The ends.
      {99991231.0, 1, 99991231.0},
      {99991231235959.0, 1, 99991231235959.0},
      {101.0, -1440, 0.0},
      {101000000.0, -1, 0.0},
  };
  for (const Case &c : cases)
    EXPECT_EQ(GetNextTime(c.date, c.minutes), c.expected) << c.date << ' ' << c.minutes;
  EXPECT_TRUE(std::isnan(GetNextTime(kNan, 1)));
  EXPECT_EQ(GetNextTime(20240102.0, INT_MIN), 0.0);
  EXPECT_EQ(GetNextTime(20240102.0, INT_MAX), 61070126.0);
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
