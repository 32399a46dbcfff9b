#include <gtest/gtest.h>

#include "tests/backtest/trading.h"
#include "trovenu/support/korean.h"

namespace trovenu::tests {

namespace {

class SummaryTest : public testing::Test {
 protected:
  // Appends a trade as it stands in the table; an exit date of 0 says that it is open.
  void Add(int side, double profit, double bars, double entryEff, double exitEff,
           double exitDate = 20240105) {
    const std::pair<int, double> values[] = {{kTradeSide, side},       {kTradeProfitLoss, profit},
                                             {kTradeBarsHeld, bars},   {kTradeEntryEff, entryEff},
                                             {kTradeExitEff, exitEff}, {kTradeExitDate, exitDate}};
    for (const auto &[column, value] : values) simulation.History[column].Add(value);
  }

  const SSummaryInfo &Record() {
    simulation.SummaryCount = 0;
    simulation.CalcSummary(-1);
    return simulation.SummaryInfo;
  }

  Trading trading{kEightCloses};
  SSimulation &simulation = trading.simulation;
};

// Profits 0, -5, 10, 6, -2, -1; the second and the fifth trade are short ones. Their mean is 4/3, the mean of
// their squares 166/6, so they deviate by the root of 25.89. The equity falls from 0 to -6.5, that of the
// long side from 1.5 to -0.5, that of the short side from 0 to -6.
TEST_F(SummaryTest, RowsOfThreeGroups) {
  TradeBothSides(trading);
  simulation.Setting.EntryCommission = 0.5;
  simulation.Setting.ModeEntryCommission = 1;
  Add(kLongSide, 0, 2, 60, 70);
  Add(kShortSide, -5, 3, 40, 20);
  Add(kLongSide, 10, 4, 60, 70);
  Add(kLongSide, 6, 1, 60, 70);
  Add(kShortSide, -2, 2, 40, 20);
  Add(kLongSide, -1, 5, 60, 70);
  simulation.SetSummary();
  ASSERT_EQ(simulation.SummaryCount, 42);

  const struct {
    const char *block, *title, *name1, *name2;
    // All trades, long, short.
    const char *value1[3];
    const char *value2[3];
  } kRows[] = {
      {"0",
       "손익 요약"_kr,
       "총손익"_kr,
       "Profit Factor",
       {"8.00", "15.00", "-7.00"},
       {"2.00", "16.00", "0.00"}},
      {"0",
       "손익 요약"_kr,
       "총수익"_kr,
       "총손실"_kr,
       {"16.00", "16.00", "0.00"},
       {"-8.00", "-1.00", "-7.00"}},
      {"1", "거래 횟수"_kr, "총거래횟수"_kr, "승률"_kr, {"6", "4", "2"}, {"0.50", "0.75", "0.00"}},
      {"1", "거래횟수"_kr, "수익 거래수"_kr, "손실 거래수"_kr, {"3", "3", "0"}, {"3", "1", "2"}},
      {"1",
       "거래횟수"_kr,
       "수익 거래 평균 봉 갯수"_kr,
       "손실 거래 평균 봉 갯수"_kr,
       {"2.3", "2.3", "0.0"},
       {"3.3", "5.0", "2.5"}},
      {"2",
       "최대 손익"_kr,
       "최대 수익"_kr,
       "최대 손실"_kr,
       {"10.00", "10.00", "0.00"},
       {"-5.00", "-1.00", "-5.00"}},
      {"2",
       "최대 손익"_kr,
       "최대 연속 수익 금액"_kr,
       "최대 연속 손실 금액"_kr,
       {"16.00", "16.00", "0.00"},
       {"-5.00", "-1.00", "-7.00"}},
      {"2",
       "최대 손익"_kr,
       "최대 연속 수익 거래"_kr,
       "최대 연속 손실 거래"_kr,
       {"2", "3", "0"},
       {"2", "1", "2"}},
      {"2", "최대 손익"_kr, "최대 손실폭"_kr, "", {"-6.50", "-2.00", "-6.00"}, {"", "", ""}},
      {"3",
       "평균 손익"_kr,
       "평균 수익"_kr,
       "평균 손실"_kr,
       {"5.33", "5.33", ""},
       {"-2.67", "-1.00", "-3.50"}},
      {"3",
       "평균 손익"_kr,
       "평균 거래 손익"_kr,
       "표준편차"_kr,
       {"1.33", "3.75", "-3.50"},
       {"5.09", "5.09", "5.09"}},
      {"3", "평균 손익"_kr, "평균 수익/평균 손실"_kr, "", {"2.00", "5.33", ""}, {"", "", ""}},
      {"4",
       "효율성"_kr,
       "진입효율성"_kr,
       "청산효율성"_kr,
       {"53.33", "60.00", "40.00"},
       {"53.33", "70.00", "20.00"}},
      {"4", "효율성"_kr, "전체효율성"_kr, "", {"6.67", "30.00", "-40.00"}, {"", "", ""}},
  };
  const char *const kGroups[] = {"전체 거래"_kr, "매수 거래"_kr, "매도 거래"_kr};
  for (int group = 0; group < 3; ++group) {
    for (int i = 0; i < 14; ++i) {
      SCOPED_TRACE("group " + std::to_string(group) + ", row " + std::to_string(i));
      const SSummary &row = simulation.SummaryRows[14 * group + i];
      EXPECT_STREQ(row.GroupID.c_str(), std::to_string(group).c_str());
      EXPECT_STREQ(row.GroupName.c_str(), kGroups[group]);
      EXPECT_STREQ(row.SubGroupID.c_str(), kRows[i].block);
      EXPECT_STREQ(row.SubGroupName.c_str(), kRows[i].title);
      EXPECT_STREQ(row.Sequence.c_str(), std::to_string(i).c_str());
      EXPECT_STREQ(row.Name1.c_str(), kRows[i].name1);
      EXPECT_STREQ(row.Value1.c_str(), kRows[i].value1[group]);
      EXPECT_STREQ(row.Name2.c_str(), kRows[i].name2);
      EXPECT_STREQ(row.Value2.c_str(), kRows[i].value2[group]);
    }
  }

  const SSummaryInfo &record = simulation.SummaryInfo;
  EXPECT_STREQ(record.TotalProfit.c_str(), "8.00");
  EXPECT_STREQ(record.TransactionCount.c_str(), "6");
  EXPECT_STREQ(record.WinLossRatio.c_str(), "2");
  EXPECT_STREQ(record.WinRatio.c_str(), "0.5");
  EXPECT_STREQ(record.ProfitFactor.c_str(), "2");
  EXPECT_STREQ(record.AverageProfit.c_str(), "1.33");
  EXPECT_STREQ(record.Status.c_str(), "매수청산"_kr);
  EXPECT_STREQ(record.Term.c_str(), "2024.01.01 ~ 2024.01.08");
  EXPECT_STREQ(record.EntryCommission.c_str(), "0.50원"_kr);
  EXPECT_STREQ(record.ExitCommission.c_str(), "0.00%");
  EXPECT_STREQ(record.IndicatorVariable.c_str(), "");
  EXPECT_STREQ(record.SumFileName.c_str(), simulation.IndividualSummaryFileName.c_str());
  EXPECT_STREQ(record.TradeListFileName.c_str(), simulation.TradingHistoryFileName.c_str());
}

// Long from bar 1 to 3, 4 to 5 and 7 to the end, short from 2 to 6: four bars of eight each.
TEST_F(SummaryTest, BarsInTheMarketAndGroupsOfThePosition) {
  TradeBothSides(trading);
  const struct {
    int position;
    const char *inMarket;
    const char *lastGroup;
    int rows;
  } kCases[] = {
      {kLongOnly, "50.00", "1", 28},
      {kShortOnly, "50.00", "2", 28},
      {kBothSides, "100.00", "2", 42},
      {7, "0.00", "1", 28},
  };
  for (const auto &c : kCases) {
    simulation.Setting.Position = c.position;
    simulation.SummaryCount = 0;
    simulation.SetSummary();
    EXPECT_EQ(simulation.SummaryCount, c.rows);
    EXPECT_STREQ(simulation.SummaryRows[c.rows - 1].GroupID.c_str(), c.lastGroup);
    EXPECT_STREQ(simulation.SummaryInfo.InMarketRatio.c_str(), c.inMarket);
  }
}

TEST_F(SummaryTest, StatusIsThatOfTheLastTrade) {
  EXPECT_STREQ(Record().Status.c_str(), "거래 없음"_kr);
  const struct {
    int side;
    double exitDate;
    const char *status;
  } kCases[] = {
      {kLongSide, 0, "매수"_kr},
      {kShortSide, 0, "매도"_kr},
      {kLongSide, 20240105, "매수청산"_kr},
      {kShortSide, 20240105, "매도청산"_kr},
  };
  for (const auto &c : kCases) {
    Add(c.side, 1, 1, 0, 0, c.exitDate);
    EXPECT_STREQ(Record().Status.c_str(), c.status);
  }
}

TEST_F(SummaryTest, WithoutTradesOrLossesRatiosAreEmpty) {
  SSimulation empty;
  empty.SetSummary();
  EXPECT_STREQ(empty.SummaryInfo.Term.c_str(), "0000.00.00 ~ 0000.00.00");
  EXPECT_STREQ(empty.SummaryInfo.InMarketRatio.c_str(), "");
  EXPECT_STREQ(empty.SummaryInfo.AverageProfit.c_str(), "");
  EXPECT_STREQ(empty.SummaryInfo.WinRatio.c_str(), "");
  EXPECT_STREQ(empty.SummaryRows[0].Value2.c_str(), "");
  EXPECT_STREQ(empty.SummaryRows[10].Value2.c_str(), "0.00");
  EXPECT_STREQ(empty.SummaryRows[13].Value1.c_str(), "0.00");

  Add(kLongSide, 0, 1, 0, 0);
  Record();
  EXPECT_STREQ(simulation.SummaryInfo.ProfitFactor.c_str(), "");
  EXPECT_STREQ(simulation.SummaryRows[5].Value2.c_str(), "0.00");
  EXPECT_STREQ(simulation.SummaryRows[7].Value1.c_str(), "1");
  EXPECT_STREQ(simulation.SummaryRows[9].Value2.c_str(), "");
  EXPECT_STREQ(simulation.SummaryRows[11].Value1.c_str(), "");
}

// Required: behind the tenth variable stands the first value where the next name is looked for.
TEST_F(SummaryTest, TenVariablesEndInAComma) {
  SIndex &rules = simulation.Index;
  rules.IndexName = "ma";
  EXPECT_STREQ(Record().IndicatorName.c_str(), "ma");
  const char *const kExpected[] = {"ma(1)", "ma(1,2)", "ma(1,2,3)"};
  for (int i = 0; i < kVariables; ++i) {
    rules.VarName[i] = "n";
    rules.VarValue[i] = i + 1;
    if (i >= 3) continue;
    EXPECT_STREQ(Record().IndicatorName.c_str(), kExpected[i]);
  }
  EXPECT_STREQ(Record().IndicatorName.c_str(), "ma(1,2,3,4,5,6,7,8,9,10,");
  rules.VarValue[0] = "";
  EXPECT_STREQ(Record().IndicatorName.c_str(), "ma(,2,3,4,5,6,7,8,9,10)");
}

TEST_F(SummaryTest, RowsBehindTheLastPlaceAreDropped) {
  for (int i = 0; i < 300; ++i) {
    SSummary row;
    row.Sequence = i;
    simulation.InsertSummary(row);
  }
  EXPECT_EQ(simulation.SummaryCount, 199);
  EXPECT_STREQ(simulation.SummaryRows[198].Sequence.c_str(), "198");
  EXPECT_STREQ(simulation.SummaryRows[199].Sequence.c_str(), "");
  simulation.CalcSummary(2);
  EXPECT_EQ(simulation.SummaryCount, 199);
}

}  // namespace

}  // namespace trovenu::tests
