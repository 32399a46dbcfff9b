#include <algorithm>
#include <map>
#include <sstream>

#include "tests/tools/tool_runner.h"

namespace trovenu::tests {

namespace {

constexpr const char *kDaily = TROVENU_DATA_DIR "/daily.csv";
constexpr const char *kMinutes = TROVENU_DATA_DIR "/minutes.csv";
constexpr const char *kEightBars = TROVENU_DATA_DIR "/eight_bars.csv";

using Words = std::vector<std::string>;
using Row = std::map<std::string, std::string>;

class BacktestTest : public ToolTest {
 protected:
  ToolResult Backtest(Words arguments, const Words &more, std::string_view input = "") const {
    arguments.insert(arguments.begin(), "backtest");
    arguments.insert(arguments.end(), more.begin(), more.end());
    return Run(arguments, input);
  }

  std::string Done(const Words &arguments, const Words &more = {}) const {
    const ToolResult result = Backtest(arguments, more);
    EXPECT_EQ(result.exitCode, 0) << result.err;
    EXPECT_EQ(result.err, "");
    return result.out;
  }

  // The rows of a csv text, by heading. No cell of a back-test has a comma.
  static std::vector<Row> RowsOf(const std::string &csv) {
    std::istringstream lines(csv);
    Words headings;
    std::vector<Row> rows;
    for (std::string line; std::getline(lines, line);) {
      std::istringstream cells(line + ",");
      Row row;
      std::size_t i = 0;
      for (std::string cell; std::getline(cells, cell, ','); ++i) {
        if (i == headings.size() && rows.empty()) headings.push_back(cell);
        row[headings.at(i)] = cell;
      }
      rows.push_back(row);
    }
    if (!rows.empty()) rows.erase(rows.begin());
    return rows;
  }

  std::vector<Row> Trades(const Words &arguments) const {
    return RowsOf(Done(arguments, {"--trades", "--format", "csv"}));
  }

