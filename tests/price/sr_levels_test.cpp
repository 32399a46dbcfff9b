#include <gtest/gtest.h>

#include "trovenu/price/sr_lines.h"

namespace trovenu {
namespace {

// Line 7, then lines 16 to 23.
struct Levels {
  double open;
  double high;
  double low;
  double close;
  double computed[8];
};

TEST(SRLevels, PivotAndDeMarkByHand) {
  const Levels cases[] = {
      // Rising: X = 110 + 110 + 90 + 100 = 410.
      {95, 110, 90, 100, {100, 110, 120, 90, 80, 102.5, 115, 95}},
      // Falling: X = 90 + 90 + 110 + 100 = 390.
      {105, 110, 90, 100, {100, 110, 120, 90, 80, 97.5, 105, 85}},
      // Level: X = 100 + 100 + 110 + 90 = 400.
      {100, 110, 90, 100, {100, 110, 120, 90, 80, 100, 110, 90}},
      // P = (12 + 6 + 9) / 3 = 9; X = 12 + 12 + 6 + 9 = 39.
      {7, 12, 6, 9, {9, 12, 15, 6, 3, 9.75, 13.5, 7.5}},
      {0, 0, 0, 0, {0, 0, 0, 0, 0, 0, 0, 0}},
  };
  for (const Levels &c : cases) {
    SSRLines lines;
    const double given[] = {c.open, c.high, c.low, c.close, 101, 104, 98};
    for (int i = 0; i < 7; ++i) lines.SetValue(i, given[i]);
    lines.CalcAlarmLine();
    EXPECT_EQ(lines.LineValue[7], 101.0);  // (101 + 104 + 98) / 3
    for (int i = 0; i < 8; ++i) EXPECT_EQ(lines.LineValue[16 + i], c.computed[i]) << c.open << ' ' << 16 + i;
    for (int i = 0; i < 7; ++i) EXPECT_EQ(lines.LineValue[i], given[i]);
  }
}

TEST(SRLevels, LinesOfTheHostStay) {
  SSRLines lines;
  for (int i = 0; i < 28; ++i) lines.SetValue(i, 1000.0 + i);
  lines.CalcAlarmLine();
  for (int i = 0; i < 28; ++i) {
    const bool computed = i == 7 || (i >= 16 && i <= 23);
    EXPECT_TRUE(computed || lines.LineValue[i] == 1000.0 + i) << i;
  }
  EXPECT_EQ(lines.LineValue[7], 1005.0);
}

}  // namespace
}  // namespace trovenu
