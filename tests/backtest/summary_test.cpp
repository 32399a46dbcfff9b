#include <gtest/gtest.h>

#include "tests/backtest/both_sides.h"
#include "trovenu/platform/code_page.h"
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

  BothSides market;
  SSimulation &simulation = market.test;
};

// Profits 0, -5, 10, 6, -2, -1; the second and the fifth trade are short ones. Their mean is 4/3, the mean of
// their squares 166/6, so they deviate by the root of 25.89. The equity falls from 0 to -6.5, that of the
// long side from 1.5 to -0.5, that of the short side from 0 to -6.
TEST_F(SummaryTest, RowsOfThreeGroups) {
  simulation.Setting.EntryCommission = 0.5;
  simulation.Setting.ModeEntryCommission = 1;
  market.date[0] = 20240102;
  market.date[7] = 20240111090500;
  Add(kLongSide, 0, 2, 60, 70);
  Add(kShortSide, -5, 3, 40, 20);
  Add(kLongSide, 10, 4, 60, 70);
  Add(kLongSide, 6, 1, 60, 70);
  Add(kShortSide, -2, 2, 40, 20);
  Add(kLongSide, -1, 5, 60, 70);
  simulation.SetSummary();
  ASSERT_EQ(simulation.SummaryCount, 42);
  const char *const kGroups[] = {"전체 거래"_kr, "매수 거래"_kr, "매도 거래"_kr};

  std::string text;
  for (int i = 0; i < 14; ++i) {
    const SSummary *rows[] = {simulation.SummaryRows + i, simulation.SummaryRows + 14 + i,
                              simulation.SummaryRows + 28 + i};
    SString line = rows[0]->SubGroupID + " " + rows[0]->SubGroupName + " | " + rows[0]->Name1;
    for (const SSummary *row : rows) line += " " + row->Value1;
    line += " | " + rows[0]->Name2;
    for (const SSummary *row : rows) line += " " + row->Value2;
    for (int group = 0; group < 3; ++group) {
      EXPECT_EQ(std::stoi(rows[group]->GroupID.c_str()), group);
      EXPECT_EQ(std::stoi(rows[group]->Sequence.c_str()), i);
      EXPECT_EQ(rows[group]->SubGroupName, rows[0]->SubGroupName);
      EXPECT_STREQ(rows[group]->GroupName.c_str(), kGroups[group]);
    }
    text += Utf8FromCodePage(line.c_str(), nullptr) + "\n";
  }
  // All trades, long ones, short ones.
  EXPECT_EQ(text,
            "0 손익 요약 | 총손익 8.00 15.00 -7.00 | Profit Factor 2.00 16.00 0.00\n"
            "0 손익 요약 | 총수익 16.00 16.00 0.00 | 총손실 -8.00 -1.00 -7.00\n"
            "1 거래 횟수 | 총거래횟수 6 4 2 | 승률 0.50 0.75 0.00\n"
            "1 거래횟수 | 수익 거래수 3 3 0 | 손실 거래수 3 1 2\n"
            "1 거래횟수 | 수익 거래 평균 봉 갯수 2.3 2.3 0.0 | 손실 거래 평균 봉 갯수 3.3 5.0 2.5\n"
            "2 최대 손익 | 최대 수익 10.00 10.00 0.00 | 최대 손실 -5.00 -1.00 -5.00\n"
            "2 최대 손익 | 최대 연속 수익 금액 16.00 16.00 0.00 | 최대 연속 손실 금액 -5.00 -1.00 -7.00\n"
            "2 최대 손익 | 최대 연속 수익 거래 2 3 0 | 최대 연속 손실 거래 2 1 2\n"
            "2 최대 손익 | 최대 손실폭 -6.50 -2.00 -6.00 |    \n"
            "3 평균 손익 | 평균 수익 5.33 5.33  | 평균 손실 -2.67 -1.00 -3.50\n"
            "3 평균 손익 | 평균 거래 손익 1.33 3.75 -3.50 | 표준편차 5.09 5.09 5.09\n"
            "3 평균 손익 | 평균 수익/평균 손실 2.00 5.33  |    \n"
            "4 효율성 | 진입효율성 53.33 60.00 40.00 | 청산효율성 53.33 70.00 20.00\n"
            "4 효율성 | 전체효율성 6.67 30.00 -40.00 |    \n");

  const SSummaryInfo &record = simulation.SummaryInfo;
  SString fields;
  for (const SString &field :
       {record.TotalProfit, record.TransactionCount, record.WinLossRatio, record.WinRatio,
        record.ProfitFactor, record.AverageProfit, record.Status, record.Term, record.EntryCommission,
        record.ExitCommission, record.IndicatorVariable}) {
    fields += field + "|";
  }
  EXPECT_EQ(Utf8FromCodePage(fields.c_str(), nullptr),
            "8.00|6|2|0.5|2|1.33|매수청산|2024.01.02 ~ 2024.01.11|0.50원|0.00%||");
  EXPECT_EQ(record.SumFileName, simulation.IndividualSummaryFileName);
  EXPECT_EQ(record.TradeListFileName, simulation.TradingHistoryFileName);
}

// Long from bar 1 to 3, 4 to 5 and 7 to the end, short from 2 to 6: four bars of eight each.
TEST_F(SummaryTest, BarsInTheMarketAndGroupsOfThePosition) {
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
