#include <gtest/gtest.h>

#include <cmath>
#include <numeric>
#include <random>

#include "tests/backtest/both_sides.h"
#include "trovenu/support/number_text.h"

namespace trovenu::tests {

namespace {

TEST(Costs, OfAFillByHand) {
  struct Cost {
    double value;
    int mode;
  };
  const struct {
    Cost entry, exit, slippage;
    double pointValue;
    int pointUnit;
    // Of a price of 100: bought, sold short, sold, covered; and what the equity curve charges.
    double expected[5];
  } kCases[] = {
      {{0.0001, 0}, {0.0001, 0}, {0.0005, 0}, 1, 1, {100.06, 99.94, 99.94, 100.06, 0.06}},
      {{10, 3}, {0, 0}, {0, 0}, 500, 1, {100.02, 99.98, 100, 100, 0.02}},
      {{0, 0}, {0, 0}, {0, 0}, 500, 0, {100, 100, 50000, 50000, 0}},
      // An entry costs 10 and a hundredth, an exit 5 and a hundredth; the curve knows no exit cost.
      {{10, 1}, {5, 1}, {0.01, 0}, 500, 1, {101.02, 98.98, 98.99, 101.01, 1.02}},
      {{10, 1}, {5, 1}, {0.01, 0}, 500, 0, {101.02, 98.98, 49495, 50505, 510}},
      {{0.01, 0}, {5, 1}, {20, 1}, 10, 1, {103, 97, 97.5, 102.5, 3}},
  };
  for (const auto &c : kCases) {
    SSimulation test;
    test.Setting.EntryCommission = c.entry.value;
    test.Setting.ModeEntryCommission = c.entry.mode;
    test.Setting.ExitCommission = c.exit.value;
    test.Setting.ModeExitCommission = c.exit.mode;
    test.Setting.Slippage = c.slippage.value;
    test.Setting.ModeSlippage = c.slippage.mode;
    test.BigPointValue = c.pointValue;
    test.BlPointUnit = c.pointUnit;
    const double actual[] = {test.EntryPrice(100, 0), test.EntryPrice(100, 1), test.ExitPrice(100, 0),
                             test.ExitPrice(100, 1), test.GetCommission(100)};
    for (int i = 0; i < 5; ++i) EXPECT_NEAR(actual[i], c.expected[i], 1e-9) << i;
  }
}

class EquityTest : public testing::Test {
 protected:
  EquityTest() {
    // An entry costs half a point, an exit a quarter.
    market.test.Setting.EntryCommission = 0.5;
    market.test.Setting.ExitCommission = 0.25;
    market.test.Setting.ModeEntryCommission = market.test.Setting.ModeExitCommission = 1;
  }

  std::vector<double> Equity(int mode) {
    SVector equity;
    market.test.CalcEquity(&equity, mode);
    EXPECT_EQ(equity.GetStartIndex(), 0);
    return ValuesOf(equity);
  }

  const SVector &ProfitLoss() {
    market.test.CalcProfitLoss();
    return market.test.Index.ExpData[kRunningProfit];
  }

