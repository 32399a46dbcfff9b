#include "tests/tools/tool_runner.h"

namespace trovenu::tests {

namespace {

constexpr const char *kDaily = TROVENU_DATA_DIR "/daily.csv";
constexpr const char *kMinutes = TROVENU_DATA_DIR "/minutes.csv";

class ReplayTest : public ToolTest {
 protected:
  // The rows of the report as "kind,name,updates,result".
  std::vector<std::string> Rows(std::vector<std::string> arguments) {
    arguments.insert(arguments.begin(), {"replay", "--format", "csv"});
    result_ = Run(arguments);
    std::vector<std::string> rows;
    std::size_t begin = 0;
    for (std::size_t end = 0; (end = result_.out.find('\n', begin)) != std::string::npos; begin = end + 1) {
      std::vector<std::string> fields = {""};
      bool quoted = false;
      for (const char c : result_.out.substr(begin, end - begin)) {
        if (c == '"') {
          quoted = !quoted;
        } else if (c == ',' && !quoted) {
          fields.emplace_back();
        } else {
          fields.back() += c;
        }
      }
      if (fields.size() == 6) rows.push_back(fields[0] + "," + fields[1] + "," + fields[2] + "," + fields[5]);
    }
    EXPECT_FALSE(rows.empty()) << result_.out << result_.err;
    if (!rows.empty()) rows.erase(rows.begin());
    return rows;
  }

  ToolResult result_;
};

TEST_F(ReplayTest, UpdatesGiveWhatAFullCalculationGives) {
  const std::vector<std::vector<std::string>> kCases = {
      {"avg(c, 20) + stdev(c, 5)"},
      {"rsi(14)", "sar(0.02, 0.2) + DayHigh()"},
      {"x = avg(c, 3)", "x > x(1)", "eavg(x, 5)"},
      {"v + amount - oi * 2", "(h - l) * v"},
      {"DeCompress(CompressC(day), CompressD(day))"},
      {"5"},
  };
  for (const auto &formulas : kCases) {
    SCOPED_TRACE(formulas.front());
    std::vector<std::string> arguments = {"--bars", kMinutes, "--from", "1900"};
    for (const std::string &formula : formulas) arguments.insert(arguments.end(), {"--formula", formula});
    EXPECT_EQ(Rows(arguments), std::vector<std::string>{"formula," + formulas.front() + ",220,same"});
    EXPECT_EQ(result_.exitCode, 0);
  }
}

TEST_F(ReplayTest, BeginsWithAnEmptyChart) {
  EXPECT_EQ(Rows({"--bars", kDaily, "--formula", "avg(c, 20)", "--formula", "rsi(5)"}),
            std::vector<std::string>{"formula,avg(c, 20),1008,same"});
}

TEST_F(ReplayTest, ReportsTheFirstDifference) {
  const std::string bars = File(
      "bars.csv",
      "date,open,high,low,close,volume\n20240102,3,4,1,2,10\n20240103,2,6,2,5,20\n20240104,5,9,4,8,30\n");
  const struct {
    std::vector<std::string> formulas;
    const char *result;
  } kCases[] = {
      // Live, the newest bar has nothing ahead of it, and is not looked at again once there is a next one but
      // one.
      {{"c", "ref(c, -2)"}, "ref(c, -2), 2024-01-02 (bar 0): 0 live, 8 in full"},
      {{"c", "h * l * v"}, "same"},
  };
  for (const auto &test : kCases) {
    std::vector<std::string> arguments = {"--bars", bars};
    for (const std::string &formula : test.formulas)
      arguments.insert(arguments.end(), {"--formula", formula});
    EXPECT_EQ(Rows(arguments), std::vector<std::string>{std::string("formula,c,12,") + test.result});
    EXPECT_EQ(result_.exitCode, std::string(test.result) == "same" ? 0 : 1);
  }
}

TEST_F(ReplayTest, ReplaysTheTables) {
  const std::string folder = Path("tables");
  ASSERT_EQ(Run({"indicator", "install", "--index-dir", folder}).exitCode, 0);
  EXPECT_EQ(
      Rows({"--bars", kDaily, "--from", "240", "--index-dir", folder, "볼린저밴드", "--set", "Period=5"}),
      std::vector<std::string>{"indicator,볼린저밴드,48,same"});
  EXPECT_EQ(
      Rows({"--bars", kDaily, "--from", "240", "--index-dir", folder, "골든크로스", "--kind", "condition"}),
      std::vector<std::string>{"condition,골든크로스,48,same"});

  // The whole starter set: every update gives what a full calculation gives.
  const std::vector<std::string> all =
      Rows({"--bars", kMinutes, "--from", "1500", "--index-dir", folder, "--all"});
  EXPECT_GT(all.size(), 50U);
  for (const std::string &row : all) EXPECT_TRUE(row.ends_with(",1820,same")) << row;
  EXPECT_EQ(result_.exitCode, 0);
}

TEST_F(ReplayTest, AFaultyFormulaIsALineAmongTheOthers) {
  const std::string folder = Path("tables");
  const std::string text =
      File("mine.txt", "indicator good\nline 1\nformula c\nindicator bad\nline 1\nformula c +\n");
  ASSERT_EQ(Run({"indicator", "install", "--index-dir", folder, "--from", text}).exitCode, 0);
  const std::vector<std::string> rows =
      Rows({"--bars", kDaily, "--from", "250", "--index-dir", folder, "--all"});
  ASSERT_EQ(rows.size(), 2U);
  EXPECT_EQ(rows[0], "indicator,good,8,same");
  EXPECT_TRUE(rows[1].starts_with("indicator,bad,0,indicator bad, formula 1 c +: ")) << rows[1];
  EXPECT_EQ(result_.exitCode, 1);
}

TEST_F(ReplayTest, RefusesBadUse) {
  const struct {
    std::vector<std::string> arguments;
    int exitCode;
    std::string err;
  } kCases[] = {
      {{}, 2, "expected the name of an indicator, --formula or --all (see trovenu replay --help)"},
      {{"--all", "rsi"},
       2,
       "expected the name of an indicator, --formula or --all (see trovenu replay --help)"},
      {{"--formula", "c", "--set", "x=1"},
       2,
       "--set needs the name of an indicator (see trovenu replay --help)"},
      {{"--formula", "c", "--from", "-1"},
       2,
       "--from: expected a whole number from 0, found -1 (see trovenu replay --help)"},
      {{"--formula", "c", "--from", "252"}, 1, "--from: expected a bar from 0 to 251, found 252"},
      {{"--all", "--index-dir", "none"},
       1,
       "none/: no formula tables (trovenu indicator install makes them)"},
      {{"rsi", "--index-dir", "none"},
       1,
       "none/System.ind: no such table (trovenu indicator install makes it)"},
      {{"--formula", "1 2"}, 1, "formula 1 \"1 2\": 연산자가 필요합니다 (line 1, column 4)"},
  };
  for (const auto &test : kCases) {
    SCOPED_TRACE(test.err);
    std::vector<std::string> arguments = {"replay", "--bars", kDaily};
    arguments.insert(arguments.end(), test.arguments.begin(), test.arguments.end());
    const ToolResult result = Run(arguments);
    EXPECT_EQ(result.exitCode, test.exitCode);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(WithSlashes(result.err), "trovenu: " + test.err + "\n");
  }
}

}  // namespace

}  // namespace trovenu::tests
