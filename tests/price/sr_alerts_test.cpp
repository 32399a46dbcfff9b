#include <gtest/gtest.h>

#include <climits>

#include "trovenu/price/sr_lines.h"
#include "trovenu/support/korean.h"

namespace trovenu {
namespace {

constexpr const char *kNames[28] = {
    "전일 시가"_kr,     "전일 고가"_kr,     "전일 저가"_kr,     "전일 종가"_kr,     "당일 시가"_kr,
    "당일 고가"_kr,     "당일 저가"_kr,     "당일 시고저/3"_kr, "상한가"_kr,        "하한가"_kr,
    "금주 시가"_kr,     "금주 고가"_kr,     "금주 저가"_kr,     "금월 시가"_kr,     "금월 고가"_kr,
    "금월 저가"_kr,     "피봇기준선"_kr,    "피봇1차저항선"_kr, "피봇2차저항선"_kr, "피봇1차지지선"_kr,
    "피봇2차지지선"_kr, "디마크기준선"_kr,  "디마크고가"_kr,    "디마크저가"_kr,    "사용자지정값1"_kr,
    "사용자지정값2"_kr, "사용자지정값3"_kr, "사용자지정값4"_kr,
};

SSRLines ShownLine(int index, double level) {
  SSRLines lines;
  lines.ShowAlarmDlg = 1;
  lines.ShowLine[index] = 1;
  lines.SetValue(index, level);
  return lines;
}

void Move(SSRLines &lines, double from, double to) {
  lines.SetClose(from);
  lines.SetClose(to);
  lines.Calc();
}

TEST(SRAlerts, ALevelIsCrossedBehindTheLastPriceUpToTheNewOne) {
  struct Case {
    double from;
    double to;
    double level;
    int crossing;
  };
  const Case cases[] = {
      {100, 110, 99, 0},  {100, 110, 100, 0}, {100, 110, 100.5, 1}, {100, 110, 110, 1},  {100, 110, 111, 0},
      {110, 100, 111, 0}, {110, 100, 110, 0}, {110, 100, 105, -1},  {110, 100, 100, -1}, {110, 100, 99, 0},
      {100, 100, 100, 0}, {0, 110, 105, 0},   {110, 0, 105, 0},     {-5, 5, 0, 1},       {5, -5, 0, -1},
  };
  for (const Case &c : cases) {
    SSRLines lines = ShownLine(3, c.level);
    lines.ShowAlert[3] = 1;
    Move(lines, c.from, c.to);
    EXPECT_EQ(lines.ShowAlert[3], c.crossing) << c.from << ' ' << c.to << ' ' << c.level;
  }
}

TEST(SRAlerts, TheFirstPriceRaisesNothing) {
  SSRLines lines = ShownLine(0, 50.0);
  lines.SetClose(60.0);
  lines.Calc();
  EXPECT_EQ(lines.previousClose, 0.0);
  EXPECT_EQ(lines.ShowAlert[0], 0);
}

TEST(SRAlerts, WithoutAPriceAllCrossingsAreDropped) {
  SSRLines lines = ShownLine(0, 105.0);
  Move(lines, 100.0, 110.0);
  ASSERT_EQ(lines.ShowAlert[0], 1);
  lines.ShowAlert[20] = -1;
  lines.SetClose(0.0);
  lines.Calc();
  for (const int crossing : lines.ShowAlert) EXPECT_EQ(crossing, 0);
}

TEST(SRAlerts, ACrossingLastsForOnePrice) {
  SSRLines lines = ShownLine(0, 105.0);
  Move(lines, 100.0, 110.0);
  lines.SetClose(111.0);
  lines.Calc();
  EXPECT_EQ(lines.ShowAlert[0], 0);
}

TEST(SRAlerts, MessageNamesTheLineAndTheWay) {
  for (int i = 0; i < 28; ++i) {
    EXPECT_STREQ(SSRLines::LineName(i), kNames[i]);
    SSRLines lines = ShownLine(i, 105.0);
    Move(lines, 100.0, 110.0);
    EXPECT_TRUE(lines.GetAlertMessage(i) == CString(kNames[i]) + " 상향돌파"_kr) << i;
    Move(lines, 110.0, 100.0);
    EXPECT_TRUE(lines.GetAlertMessage(i) == CString(kNames[i]) + " 하향돌파"_kr) << i;
    EXPECT_TRUE(lines.GetAlertMessage(i == 0 ? 1 : 0).IsEmpty());
  }
}

TEST(SRAlerts, NoMessageWithoutDialogLineOrCrossing) {
  SSRLines crossed = ShownLine(16, 105.0);
  Move(crossed, 100.0, 110.0);
  ASSERT_TRUE(crossed.GetAlertMessage(16) == "피봇기준선 상향돌파"_kr);
  SSRLines lines = crossed;
  lines.ShowAlarmDlg = 0;
  EXPECT_TRUE(lines.GetAlertMessage(16).IsEmpty());
  lines = crossed;
  lines.ShowLine[16] = 0;
  EXPECT_TRUE(lines.GetAlertMessage(16).IsEmpty());
  for (const int state : {0, 2, -2}) {
    lines = crossed;
    lines.ShowAlert[16] = state;
    EXPECT_TRUE(lines.GetAlertMessage(16).IsEmpty()) << state;
  }
  for (const int index : {-1, 28, INT_MIN, INT_MAX}) {
    EXPECT_TRUE(crossed.GetAlertMessage(index).IsEmpty());
    EXPECT_STREQ(SSRLines::LineName(index), "");
  }
}

TEST(SRAlerts, ALineThatIsNotShownNeverAlerts) {
  SSRLines lines = ShownLine(0, 105.0);
  lines.ShowLine[0] = 0;
  Move(lines, 100.0, 110.0);
  EXPECT_EQ(lines.ShowAlert[0], 0);
  EXPECT_TRUE(lines.GetAlertMessage(0).IsEmpty());
}

}  // namespace
}  // namespace trovenu