  using Values = std::vector<double>;
  BothSides market;
};

TEST_F(EquityTest, EntriesCountFromTheNextBar) {
  // Bar 2: 11 - 12 - 0.5; 3: 14.5 - 11 - 0.5, the stop's fill; 5: 13 - 14 - 0.5 - 0.5.
  EXPECT_EQ(Equity(0), (Values{0, 0, -1.5, 1.5, 1.5, -0.5, -0.5, -0.5}));
  // Bar 3: 11 - 15 - 0.5; 6: 13 - 16 - 0.5.
  EXPECT_EQ(Equity(1), (Values{0, 0, 0, -4.5, -3.5, -2.5, -6, -6}));
  for (const int both : {-1, 2}) EXPECT_EQ(Equity(both), (Values{0, 0, -1.5, -3, -2, -3, -6.5, -6.5}));
}

// Required: the running profit values a long exit at its close with the cost of an entry, whatever the fill.
TEST_F(EquityTest, RunningProfitBooksATradeAtItsExit) {
  // Bar 3: 15.5 - 12.5; 5: 13.5 - 14.5; 6: 10.5 - 16.25.
  EXPECT_EQ(ValuesOf(ProfitLoss()), (Values{0, 0, 0, 3, 3, 2, -3.75, -3.75}));
  EXPECT_EQ(ProfitLoss().GetStartIndex(), 1);
}

TEST_F(EquityTest, AnExitBelowTheStartIndexCountsInTheEquityAlone) {
  const Values equity = Equity(0);
  SVector &exits = market.test.Index.ExpData[kLongExit];
  exits.startIndex = 4;
  EXPECT_EQ(Equity(0), equity);
  // The trade of bar 1 goes on, and bar 4 takes its place.
  EXPECT_EQ(ValuesOf(ProfitLoss()), (Values{0, 0, 0, 0, 0, -1, -6.75, -6.75}));
}

TEST_F(EquityTest, WithoutSignalsItIsFlat) {
  const Values flat(8, 0.0);
  for (SVector &rule : market.test.Index.ExpData) rule = SVector(8);
  EXPECT_EQ(Equity(2), flat);
  EXPECT_EQ(ValuesOf(ProfitLoss()), flat);
  EXPECT_EQ(ProfitLoss().GetStartIndex(), 0);
  for (SVector &rule : market.test.Index.ExpData) {
    rule[3] = std::nan("");
    rule.SetStartIndex(kNoValidBar);
  }
  EXPECT_EQ(Equity(2), flat);
  EXPECT_EQ(ValuesOf(ProfitLoss()), flat);
  // A constant signals on bar 0 alone: both sides enter there, at their cost, and never leave.
  for (SVector &rule : market.test.Index.ExpData) rule = SVector(12.0);
  EXPECT_EQ(Equity(2), (Values{0, -1, -1, -1, -1, -1, -1, -1}));
  for (SVector &rule : market.test.Index.ExpData) rule = SVector();
  EXPECT_EQ(Equity(2), flat);
  EXPECT_EQ(ProfitLoss().GetSize(), 0);
  SSimulation unbound;
  SVector equity;
  unbound.CalcEquity(&equity, 2);
  unbound.CalcProfitLoss();
  EXPECT_EQ(equity.GetSize(), 0);
}

TEST(Accounting, HoldsOverRandomRulesBarsAndSettings) {
  std::mt19937 random(20240102);
  const auto below = [&random](int n) { return static_cast<int>(random() % static_cast<unsigned>(n)); };
  const auto shown = [](const SString &text) { return AnsiStringToFloat(text, std::nan("")); };
  for (int round = 0; round < 300; ++round) {
    SCOPED_TRACE("round " + std::to_string(round));
    std::vector<double> closes;
    for (int i = below(120); i >= 0; --i) closes.push_back(100 + below(400) / 4.0);
    SmallMarket market(FlatBars(closes));
    SSimulation &test = market.test;
    for (int i = 0; i < market.close.GetSize(); ++i) {
      for (int rule = 0; rule < kRules; ++rule) {
        if (below(6) == 0) market.Fire(static_cast<RuleSeries>(rule), {i});
      }
    }
    test.Setting.Position = below(3);
    test.Setting.ModeVolume = below(3);
    test.Setting.TradeVolume = 1 + below(3);
    test.SetBigPointValue(1 + below(3) * 100);
    const bool isFree = below(2) == 0;
    if (!isFree) {
      test.Setting.EntryCommission = below(3) / 100.0;
      test.Setting.ExitCommission = below(3) / 100.0;
      test.Setting.Slippage = below(3) / 100.0;
      test.Setting.ModeSlippage = below(2);
      test.BlPointUnit = below(2);
    }
    market.Run();
    test.SetSummary();

    const std::vector<double> profits = ValuesOf(test.History[kTradeProfitLoss]);
    const double sum = std::accumulate(profits.begin(), profits.end(), 0.0);
    if (!profits.empty() && test.Setting.ModeVolume != 1) {
      EXPECT_EQ(ValuesOf(test.History[kTradeCumProfitLoss]).back(), sum);
    }
    if (isFree && test.Setting.Position != kBothSides &&
        (test.Setting.ModeVolume != 0 || test.Setting.TradeVolume == 1)) {
      SVector equity;
      test.CalcEquity(&equity, test.Setting.Position);
      EXPECT_NEAR(ValuesOf(equity).back(), sum, 1e-6);
    }
    constexpr int kRowsOfGroup = 14;
    double total = 0.0;
    for (int row = 0; row < test.SummaryCount; row += kRowsOfGroup) {
      const SSummary *group = test.SummaryRows + row;
      EXPECT_EQ(shown(group[3].Value1) + shown(group[3].Value2), shown(group[2].Value1));
      if (row > 0) total += shown(group[0].Value1);
    }
    EXPECT_NEAR(total, shown(test.SummaryRows[0].Value1), 0.02);
    EXPECT_NEAR(sum, shown(test.SummaryRows[0].Value1), 0.00501 + 1e-9 * std::abs(sum));
  }
}

}  // namespace

}  // namespace trovenu::tests
