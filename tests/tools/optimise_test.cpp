#include <algorithm>
#include <filesystem>
#include <fstream>
#include <regex>

#include "tests/tools/tool_runner.h"
#include "trovenu/platform/code_page.h"
#include "trovenu/platform/platform.h"
#include "trovenu/support/table_reader.h"
#include "trovenu/support/table_writer.h"

#ifndef TROVENU_TOOL
#define TROVENU_TOOL ""
#endif

namespace trovenu::tests {

namespace {

constexpr const char *kDaily = TROVENU_DATA_DIR "/daily.csv";
constexpr const char *kCross = "이동평균 교차";
using Words = std::vector<std::string>;

class OptimiseTest : public ToolTest {
 protected:
  std::string Done(const Words &arguments) const {
    const ToolResult result = Run(arguments);
    EXPECT_EQ(result.exitCode, 0) << result.err;
    EXPECT_EQ(result.err, "");
    return result.out;
  }
};

std::size_t Count(const std::string &text, const std::string &part) {
  std::size_t count = 0;
  for (std::size_t at = text.find(part); at != text.npos; at = text.find(part, at + 1)) ++count;
  return count;
}

// A starter system on real bars over a grid of 4 by 3, down to the pages.
TEST_F(OptimiseTest, AGridLeavesTablesAndPagesOfBackTestsOfTheSameValues) {
  const std::string report = Path("report");
  const std::string best =
      Done({"optimise", "--bars", kDaily, "--system", kCross, "--range", "Short=3:9:2", "--range",
            "Long=15:25:5", "--stop-loss", "3%", "--report", report, "--format", "csv"});
  EXPECT_EQ(Count(best, "\n"), 13u);
  Done({"report", "--runs", report});
  DDB runs((report + "/SumInfo.rpt").c_str(), "", 1);
  double last = 1e300;
  std::istringstream lines(best);
  std::string line;
  std::getline(lines, line);
  while (std::getline(lines, line)) {
    std::smatch cells;
    ASSERT_TRUE(
        std::regex_match(line, cells, std::regex(R"re((\d+),"(.*)\((\d+),(\d+)\)",([-0-9.]+),(\d+),.*)re")))
        << line;
    EXPECT_EQ(cells[2], kCross);
    const double profit = std::stod(cells[5]);
    EXPECT_LE(profit, last);
    last = profit;
    const int number = std::stoi(cells[1]);
    EXPECT_EQ(std::stoi(cells[3]), 3 + 2 * (number % 4));
    EXPECT_EQ(std::stoi(cells[4]), 15 + 5 * (number / 4));

    const std::string single = Path("single");
    Done({"backtest", "--bars", kDaily, "--system", kCross, "--set", "Short=" + cells[3].str(), "--set",
          "Long=" + cells[4].str(), "--stop-loss", "3%", "--report", single});
    DB expected((single + "/SumInfo.rpt").c_str());
    const std::string summary = report + kPathSeparator + "Summary" + cells[1].str() + ".rpt";
    ASSERT_NE(runs.FindFirst("SumFileName", summary.c_str()), 0);
    for (const char *field : {"IndicatorName", "TotalProfit", "TransactionCount", "WinLossRatio", "WinRatio",
                              "ProfitFactor", "AverageProfit", "InMarketRatio", "Status", "Term"}) {
      EXPECT_EQ(runs.GetStr(field), expected.GetStr(field)) << field;
    }
    for (const char *name : {"Summary", "TradeList"}) {
      const std::string of = "/" + std::string(name);
      EXPECT_EQ(Content("report" + of + cells[1].str() + ".rpt"), Content("single" + of + "0.rpt"));
      for (const char *page : {".html", "-print.html"}) {
        EXPECT_EQ(Content("report" + of + cells[1].str() + page), Content("single" + of + "0" + page));
      }
    }
    const std::string page =
        Utf8FromCodePage(Content("report/TradeList" + cells[1].str() + ".html"), nullptr);
    EXPECT_EQ(Count(page, "매수진입") + Count(page, "매도진입"), std::stoul(cells[6]));
  }
}

TEST_F(OptimiseTest, SystemsAndCompressionsNeedNoTables) {
  const std::string systems = Done({"optimise", "--bars", kDaily, "--systems", "채널 돌파, 이동평균 교차"});
  EXPECT_NE(systems.find("채널 돌파(20,10)"), systems.npos) << systems;
  EXPECT_NE(systems.find("이동평균 교차(5,20)"), systems.npos) << systems;
  const std::string bars = Done({"optimise", "--bars", kDaily, "--long-entry", "crossup(c,avg(c,n))",
                                 "--long-exit", "crossdown(c,avg(c,n))", "--set", "n=5", "--compress",
                                 "1:5:2", "--sort", "trades", "--format", "csv"});
  EXPECT_TRUE(
      std::regex_search(bars, std::regex("\n0,rules\\(5\\),1,.*\n1,rules\\(5\\),3,.*\n2,rules\\(5\\),5,")))
      << bars;
  EXPECT_EQ(Files(), Words{});
}

TEST_F(OptimiseTest, WhatIsWrongIsNamed) {
  std::filesystem::create_directory(Path("kept"));
  File("kept/notes.txt", "x");
  const Words rules = {"optimise", "--bars", kDaily, "--long-entry", "c > avg(c,n)"};
  const struct {
    Words options;
    int exitCode;
    const char *err;
  } cases[] = {
      {{}, 2, "expected one of --range, --systems and --compress"},
      {{"--range", "n=1:2:1", "--compress", "1:2:1"}, 2, "expected one of"},
      {{"--range", "n=1:2:1", "--range", "n=3:4:1"}, 2, "--range: a second range of \"n\""},
      {{"--systems", "이동평균 교차,"}, 2, "--systems: expected names with commas between them"},
      {{"--range", "n=1:2"}, 2, "--range: expected VAR=START:END:STEP in numbers, found \"n=1:2\""},
      {{"--range", "n=1:2:x"}, 2, "--range: expected VAR=START:END:STEP"},
      {{"--range", "n=1:1e9:1", "--range", "m=1:10:1"}, 1, "more than 2147483646 runs"},
      {{"--range", "m=1:2:1"}, 1, "formula 1 \"c > avg(c,n)\""},
      {{"--range", "n=1:2:1", "--set", "m=c"}, 1, "variable \"m\": expected a number"},
      {{"--set", "n=3", "--compress", "0:2:1"}, 2, "--compress: expected 1 bar or more"},
      {{"--range", "n=1:2:1", "--report", Path("kept")}, 1, "but it holds \"notes.txt\""},
      {{"--range", "n=1:2:1", "--report", Path("none/report")}, 1, "no folder to make it in"},
      {{"--range", "n=1:2:1", "--report", Path(std::string(200, 'x'))},
       1,
       "expected a folder of at most 176 bytes"},
  };
  for (const auto &c : cases) {
    Words arguments = rules;
    arguments.insert(arguments.end(), c.options.begin(), c.options.end());
    const ToolResult result = Run(arguments);
    EXPECT_EQ(result.exitCode, c.exitCode) << result.err;
    EXPECT_NE(result.err.find(c.err), std::string::npos) << result.err;
    EXPECT_EQ(std::count(result.err.begin(), result.err.end(), '\n'), 1) << result.err;
  }
  EXPECT_EQ(Content("kept/notes.txt"), "x");
  EXPECT_EQ(Run({"report", "--runs", Path("kept")}).exitCode, 1);
}

// The search ends after the run at hand, and what it has found is printed and kept.
TEST_F(OptimiseTest, AnInterruptStopsCleanly) {
  if (!HasShell()) GTEST_SKIP() << "needs signals of POSIX";
  const ToolResult result = RunShell("timeout --signal=INT 2 '" TROVENU_TOOL
                                     "' optimise --bars data/daily.csv --long-entry 'crossup(c,avg(c,n))' "
                                     "--range n=2:100000:0.01 --top 1 --report '" +
                                     Path("report") + "' </dev/null; echo ended $?");
  ASSERT_NE(result.out.find("trovenu: stopped after"), result.out.npos) << result.out;
  const std::size_t runs = std::stoul(result.out.substr(result.out.find("stopped after") + 14));
  DB table(Path("report/SumInfo.rpt").c_str());
  EXPECT_EQ(static_cast<std::size_t>(table.RecordCount), runs);
  EXPECT_NE(result.out.find("  ("), result.out.npos) << result.out;
}

// Lists of trades grow from run to run until one is larger than files may be.
TEST_F(OptimiseTest, TheFirstRunWithoutTablesIsNamed) {
  if (!HasShell()) GTEST_SKIP() << "needs limits of POSIX";
  const ToolResult result = RunShell(
      "trap '' XFSZ; ulimit -f 60; trovenu optimise --bars data/daily.csv --long-entry 'crossup(c,avg(c,n))' "
      "--long-exit 'crossdown(c,avg(c,n))' --range n=20:2:-1 --report '" +
      Path("report") + "' </dev/null");
  std::smatch number;
  ASSERT_TRUE(
      std::regex_search(result.out, number, std::regex("^trovenu: .*: the tables of run (\\d+) can't")))
      << result.out;
  EXPECT_EQ(std::count(result.out.begin(), result.out.end(), '\n'), 1);
  const int first = std::stoi(number[1]);
  EXPECT_GT(first, 0);
  DB runs(Path("report/SumInfo.rpt").c_str());
  for (int run = 0; run <= first; ++run, runs.MoveNext()) {
    const int trades = DB(runs.GetStr("TradeListFileName").c_str()).RecordCount;
    EXPECT_EQ(std::to_string(trades) == runs.GetStr("TransactionCount").c_str(), run < first) << run;
  }
}

}  // namespace

}  // namespace trovenu::tests
