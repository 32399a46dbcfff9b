#include "tests/tools/tool_runner.h"

namespace trovenu::tests {

namespace {

class CheckTest : public ToolTest {};

TEST_F(CheckTest, SaysSoundOrShowsThePlace) {
  const struct {
    const char *formula;
    int exitCode;
    const char *out;
  } kCases[] = {
      {"avg(c, 20) > c && v > 0", 0, "sound\n"},
      {"평균(종가, 20) + oi + amount + DayOpen()", 0, "sound\n"},
      {"", 0, "sound\n"},
      {"c +", 1,
       "수식이 불완전합니다. 필요한 변수나 연산자가 없습니다. (line 1, column 4)\n"
       "c +\n"
       "   ^\n"},
      {"1 2", 1,
       "연산자가 필요합니다 (line 1, column 4)\n"
       "1 2\n"
       "   ^\n"},
      {"종가 + 하향 + 1", 1,
       "하향이(가) 정의되지 않았습니다. (line 1, column 14)\n"
       "종가 + 하향 + 1\n"
       "             ^\n"},
      {"x = 1;\r\n\t(c + x;\r\nx", 1,
       ")가 필요합니다. (line 2, column 9)\n"
       " (c + x;\n"
       "        ^\n"},
  };
  for (const auto &test : kCases) {
    SCOPED_TRACE(test.formula);
    const ToolResult result = Run({"check", "--formula", test.formula});
    EXPECT_EQ(result.exitCode, test.exitCode);
    EXPECT_EQ(result.out, test.out);
    EXPECT_EQ(result.err, "");
  }
}

TEST_F(CheckTest, RefusesWhatTheCodePageLacks) {
  const ToolResult result = Run({"check", "--formula", "c + 😀"});
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_EQ(result.out, "");
  EXPECT_EQ(result.err, "trovenu: formula \"c + 😀\": has a character that is not in the Korean code page\n");
}

}  // namespace

}  // namespace trovenu::tests
