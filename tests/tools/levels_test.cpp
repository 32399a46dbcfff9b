#include "tests/tools/tool_runner.h"

namespace trovenu::tests {

namespace {

class LevelsTest : public ToolTest {};

// The first day rises from 95 to 100 between 110 and 90: X = 410. The second has one bar more.
constexpr const char *kBars =
    "date,time,open,high,low,close\n"
    "2024-01-02,09:00,95,104,94,96\n"
    "2024-01-02,09:01,96,110,90,100\n"
    "2024-01-03,09:00,100,100,100,102.5\n"
    "2024-01-03,09:01,102,111,102,110\n"
    "2024-01-03,09:02,110,116,100,100\n";

constexpr const char *kFirstDay =
    "2024-01-02,피봇기준선,100,,\n"
    "2024-01-02,피봇1차저항선,110,,\n"
    "2024-01-02,피봇2차저항선,120,,\n"
    "2024-01-02,피봇1차지지선,90,,\n"
    "2024-01-02,피봇2차지지선,80,,\n"
    "2024-01-02,디마크기준선,102.5,,\n"
    "2024-01-02,디마크고가,115,,\n"
    "2024-01-02,디마크저가,95,,\n"
    "2024-01-03 09:00,디마크기준선,102.5,102.5,디마크기준선 상향돌파\n"
    "2024-01-03 09:01,피봇1차저항선,110,110,피봇1차저항선 상향돌파\n"
    "2024-01-03 09:02,피봇기준선,100,100,피봇기준선 하향돌파\n"
    "2024-01-03 09:02,디마크기준선,102.5,100,디마크기준선 하향돌파\n";

// High 116, low and close 100, open 100: P = 316 / 3, X = 416.
constexpr const char *kSecondDay =
    "2024-01-03,피봇기준선,105.33333333333333,,\n"
    "2024-01-03,피봇1차저항선,110.66666666666666,,\n"
    "2024-01-03,피봇2차저항선,121.33333333333331,,\n"
    "2024-01-03,피봇1차지지선,94.66666666666666,,\n"
    "2024-01-03,피봇2차지지선,89.33333333333333,,\n"
    "2024-01-03,디마크기준선,104,,\n"
    "2024-01-03,디마크고가,108,,\n"
    "2024-01-03,디마크저가,92,,\n";

TEST_F(LevelsTest, LevelsOfADayAndTheAlertsOfTheNext) {
  const std::string heading = "date,line,level,close,alert\n";
  for (const char *days : {"2", "9"}) {
    const ToolResult result = Run({"levels", "--bars", "-", "--days", days, "--format", "csv"}, kBars);
    EXPECT_EQ(result.exitCode, 0) << result.err;
    EXPECT_EQ(result.out, heading + kFirstDay + kSecondDay);
  }
  EXPECT_EQ(Run({"levels", "--bars", "-", "--days", "1", "--format", "csv"}, kBars).out,
            heading + kSecondDay);
}

TEST_F(LevelsTest, JsonHasNullWhereNothingWasCrossed) {
  const ToolResult result = Run({"levels", "--bars", "-", "--format", "json"}, kBars);
  EXPECT_NE(
      result.out.find(R"({"date":"2024-01-02","line":"피봇기준선","level":100,"close":null,"alert":""})"),
      std::string::npos)
      << result.out;
}

TEST_F(LevelsTest, WantsTheFourPrices) {
  const ToolResult result = Run({"levels", "--bars", "-"}, "date,open,high,close\n20240102,1,2,1\n");
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_EQ(result.out, "");
  EXPECT_NE(result.err.find("standard input:1: expected a column low (저가)"), std::string::npos)
      << result.err;
  EXPECT_EQ(Run({"levels", "--bars", "-", "--days", "0"}, kBars).exitCode, 2);
}

}  // namespace

}  // namespace trovenu::tests
