#include <gtest/gtest.h>

#include <cmath>
#include <numeric>
#include <random>

#include "tests/backtest/trading.h"
#include "trovenu/support/number_text.h"

namespace trovenu::tests {

namespace {

TEST(Costs, OfAFillByHand) {
  constexpr int kFraction = 0;
  constexpr int kPoints = 3;  // any mode but 0
  const struct {
    double entry, exit, slippage;
    int entryMode, exitMode, slippageMode;
    double pointValue;
    int pointUnit;
    // Of a price of 100: bought, sold short, sold, covered; and what the equity curve charges.
    double expected[5];
  } kCases[] = {
      {0.0001, 0.0001, 0.0005, kFraction, kFraction, kFraction, 1, 1, {100.06, 99.94, 99.94, 100.06, 0.06}},
      {10, 0, 0, kPoints, kFraction, kFraction, 500, 1, {100.02, 99.98, 100, 100, 0.02}},
      {0, 0, 0, kFraction, kFraction, kFraction, 500, 0, {100, 100, 50000, 50000, 0}},
      // An entry costs 10 and a hundredth, an exit 5 and a hundredth; the curve knows no exit cost of its
      // own.
      {10, 5, 0.01, kPoints, kPoints, kFraction, 500, 1, {101.02, 98.98, 98.99, 101.01, 1.02}},
      {10, 5, 0.01, kPoints, kPoints, kFraction, 500, 0, {101.02, 98.98, 49495, 50505, 510}},
      {0.01, 5, 20, kFraction, kPoints, kPoints, 10, 1, {103, 97, 97.5, 102.5, 3}},
  };
  for (const auto &c : kCases) {
    SSimulation simulation;
    simulation.Setting.EntryCommission = c.entry;
    simulation.Setting.ExitCommission = c.exit;
    simulation.Setting.Slippage = c.slippage;
    simulation.Setting.ModeEntryCommission = c.entryMode;
    simulation.Setting.ModeExitCommission = c.exitMode;
    simulation.Setting.ModeSlippage = c.slippageMode;
    simulation.BigPointValue = c.pointValue;
    simulation.BlPointUnit = c.pointUnit;
    EXPECT_NEAR(simulation.EntryPrice(100, 0), c.expected[0], 1e-9);
    EXPECT_NEAR(simulation.EntryPrice(100, 1), c.expected[1], 1e-9);
    EXPECT_NEAR(simulation.ExitPrice(100, 0), c.expected[2], 1e-9);
    EXPECT_NEAR(simulation.ExitPrice(100, 1), c.expected[3], 1e-9);
    EXPECT_NEAR(simulation.GetCommission(100), c.expected[4], 1e-9);
  }
}

class EquityTest : public testing::Test {
 protected:
  EquityTest() {
    TradeBothSides(trading);
    // An entry costs half a point, an exit a quarter.
    trading.simulation.Setting.EntryCommission = 0.5;
    trading.simulation.Setting.ExitCommission = 0.25;
    trading.simulation.Setting.ModeEntryCommission = trading.simulation.Setting.ModeExitCommission = 1;
  }

  std::vector<double> Equity(int mode) {
    SVector equity;
    trading.simulation.CalcEquity(&equity, mode);
    EXPECT_EQ(equity.GetStartIndex(), 0);
    return ValuesOf(equity);
  }

  const SVector &ProfitLoss() {
    trading.simulation.CalcProfitLoss();
    return trading.simulation.Index.ExpData[kRunningProfit];
  }

