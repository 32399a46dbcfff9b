#include "trovenu/price/sr_lines.h"

#include <gtest/gtest.h>

#include "tests/indicator/index_folder.h"
#include "tests/price/stored_values.h"
#include "trovenu/support/korean.h"

namespace trovenu {
namespace {

SSRLines Changed() {
  CKqArchive archive = tests::Renumbered(tests::StoredBy(SSRLines(), 0));
  SSRLines lines;
  lines.Load(archive, 0);
  return lines;
}

// Required: the values of the lines are not compared.
TEST(SRLines, EqualityIgnoresTheValuesOfTheLines) {
  SSRLines levels;
  for (int i = 0; i < 28; ++i) levels.SetValue(i, 100.0 + i);
  EXPECT_TRUE(levels == SSRLines());
  levels.LineThick[27] = 2;
  EXPECT_TRUE(levels != SSRLines());
}

// Required: ShowAlarmLine and ShowAlarmDlg are written by `SaveSetting` and never read back.
TEST(SRLines, ShowAlarmLineAndShowAlarmDlgAreNeverReadBack) {
  const tests::IndexFolder folder;
  const SSRLines saved = Changed();
  saved.SaveSetting();
  EXPECT_NE(folder.Content("alarmset.ini").find("ShowAlarmDlg=1002"), std::string::npos);
  SSRLines read;
  read.ShowAlarmLine = 7;
  read.ShowAlarmDlg = 8;
  read.ReadSetting();
  EXPECT_EQ(read.ShowAlarmLine, 7);
  EXPECT_EQ(read.ShowAlarmDlg, 8);
  EXPECT_EQ(read.ShowTitle, saved.ShowTitle);
  EXPECT_EQ(read.TextPos, saved.TextPos);
  for (int i = 0; i < 28; ++i) {
    EXPECT_EQ(read.ShowLine[i], saved.ShowLine[i]);
    EXPECT_EQ(read.LineThick[i], saved.LineThick[i]);
    EXPECT_EQ(read.LineColor[i], saved.LineColor[i]);
    EXPECT_EQ(read.LineValue[i], 0.0);
  }
}

TEST(SRLines, PivotAndDeMarkByHand) {
  struct {
    double open, high, low, close, computed[8];  // lines 16 to 23
  } const cases[] = {
      // Rising: X = 110 + 110 + 90 + 100 = 410; falling: X = 90 + 90 + 110 + 100; level: X = 100 + 100 + 110
      // + 90.
      {95, 110, 90, 100, {100, 110, 120, 90, 80, 102.5, 115, 95}},
      {105, 110, 90, 100, {100, 110, 120, 90, 80, 97.5, 105, 85}},
      {100, 110, 90, 100, {100, 110, 120, 90, 80, 100, 110, 90}},
      // P = (12 + 6 + 9) / 3 = 9; X = 12 + 12 + 6 + 9 = 39.
      {7, 12, 6, 9, {9, 12, 15, 6, 3, 9.75, 13.5, 7.5}},
      {0, 0, 0, 0, {0, 0, 0, 0, 0, 0, 0, 0}},
  };
  for (const auto &c : cases) {
    SSRLines lines;
    const double given[] = {c.open, c.high, c.low, c.close, 101, 104, 98};
    for (int i = 0; i < 28; ++i) lines.SetValue(i, i < 7 ? given[i] : 1000.0 + i);
    lines.CalcAlarmLine();
    for (int i = 0; i < 28; ++i) {
      const bool isComputed = i >= 16 && i < 24;
      const double other = i < 7 ? given[i] : i == 7 ? 101.0 : 1000.0 + i;  // (101 + 104 + 98) / 3
      EXPECT_EQ(lines.LineValue[i], isComputed ? c.computed[i - 16] : other) << c.open << ' ' << i;
    }
  }
}

SSRLines Moved(double from, double to, double level) {
  SSRLines lines;
  lines.ShowAlarmDlg = lines.ShowLine[16] = lines.ShowAlert[16] = 1;
  lines.SetValue(16, level);
  lines.SetClose(from);
  lines.SetClose(to);
  lines.Calc();
  return lines;
}

TEST(SRLines, ALevelIsCrossedBehindTheLastPriceUpToTheNewOne) {
  struct {
    double from, to, level;
    int crossing;
  } const cases[] = {
      {100, 110, 99, 0},  {100, 110, 100, 0}, {100, 110, 100.5, 1}, {100, 110, 110, 1},  {100, 110, 111, 0},
      {110, 100, 111, 0}, {110, 100, 110, 0}, {110, 100, 105, -1},  {110, 100, 100, -1}, {110, 100, 99, 0},
      {100, 100, 100, 0}, {0, 110, 105, 0},   {110, 0, 105, 0},     {-5, 5, 0, 1},       {5, -5, 0, -1},
  };
  for (const auto &c : cases) {
    SSRLines lines = Moved(c.from, c.to, c.level);
    EXPECT_EQ(lines.ShowAlert[16], c.crossing) << c.from << ' ' << c.to << ' ' << c.level;
    const char *const message = c.crossing > 0   ? "피봇기준선 상향돌파"_kr
                                : c.crossing < 0 ? "피봇기준선 하향돌파"_kr
                                                 : "";
    EXPECT_TRUE(lines.GetAlertMessage(16) == message);
    for (const int index : {-1, 15, 28, 2147483647}) EXPECT_TRUE(lines.GetAlertMessage(index).IsEmpty());
    lines.ShowAlarmDlg = 0;
    EXPECT_TRUE(lines.GetAlertMessage(16).IsEmpty());
  }
}

}  // namespace
}  // namespace trovenu
