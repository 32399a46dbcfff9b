#include <sstream>

#include "tests/tools/tool_runner.h"

namespace trovenu::tests {

namespace {

class RepaintTest : public ToolTest {
 protected:
  // The lines that the tool prints, a last empty one included.
  std::vector<std::string> Check(const std::string &formula, const std::vector<std::string> &more = {}) {
    std::vector<std::string> arguments = {"check",     "--repaint", "--bars", TROVENU_DATA_DIR "/daily.csv",
                                          "--formula", formula};
    arguments.insert(arguments.end(), more.begin(), more.end());
    result_ = Run(arguments);
    std::vector<std::string> lines;
    std::istringstream out(result_.out);
    for (std::string line; std::getline(out, line);) lines.push_back(line);
    return lines;
  }

  ToolResult result_;
};

TEST_F(RepaintTest, NamesTheWordThatCausesIt) {
  const struct {
    const char *formula;
    const char *cause;
  } kCases[] = {
      {"ref(c, -2) > c", "ref, a negative shift (line 1, column 1)"},
      {"c + shift(c, -1)", "shift, a negative shift (line 1, column 5)"},
      {"avg(c, 5, -1)", "avg, a negative shift (line 1, column 1)"},
      {"x = avg(c, 5); x(-1)", "x, a negative shift (line 1, column 16)"},
      // The word stands where the variable got its value, the last time.
      {"x = 1; x = ref(c, -1); y = x + x; max(y, c)", "ref, a negative shift (line 1, column 12)"},
      {"(y = (x = ref(c, -1)) + 1) * 0 + X", "ref, a negative shift (line 1, column 11)"},
      // A shift of a variable that repaints already: the assignment goes first.
      {"x = ref(c, -2); x(1)", "ref, a negative shift (line 1, column 5)"},
      {"avg(c, 3) +\n // 주석\n ZigZag(5)", "ZigZag, the last pivot moves (line 3, column 2)"},
      {"ref(DeCompress(CompressH(month), CompressD(month)), 0) + ref(c, -1)",
       "CompressH, the newest group is not complete (line 1, column 16)"},
      // Of the parts of a sum only the one counts that repaints in the sum.
      {"DeCompress(ref(CompressC(month), 1), CompressD(month)) + c(1) * ref(c, -1)",
       "ref, a negative shift (line 1, column 65)"},
      {"DeCompress(c, d - 1)",
       "DeCompress, bars behind the last date of the groups show the newest group (line 1, column 1)"},
      {"not BarsSince(c > 113)",
       "BarsSince, before the condition is first true, all bars are counted (line 1, column 5)"},
      {"-PreDayLow()",
       "PreDayLow, the third day gives the last bar of the second one a value (line 1, column 2)"},
  };
  for (const auto &test : kCases) {
    SCOPED_TRACE(test.formula);
    const std::vector<std::string> lines = Check(test.formula);
    EXPECT_EQ(result_.exitCode, 1);
    EXPECT_EQ(result_.err, "");
    ASSERT_GE(lines.size(), 3U);
    EXPECT_TRUE(lines[0].starts_with("repaints: "));
    EXPECT_EQ(lines[2], std::string("cause: ") + test.cause);
  }
}

TEST_F(RepaintTest, FindsNothingWhereNothingChanges) {
  const char *const kFormulas[] = {
      "",
      "5",
      "ref(c, 1) + avg(c, 20) + eavg(c, 3)",
      "rsi(14) + sar(0.02, 0.2) + DayHigh() + DayIndex()",
      "swinghigh(1, h, 2, 10) + swinglow(2, l, 1, 5)",
      "shift(c, 3)",
      // What looks ahead is not used, or moved back.
      "ref(c, -1); c",
      "x = ref(c, -1); x(1)",
      "ref(shift(c, 5), -5)",
      // A further group is not a change of the bar of that number.
      "CompressO(month)",
      "DeCompress(CompressO(month), CompressD(month))",
      "min(c, 0)",
  };
  for (const char *formula : kFormulas) {
    SCOPED_TRACE(formula);
    const std::vector<std::string> lines = Check(formula);
    EXPECT_EQ(result_.exitCode, 0);
    EXPECT_EQ(lines, std::vector<std::string>{"does not repaint: 252 bars, looked at 252 times"});
  }
}

TEST_F(RepaintTest, CountsTheChanges) {
  const std::string bars =
      File("bars.csv", "date,close,open\n20240102,1,0\n20240103,2,0\n20240104,4,0\n20240105,8,0\n");
  const struct {
    const char *formula;
    const char *lines;
  } kCases[] = {
      {"ref(c, -1)",
       "repaints: 2024-01-02 (bar 0) changed from 0 to 2 when 2024-01-03 (bar 1) came\n"
       "3 changes on 3 of 4 bars, looked at 4 times\n"},
      {"shift(c, -3)",
       "repaints: 2024-01-02 (bar 0) changed from no value to 8 when 2024-01-05 (bar 3) came\n"
       "1 change on 1 of 4 bars, looked at 4 times\n"},
      // Group 0 is 1, 2, 4 and then complete.
      {"CompressC(3)",
       "repaints: 2024-01-02 (bar 0) changed from 1 to 2 when 2024-01-03 (bar 1) came\n"
       "2 changes on 1 of 4 bars, looked at 4 times\n"},
      {"BarsSince(c == 4)",
       "repaints: 2024-01-02 (bar 0) changed from 0 to no value when 2024-01-04 (bar 2) came\n"
       "2 changes on 2 of 4 bars, looked at 4 times\n"},
  };
  for (const auto &test : kCases) {
    SCOPED_TRACE(test.formula);
    const ToolResult result = Run({"check", "--repaint", "--bars", bars, test.formula});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(result.out.substr(0, result.out.find("cause")), test.lines);
  }
  // Three looks at four bars: after 1, 2 and 4.
  const ToolResult sampled = Run({"check", "--repaint", "--bars", bars, "--samples", "3", "ref(c, -1)"});
  EXPECT_EQ(sampled.out.substr(0, sampled.out.find("cause")),
            "repaints: 2024-01-02 (bar 0) changed from 0 to 2 when 2024-01-03 (bar 1) came\n"
            "2 changes on 2 of 4 bars, looked at 3 times\n");
}

TEST_F(RepaintTest, RefusesBadUse) {
  const std::string bars = File("bars.csv", "date,close\n20240102,1\n");
  const struct {
    std::vector<std::string> arguments;
    int exitCode;
    std::string err;
  } kCases[] = {
      {{"c", "--repaint"}, 2, "trovenu: --repaint requires --bars (see trovenu check --help)\n"},
      {{"c", "--bars", bars}, 2, "trovenu: --bars requires --repaint (see trovenu check --help)\n"},
      {{"c", "--samples", "3"}, 2, "trovenu: --samples requires --repaint (see trovenu check --help)\n"},
      {{"c", "--repaint", "--bars", "none.csv"},
       1,
       "trovenu: none.csv: can't be read (No such file or directory)\n"},
      {{"v", "--repaint", "--bars", bars},
       1,
       "trovenu: " + bars + ":1: expected a column volume (거래량), which the formula \"v\" reads\n"},
  };
  for (const auto &test : kCases) {
    SCOPED_TRACE(test.err);
    std::vector<std::string> arguments = test.arguments;
    arguments.insert(arguments.begin(), "check");
    const ToolResult result = Run(arguments);
    EXPECT_EQ(result.exitCode, test.exitCode);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err, test.err);
  }
  const ToolResult faulty = Run({"check", "--repaint", "--bars", bars, "c +"});
  EXPECT_EQ(faulty.exitCode, 1);
  EXPECT_TRUE(faulty.out.ends_with("(line 1, column 4)\nc +\n   ^\n")) << faulty.out;
}

}  // namespace

}  // namespace trovenu::tests
