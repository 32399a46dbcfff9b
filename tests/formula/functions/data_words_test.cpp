#include "trovenu/formula/functions/data_words.h"

#include <gtest/gtest.h>

#include <limits>

#include "tests/formula/bars.h"

namespace trovenu::tests {
namespace {

// Required: the bars before the start index have their date and time too.
TEST(DataWords, DatesAndTimesAreThereFromTheFirstBarOn) {
  const SVector date = Series({20240102090000, 20240103, 20240103153000}, 2);
  const SVector days = CalendarDates(date);
  const SVector times = TimesOfDay(date);
  const double kDays[] = {20240102, 20240103, 20240103};
  const double kTimes[] = {90000, 0, 153000};
  EXPECT_EQ(days.GetStartIndex(), 2);
  EXPECT_EQ(times.GetStartIndex(), 2);
  for (int i = 0; i < 3; ++i) {
    EXPECT_EQ(days[i], kDays[i]);
    EXPECT_EQ(times[i], kTimes[i]);
  }
}

// As an integer, what is no number is 0.
TEST(DataWords, AnImpossibleDateHasNoTime) {
  const SVector times = TimesOfDay(Series(
      {std::numeric_limits<double>::infinity(), std::numeric_limits<double>::quiet_NaN(), -20240103153000}));
  for (int i = 0; i < 3; ++i) EXPECT_EQ(times[i], 0.0);
}

}  // namespace
}  // namespace trovenu::tests