  using Values = std::vector<double>;
  Trading trading{kEightCloses};
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
  SVector &exits = trading.simulation.Index.ExpData[kLongExit];
  exits.startIndex = 4;
  EXPECT_EQ(Equity(0), equity);
  // The trade of bar 1 goes on, and bar 4 takes its place.
  EXPECT_EQ(ValuesOf(ProfitLoss()), (Values{0, 0, 0, 0, 0, -1, -6.75, -6.75}));
}

TEST_F(EquityTest, WithoutSignalsItIsFlat) {
  const Values flat(8, 0.0);
  for (SVector &rule : trading.simulation.Index.ExpData) rule = SVector(8);
  EXPECT_EQ(Equity(2), flat);
  EXPECT_EQ(ValuesOf(ProfitLoss()), flat);
  EXPECT_EQ(ProfitLoss().GetStartIndex(), 0);
  for (SVector &rule : trading.simulation.Index.ExpData) {
    rule[3] = std::nan("");
    rule.SetStartIndex(kNoValidBar);
  }
  EXPECT_EQ(Equity(2), flat);
  EXPECT_EQ(ValuesOf(ProfitLoss()), flat);
  // A constant signals on bar 0 alone: both sides enter there, at their cost, and never leave.
  for (SVector &rule : trading.simulation.Index.ExpData) rule = SVector(12.0);
  EXPECT_EQ(Equity(2), (Values{0, -1, -1, -1, -1, -1, -1, -1}));
  for (SVector &rule : trading.simulation.Index.ExpData) rule = SVector();
  EXPECT_EQ(Equity(2), flat);
  EXPECT_EQ(ProfitLoss().GetSize(), 0);
  SSimulation unbound;
  SVector equity;
  unbound.CalcEquity(&equity, 2);
  unbound.CalcProfitLoss();
  EXPECT_EQ(equity.GetSize(), 0);
}

// The number in a row of the summary.
double Shown(const SString &text) { return AnsiStringToFloat(text, std::nan("")); }

TEST(Accounting, HoldsOverRandomRulesBarsAndSettings) {
  std::mt19937 random(20240102);
  const auto below = [&random](int n) { return static_cast<int>(random() % static_cast<unsigned>(n)); };
  for (int round = 0; round < 300; ++round) {
    std::vector<double> closes;
    for (int i = below(120); i >= 0; --i) closes.push_back((i > 0 ? 100 : 90) + below(400) / 4.0);
    Trading trading(closes);
    SSimulation &simulation = trading.simulation;
    for (int i = 0; i < trading.close.GetSize(); ++i) {
      trading.high[i] += below(9);
      trading.low[i] -= below(9);
      for (int rule = 0; rule < kRules; ++rule) {
        if (below(6) == 0) trading.Signal(rule, {i});
      }
    }
    SSimulationSetting &setting = simulation.Setting;
    setting.Position = below(3);
    setting.ModeVolume = below(3);
    setting.TradeVolume = 1 + below(5);
    const bool isFree = below(2) == 0;
    if (!isFree) {
      setting.EntryCommission = below(3) / 100.0;
      setting.ExitCommission = below(3) / 100.0;
      setting.Slippage = below(3) / 100.0;
      setting.ModeEntryCommission = below(2);
      setting.ModeSlippage = below(2);
      simulation.BlPointUnit = below(2);
    }
    simulation.SetBigPointValue(1 + below(3) * 100);
    if (below(2) == 0) simulation.SetMargin(1000);
    trading.Trade();
    simulation.SetSummary();

    const std::vector<double> profits = ValuesOf(simulation.History[kTradeProfitLoss]);
    const double sum = std::accumulate(profits.begin(), profits.end(), 0.0);
    const double tolerance = 1e-9 * (1 + std::abs(sum));
    SCOPED_TRACE("round " + std::to_string(round));
    if (!profits.empty() && setting.ModeVolume != 1) {
      EXPECT_NEAR(ValuesOf(simulation.History[kTradeCumProfitLoss]).back(), sum, tolerance);
    }
    if (isFree && setting.Position != kBothSides && (setting.ModeVolume != 0 || setting.TradeVolume == 1)) {
      SVector equity;
      simulation.CalcEquity(&equity, setting.Position);
      EXPECT_NEAR(ValuesOf(equity).back(), sum, 1e-6);
    }
    constexpr int kRowsOfGroup = 14;
    double total = 0.0;
    for (int row = 0; row < simulation.SummaryCount; row += kRowsOfGroup) {
      const SSummary *group = simulation.SummaryRows + row;
      EXPECT_EQ(Shown(group[3].Value1) + Shown(group[3].Value2), Shown(group[2].Value1));
      if (row > 0) total += Shown(group[0].Value1);
    }
    EXPECT_NEAR(total, Shown(simulation.SummaryRows[0].Value1), 0.02);
    EXPECT_NEAR(sum, Shown(simulation.SummaryRows[0].Value1), 0.01);
  }
}

}  // namespace

}  // namespace trovenu::tests
