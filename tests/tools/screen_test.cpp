#include "tests/tools/tool_runner.h"

namespace trovenu::tests {

namespace {

class ScreenTest : public ToolTest {
 protected:
  // Three sound symbols, a short one and a faulty one.
  std::string Symbols() const {
    File("a_up.csv", "date,close\n2024-01-02,10\n2024-01-03,11\n2024-01-04,12\n2024-01-05,13\n");
    File("b_down.csv", "date,close\n2024-01-02,13\n2024-01-03,12\n2024-01-04,11\n2024-01-05,10\n");
    File("c_late.csv", "date,close\n2024-01-02,10\n2024-01-03,9\n2024-01-04,11\n2024-01-05,10\n");
    File("d_short.csv", "date,close\n2024-01-04,1\n2024-01-05,2\n");
    File("e_bad.csv", "date,close\n2024-01-04,1\n2024-01-05,x\n");
    File("notes.txt", "no bars");
    return Path("?_*.csv");
  }
  ToolResult Screen(std::vector<std::string> arguments) const {
    arguments.insert(arguments.begin(), {"screen", "--format", "csv", "--bars", Symbols()});
    return Run(arguments);
  }
};

TEST_F(ScreenTest, FindsTheSymbolsOnWhichAConditionIsTrue) {
  const struct {
    std::vector<std::string> arguments;
    const char *rows;
    const char *summary;
  } kCases[] = {
      {{"c>avg(c,3)"},
       "a_up,2024-01-05,13\n",
       "5 symbols: 1 found, 1 skipped with fewer than 3 bars, 1 faulty"},
      {{"c>avg(c,3)", "--within", "2"},
       "a_up,2024-01-05,13\nc_late,2024-01-04,11\n",
       "5 symbols: 2 found, 1 skipped with fewer than 3 bars, 1 faulty"},
      // A sign at the start: the direct path.
      {{"--formula=-c>-11"},
       "b_down,2024-01-05,10\nc_late,2024-01-05,10\nd_short,2024-01-05,2\n",
       "5 symbols: 3 found, 1 faulty"},
      // No bar is valid without data, yet nothing is skipped.
      {{"valuewhen(1,c>c(1),c)==2"}, "d_short,2024-01-05,2\n", "5 symbols: 1 found, 1 faulty"},
      {{"c>1000"}, "", "5 symbols: 0 found, 1 faulty"},
  };
  for (const auto &[arguments, rows, summary] : kCases) {
    std::string alone;
    for (const char *jobs : {"1", "3"}) {
      std::vector<std::string> all = arguments;
      all.insert(all.end(), {"--jobs", jobs});
      const ToolResult result = Screen(all);
      EXPECT_EQ(result.out, std::string("symbol,date,close\n") + rows) << arguments[0];
      EXPECT_NE(result.err.find(std::string(summary) + "\n"), std::string::npos) << result.err;
      EXPECT_NE(result.err.find("e_bad.csv:3: column close: expected a number, found \"x\"\n"),
                std::string::npos)
          << result.err;
      EXPECT_EQ(result.err.find("direct path") != std::string::npos, arguments[0].starts_with("--formula=-"))
          << result.err;
      EXPECT_EQ(result.err.find('\r'), std::string::npos) << "no progress bar in a file";
      EXPECT_EQ(result.exitCode, 1);
    }
  }
}

TEST_F(ScreenTest, RunsAConditionOfTheTables) {
  const std::string folder = Path("Index");
  ASSERT_EQ(Run({"indicator", "install", "--index-dir", folder}).exitCode, 0);
  const ToolResult list =
      Run({"indicator", "list", "--kind", "condition", "--index-dir", folder, "--format", "csv"});
  const std::size_t line = list.out.find('\n') + 1;
  std::string row = list.out.substr(line, list.out.find('\n', line) - line);
  std::string name;
  std::size_t begin = row.find(',') + 1;
  name = row.substr(begin, row.find(',', begin) - begin);
  const ToolResult result = Run({"screen", "--condition", name, "--index-dir", folder, "--bars",
                                 std::string(TROVENU_DATA_DIR) + "/d*.csv", "--within", "252"});
  EXPECT_EQ(result.exitCode, 0) << name << ": " << result.err;
  EXPECT_NE(result.err.find("1 symbol: "), std::string::npos) << result.err;
}

TEST_F(ScreenTest, RefusesWhatItCantRun) {
  const struct {
    std::vector<std::string> arguments;
    int exitCode;
    const char *message;
  } kCases[] = {
      {{"c+", "--bars", Symbols()}, 1, "trovenu: formula 1 \"c+\": "},
      {{"", "--bars", Symbols()}, 1, "the condition has no formula"},
      {{"c", "--bars", Path("*.bars")}, 1, "no such files"},
      {{"v>1", "--bars", Path("a*")},
       1,
       "a_up.csv:1: expected a column volume (거래량), which the formula \"v>1\" reads"},
      {{"--bars", Symbols()}, 2, "Exactly 1 option from [--formula,--condition]"},
      {{"c", "--condition", "x", "--bars", Symbols()}, 2, "Exactly 1 option from [--formula,--condition]"},
      {{"c", "--bars", Symbols(), "--within", "0"}, 2, "--within"},
  };
  for (const auto &[arguments, exitCode, message] : kCases) {
    std::vector<std::string> all = arguments;
    all.insert(all.begin(), "screen");
    const ToolResult result = Run(all);
    EXPECT_EQ(result.exitCode, exitCode) << result.err;
    EXPECT_NE(result.err.find(message), std::string::npos) << result.err;
  }
}

TEST_F(ScreenTest, CompilePrintsTheProgram) {
  const ToolResult carried = Run({"compile", "--format", "csv", "x = c(2); avg(x, 5) > -0.5"});
  EXPECT_EQ(carried.out,
            "program,step,code,item,arguments,value\n"
            "formula,1,0,x,,\n"
            "formula,2,0,c,,\n"
            "formula,3,1,NUMBER,,2\n"
            "formula,4,46,PREV,1,\n"
            "formula,5,24,OPASSIGN,,\n"
            "formula,6,0,x,,\n"
            "formula,7,1,NUMBER,,5\n"
            "formula,8,48,avg,2,\n"
            "formula,9,1,NUMBER,,0.5\n"
            "formula,10,9,UMINUS,,\n"
            "formula,11,18,OPGT,,\n");
  EXPECT_EQ(carried.err, "");
  const ToolResult dropped = Run({"compile", "--format", "csv", "rsi(14)"});
  EXPECT_EQ(dropped.out, "program,step,code,item,arguments,value\nformula,1,1,NUMBER,,14\n");
  EXPECT_EQ(dropped.err, "not carried: rsi has no code in a program\n");
}

}  // namespace

}  // namespace trovenu::tests
