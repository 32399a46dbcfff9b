#include <gtest/gtest.h>

#include <limits>
#include <sstream>
#include <string>
#include <vector>

#include "tests/backtest/small_market.h"

namespace trovenu::tests {
namespace {

// A trade: side; date, price and cost of the entry and of the exit; quantity; profit, its ratio, both
// running; excursions; efficiencies; bars.
std::string Row(const SSimulation &test, int trade) {
  std::ostringstream row;
  for (const SVector &column : test.History) row << (&column != test.History ? " " : "") << column[trade];
  return row.str();
}

std::vector<double> Values(const SVector &series) {
  std::vector<double> values;
  for (int i = 0; i < series.GetSize(); ++i) values.push_back(series[i]);
  return values;
}

// Entry at bar 1 at 100; bars 2 and 3 span 90 to 116, since the entry bar's own prices do not count; exit at
// bar 3 at 110.
const std::vector<Bar> kBars = {{98, 99, 97, 98},    {99, 130, 80, 100},   {100, 116, 96, 104},
                                {104, 112, 90, 110}, {110, 110, 105, 106}, {106, 109, 101, 104}};

TEST(History, ALongTrade) {
  SmallMarket market(kBars);
  market.Fire(kLongEntry, {1});
  market.Fire(kLongExit, {3});
  market.test.Setting.TradeVolume = 2;
  market.test.Setting.ModeEntryCommission = 1;
  market.test.Setting.EntryCommission = 1;  // 1 of money is half a point.
  market.test.BigPointValue = 2;
  market.Run();
  // Profit (110 - 100.5) * 2 of 201. Efficiencies of 26 points: 16, 20 and 10.
  EXPECT_EQ(Row(market.test, 0),
            "0 2 100 100.5 4 110 110 2 19 1.09453 19 1.09453 16 -10 61.5385 76.9231 38.4615 2");
}

TEST(History, AShortTrade) {
  SmallMarket market(kBars);
  market.Fire(kShortEntry, {1});
  market.Fire(kShortExit, {3});
  market.Run();
  EXPECT_EQ(Row(market.test, 0), "1 2 100 100 4 110 110 1 -10 0.9 -10 0.9 10 -16 38.4615 23.0769 -38.4615 2");
}

// Required: the end of the data closes a trade at the last close, without costs and without a date.
TEST(History, TheEndOfTheDataClosesATradeWithoutCosts) {
  for (const int pointUnit : {1, 0}) {
    SmallMarket market(kBars);
    market.Fire(kLongEntry, {3});
    market.test.Setting.ExitCommission = 0.5;
    market.test.BlPointUnit = pointUnit;
    market.test.BigPointValue = 10;
    EXPECT_EQ(market.RunTrades(), "L3-end@104");
    EXPECT_EQ(market.test.History[kTradeExitDate][0], 0.0);
    EXPECT_EQ(market.test.History[kTradeExitCost][0], pointUnit != 0 ? 104 : 1040);
    EXPECT_EQ(market.test.History[kTradeBarsHeld][0], 2.0);
    EXPECT_EQ(market.test.History[kTradeDrawdown][0], -9.0);
  }
}

TEST(History, AnEntryOnTheLastBarHoldsCostsAlone) {
  SmallMarket market(kBars);
  market.Fire(kLongEntry, {5});
  market.test.Setting.Slippage = 0.25;
  EXPECT_EQ(market.RunTrades(), "L5-end@104");
  EXPECT_EQ(market.test.History[kTradeBarsHeld][0], 0.0);
  EXPECT_EQ(market.test.History[kTradeProfitLoss][0], 78 - 130);
}

// The exit rule ends at bar 2: the second trade stands as it was begun.
TEST(History, AnExitSeriesThatEndsEarlyEndsItsTrades) {
  SmallMarket market(kBars);
  market.Fire(kLongEntry, {0, 4});
  SVector exits(3);
  exits[1] = 100.0;
  market.test.Index.ExpData[kLongExit] = exits;
  market.test.SetHistory();
  EXPECT_EQ(market.Trades(), "L0-1@100 L4-end@106");
  EXPECT_EQ(market.test.History[kTradeBarsHeld][1], 0.0);
}

TEST(History, BothSidesInOneTableByEntryDate) {
  SmallMarket market(kBars);
  market.Fire(kLongEntry, {1, 3, 4});  // The one at bar 3 stands on the exit of the first.
  market.Fire(kLongExit, {3});
  market.Fire(kShortEntry, {0, 4});
  market.Fire(kShortExit, {2, 5});
  EXPECT_EQ(market.RunTrades(), "S0-2@104 L1-3@110 L4-end@104 S4-5@104");
  const char *const bySide[] = {"L1-3@110 L4-end@104", "S0-2@104 S4-5@104",
                                "S0-2@104 L1-3@110 L4-end@104 S4-5@104", "L1-3@110 L4-end@104"};
  for (int position = 0; position < 4; ++position) {
    market.test.Setting.Position = position;
    EXPECT_EQ(market.RunTrades(), bySide[position]) << position;
  }
}

// A long trade from 100 to 110 and a short one from 110 to 106, three of each.
TEST(History, RunningColumns) {
  struct Case {
    const char *name;
    int blMargin;
    double margin;
    int modeVolume;
    std::vector<double> profits;
    std::vector<double> factors;
  };
  for (const Case &row : {
           Case{"compounding", 0, 1, 0, {30, 42}, {1.1, 1.1 * (1 + 12.0 / 330)}},
           Case{"a margin sums", 1, 120, 0, {30, 42}, {1.25, 1.35}},
           Case{"a margin of 0 returns nothing", 1, 0, 0, {30, 42}, {1, 1}},
           Case{"volume mode 1 in percent", 1, 40, 1, {125, 135}, {1.25, 1.35}},
           Case{"volume mode 2", 1, 40, 2, {10, 14}, {1.25, 1.35}},
       }) {
    SmallMarket market(kBars);
    market.Fire(kLongEntry, {1});
    market.Fire(kLongExit, {3});
    market.Fire(kShortEntry, {3});
    market.Fire(kShortExit, {4});
    market.test.Setting.TradeVolume = 3;
    market.test.Setting.ModeVolume = row.modeVolume;
    market.test.BlMargin = row.blMargin;
    market.test.Margin = row.margin;
    market.Run();
    for (std::size_t k = 0; k < 2; ++k) {
      const int trade = static_cast<int>(k);
      EXPECT_DOUBLE_EQ(market.test.History[kTradeCumProfitLoss][trade], row.profits[k]) << row.name;
      EXPECT_DOUBLE_EQ(market.test.History[kTradeCumProfitLossRatio][trade], row.factors[k]) << row.name;
    }
  }
}

TEST(History, ASecondCallDoublesTheTable) {
  SmallMarket market(kBars);
  market.Fire(kLongEntry, {1});
  market.Fire(kLongExit, {3});
  market.Run();
  market.test.SetHistory();
  EXPECT_EQ(market.Trades(), "L1-3@110 L1-3@110");
  for (const SVector &column : market.test.History) EXPECT_EQ(column.GetSize(), 2);
  EXPECT_EQ(market.test.History[kTradeCumProfitLoss][1], 20.0);
  market.test.SetHistoryToZero();
  EXPECT_EQ(market.Trades(), "");
}

TEST(History, InterchangeSwapsAllColumns) {
  SSimulation test;
  for (int column = 0; column < kTradeColumns; ++column) {
    for (const double row : {1.0, 2.0}) test.History[column].Add(column * 10 + row);
  }
  const std::string first = Row(test, 0);
  const std::string second = Row(test, 1);
  test.Interchange(0, 1);
  EXPECT_EQ(Row(test, 0), second);
  EXPECT_EQ(Row(test, 1), first);
  for (const int absent : {-1, 2, std::numeric_limits<int>::max()}) test.Interchange(0, absent);
  EXPECT_EQ(Row(test, 0), second);
}

TEST(History, ResultsWithoutTheNumberOfTheStop) {
  SSimulation test;
  test.Index.ExpData[kShortExit] = SVector(2);
  test.Index.ExpData[kShortExit][1] = 300000012.5;
  EXPECT_EQ(test.GetResult(kShortExit, 1), 12.5);
  test.Index.ExpData[kLongExit] = SVector(7.0);
  EXPECT_EQ(test.GetResult(kLongExit, 1), 0.0);  // The constant of a rule is its bar 0 alone.
  EXPECT_EQ(test.GetResult(-1, 0) + test.GetResult(5, 0) + test.GetResult(kShortExit, 2), 0.0);
}

TEST(Compression, GroupsOfBars) {
  SmallMarket market({{1, 5, 1, 2}, {2, 9, 2, 3}, {3, 4, 0, 4}, {4, 6, 4, 5}, {5, 6, 3, 6}});
  market.volume[3] = 1;
  market.test.SetVariable(market.close, market.open, market.high, market.low, market.volume, market.date,
                          market.openInterest, market.amount);
  // A second compression starts from the source again.
  for (const int n : {100, 3}) market.test.CompressData(n);
  using Column = std::vector<double>;
  EXPECT_EQ(Values(*market.test.Open), (Column{1, 4}));
  EXPECT_EQ(Values(*market.test.High), (Column{9, 6}));
  EXPECT_EQ(Values(*market.test.Low), (Column{0, 3}));
  EXPECT_EQ(Values(*market.test.Close), (Column{4, 6}));
  EXPECT_EQ(Values(*market.test.Volume), (Column{30, 11}));
  EXPECT_EQ(Values(*market.test.Date), (Column{1, 4}));  // Required: the date of the first bar.
  EXPECT_EQ(market.test.Amount->GetSize(), 5);
  EXPECT_EQ(market.test.SourceClose->GetSize(), 5);
  for (const int n : {0, -1}) market.test.CompressData(n);
  EXPECT_EQ(market.test.Close->GetSize(), 2);
  market.test.CompressData(1);
  EXPECT_EQ(Values(*market.test.Close), Values(market.close));
  // The host's own series, working and source in one.
  market.test.SetVariablePointer(&market.close, &market.open, &market.high, &market.low, &market.volume,
                                 &market.date, &market.openInterest, &market.amount);
  market.test.CompressData(2);
  EXPECT_EQ(Values(market.high), (Column{9, 6, 6}));
  EXPECT_EQ(Values(market.close), (Column{3, 5, 6}));
  SSimulation().CompressData(2);
}

}  // namespace
}  // namespace trovenu::tests