  std::map<std::string, Row> Figures(const Words &arguments) const {
    std::map<std::string, Row> figures;
    for (const Row &row : RowsOf(Done(arguments, {"--format", "csv"}))) figures[row.at("figure")] = row;
    return figures;
  }
};

TEST_F(BacktestTest, FiguresAreThoseOfTheTradeList) {
  const Words run = {"--bars",   kDaily,     "--system", "이동평균 교차", "--stop-loss", "3%",     "--trail",
                     "6%",       "--target", "8",        "--set",         "Short=3",     "--tick", "0.01",
                     "--margin", "200"};
  // All trades, long and short ones.
  struct Own {
    double trades = 0, wins = 0, profit = 0, loss = 0, lossBars = 0;
  } groups[3];
  double sum = 0;
  for (Row &row : Trades(run)) {
    const auto number = [&row](const char *heading) { return std::stod(row.at(heading)); };
    const double gain = (number("exit cost") - number("cost")) * (row["side"] == "long" ? 1 : -1);
    EXPECT_NEAR(number("profit"), gain, 1e-9);
    EXPECT_NEAR(number("total"), sum += gain, 1e-9);
    EXPECT_NEAR(number("total %"), sum / 2, 1e-9);
    for (const int group : {0, row["side"] == "long" ? 1 : 2}) {
      Own &own = groups[group];
      own.trades += 1;
      own.wins += gain >= 0;
      (gain >= 0 ? own.profit : own.loss) += gain;
      own.lossBars += gain >= 0 ? 0 : number("bars");
    }
  }
  std::map<std::string, Row> figures = Figures(run);
  EXPECT_EQ(figures.size(), 25U);
  const char *const kGroups[] = {"전체 거래", "매수 거래", "매도 거래"};
  for (int i = 0; i < 3; ++i) {
    const Own &own = groups[i];
    const double losses = own.trades - own.wins;
    ASSERT_GT(std::min(own.wins, losses), 1);
    const std::pair<const char *, double> kExpected[] = {
        {"총손익", own.profit + own.loss}, {"Profit Factor", -own.profit / own.loss},
        {"총거래횟수", own.trades},        {"승률", own.wins / own.trades},
        {"손실 거래수", losses},           {"평균 수익", own.profit / own.wins},
        {"평균 손실", own.loss / losses},
    };
    for (const auto &[figure, value] : kExpected) {
      EXPECT_NEAR(std::stod(figures[figure][kGroups[i]]), value, 0.00501) << figure << ", " << kGroups[i];
    }
    EXPECT_NEAR(std::stod(figures["손실 거래 평균 봉 갯수"][kGroups[i]]), own.lossBars / losses, 0.0501);
  }
}

// Long from 100 on 2024-01-02, short from 107 on 2024-01-04, left at 98 on 2024-01-11 unless a stop is hit.
TEST_F(BacktestTest, OptionsOfTheStops) {
  const char *const kLong = "long 100  98 end of data\n";
  const char *const kShort = "short 107  98 end of data\n";
  const struct {
    Words options;
    std::string trades;
  } kCases[] = {
      {{}, std::string(kLong) + kShort},
      {{"--side", "long"}, kLong},
      {{"--side", "short"}, kShort},
      // A level of 97, beyond which a bar opens.
      {{"--stop-loss", "3%"}, std::string("long 100 2024-01-08 96 stop-loss\n") + kShort},
      {{"--stop-loss", "0.7", "--tick", "0.25"},
       std::string("long 100 2024-01-03 99.25 stop-loss\n") + kShort},
      // Levels of 105 and, rounded down, 101.5.
      {{"--target", "5%", "--tick", "0.25"},
       "long 100 2024-01-04 105 target\nshort 107 2024-01-05 101.5 target\n"},
      // Below 108 by 3.24, above 94 by 2.82; both rounded away from the price.
      {{"--trail", "3%", "--tick", "0.25"},
       "long 100 2024-01-05 104.75 trail\nshort 107 2024-01-11 97 trail\n"},
      // Armed by 108, of whose 8 points 4.8 stay. Required: a short trade keeps no share, but leaves at once.
      {{"--trail-profit", "40%,5%", "--tick", "0.25"},
       "long 100 2024-01-05 104.75 trail-profit\nshort 107 2024-01-08 96 trail-profit\n"},
      {{"--trail-profit", "3,8"},
       "long 100 2024-01-05 105 trail-profit\nshort 107 2024-01-11 97 trail-profit\n"},
      // 2024-01-09 and 10 lie between 95 and 96.
      {{"--quiet-exit", "2%,2"}, "long 100 2024-01-10 96 quiet-exit\nshort 107 2024-01-10 96 quiet-exit\n"},
  };
  for (const auto &c : kCases) {
    Words run = {"--bars", kEightBars, "--long-entry", "c == 100", "--short-entry", "c == 107"};
    run.insert(run.end(), c.options.begin(), c.options.end());
    std::string trades;
    for (Row &row : Trades(run)) {
      for (const char *heading : {"side", "price", "exit", "exit price"}) trades += row[heading] + " ";
      trades += row["by"] + "\n";
    }
    EXPECT_EQ(trades, c.trades) << testing::PrintToString(c.options);
  }
}

TEST_F(BacktestTest, NoPositionOutlivesTheDaysEnd) {
  const std::vector<Row> trades =
      Trades({"--bars", kMinutes, "--long-entry", "crossup(c, avg(c,20))", "--day-end", "14:45"});
  EXPECT_EQ(trades.size(), 5U);
  for (Row row : trades) {
    EXPECT_LT(row["entry"].substr(11), "14:45");
    EXPECT_EQ(row["exit"], row["entry"].substr(0, 11) + "14:45");
    EXPECT_EQ(row["by"], "day-end");
  }
}

TEST_F(BacktestTest, EquityEndsWithTheProfitsOfTheSidesThatAreTraded) {
  for (const char *side : {"long", "short", "both"}) {
    const Words run = {"--bars", kDaily,         "--system", "과매수 과매도",   "--trail",
                       "4%",     "--commission", "0",        "--slippage",      "0",
                       "--side", side,           "--equity", Path("equity.csv")};
    std::map<std::string, double> sums;
    for (Row &row : Trades(run)) {
      for (const std::string &curve : {row["side"], std::string("all")})
        sums[curve] += std::stod(row["profit"]);
    }
    std::vector<Row> equity = RowsOf(Content("equity.csv"));
    ASSERT_EQ(equity.size(), 252U);
    for (const char *curve : {"long", "short", "all"}) {
      EXPECT_NEAR(std::stod(equity.back()[curve]), sums[curve], 1e-9) << side;
    }
    double peak = 0;
    double drawdown = 0;
    for (Row &row : equity) {
      peak = std::max(peak, std::stod(row["all"]));
      drawdown = std::max(drawdown, peak - std::stod(row["all"]));
    }
    EXPECT_NEAR(std::stod(Figures(run)["최대 손실폭"]["전체 거래"]), -drawdown, 0.00501) << side;
  }
}

TEST_F(BacktestTest, OptionsGoBeforeTheSettingsFile) {
  const std::string settings =
      "[SimulationConfigure]\nPosition=0\nStopLossType=0\nTradeVolume=3\nEntryCommission=1\n"
      "ModeEntryCommission=1\nBlMoneyManagementStop=1\nMoneyManagementStop=0.03\n";
  Words run = {"--bars",        kEightBars,
               "--long-entry",  "c == 100",
               "--short-entry", "c == 107",
               "--slippage",    "0",
               "--config",      File("settings.ini", settings)};
  // The stop looks at closes and fills there; three contracts that cost a point each.
  std::vector<Row> trades = Trades(run);
  ASSERT_EQ(trades.size(), 1U);
  EXPECT_EQ(trades[0]["exit price"] + " " + trades[0]["quantity"] + " " + trades[0]["cost"], "95 3 101");
  run.insert(run.end(), {"--stop-loss", "6%", "--side", "both", "--commission", "0.5,0%"});
  trades = Trades(run);
  ASSERT_EQ(trades.size(), 2U);
  EXPECT_EQ(trades[0]["exit"] + trades[0]["profit"] + " " + trades[1]["profit"], "-7.5 25.5");
  EXPECT_EQ(Content("settings.ini"), settings);
}

TEST_F(BacktestTest, FormsOfTheSummary) {
  const Words run = {"--bars", kEightBars, "--long-entry", "c == 100", "--side", "long"};
  const std::string table = Done(run);
  for (const char *line : {"long entry  c == 100\nlong exit   0\n", "\nstatus      매수\n",
                           "\nsection    figure                  전체 거래  매수 거래\n",
                           "\n거래 횟수  총거래횟수                      1          1\n"}) {
    EXPECT_NE(table.find(line), std::string::npos) << table;
  }
  const std::string json = Done(run, {"--format", "json"});
  EXPECT_TRUE(json.starts_with("{\"long entry\":\"c == 100\",\"long exit\":\"0\",")) << json;
  EXPECT_NE(json.find("\"figure\":\"평균 수익\",\"전체 거래\":null,"), std::string::npos) << json;
  EXPECT_TRUE(json.ends_with("]\n}\n")) << json;
  EXPECT_EQ(Files(), Words{});
}

TEST_F(BacktestTest, WhatIsWrongIsNamed) {
  const struct {
    Words options;
    int exitCode;
    const char *err;
  } kCases[] = {
      {{}, 2, "expected either --system or rules (--long-entry and its fellows)"},
      {{"--system", "채널 돌파", "--long-exit", "1"}, 2, "expected either --system or rules"},
      {{"--long-entry", "c", "--set", "n="}, 1, "--set n"},
      {{"--long-entry", "c", "--stop-loss", "2x"},
       2,
       "--stop-loss: expected an amount such as 2% or 1.5, found \"2x\""},
      {{"--long-entry", "c", "--stop-loss", ""}, 2, "--stop-loss: expected a value"},
      {{"--long-entry", "c", "--target", "-1"}, 2, "--target: expected an amount"},
      {{"--long-entry", "c", "--trail-profit", "60%,"}, 2, "--trail-profit: expected an amount"},
      {{"--long-entry", "c", "--quiet-exit", "2%,0.5"}, 2, "--quiet-exit: expected a number of bars"},
      {{"--long-entry", "c", "--day-end", "25:00"}, 2, "--day-end: expected a time such as 15:15"},
      {{"--long-entry", "c", "--tick", "nan"}, 2, "--tick: expected a number above 0, found nan"},
      {{"--long-entry", "c", "--short-exit", "avg(c,"}, 1, "formula 4 \"avg(c,\": "},
      {{"--long-entry", "c", "--config", "none.ini"}, 1, "none.ini: can't be read"},
      {{"--long-entry", "c", "--config", kEightBars},
       1,
       "expected settings in a section SimulationConfigure"},
      {{"--long-entry", "c", "--equity", "a.csv", "--out", "a.csv"},
       2,
       "--equity: names the same file as --out"},
      {{"--long-entry", "c", "--equity", "none/equity.csv"}, 1, "none/equity.csv"},
      {{"--system", "없음"}, 1, "no system \"없음\" in the starter set, which has 이동평균 교차, "},
      {{"--system", "채널 돌파", "--set", "n=1"},
       1,
       "system \"채널 돌파\": no variable \"n\"; it has Entry, Exit"},
  };
  for (const auto &c : kCases) {
    const ToolResult result = Backtest({"--bars", kEightBars}, c.options);
    EXPECT_EQ(result.exitCode, c.exitCode) << result.err;
    EXPECT_EQ(result.out, "");
    EXPECT_NE(result.err.find(c.err), std::string::npos) << result.err;
    EXPECT_EQ(std::count(result.err.begin(), result.err.end(), '\n'), 1) << result.err;
  }
  const Words fromInput = {"--bars", "-", "--long-entry", "c > 0"};
  EXPECT_EQ(Backtest(fromInput, {}, "date,close\n20240102,1\n").err,
            "trovenu: standard input:1: expected a column open (시가), which a back-test reads\n");
  for (const char *price : {"-1", "100000000"}) {
    const std::string bars =
        "date,open,high,low,close\n20240102,1,1,1,1\n20240103,1,1,1," + std::string(price);
    const ToolResult result = Backtest(fromInput, {}, bars);
    EXPECT_EQ(result.exitCode, 0) << result.err;
    EXPECT_NE(result.err.find("warning: standard input: prices outside 0 to 100,000,000"), std::string::npos);
    EXPECT_NE(result.out, "");
  }
}

}  // namespace

}  // namespace trovenu::tests
