#include <gtest/gtest.h>

#include "trovenu/indicator/index.h"
#include "trovenu/price/price_data_list.h"
#include "trovenu/support/korean.h"

namespace trovenu {
namespace {

// An indicator over one symbol with two bars; its lines are 0.125 and 1234.567.
struct Chart {
  explicit Chart(int kind = kIndicatorIndex) : index("N", kind) {
    prices.Add();
    for (const double shift : {0.0, 100.0}) {
      prices[0].AddData(SPriceData::kOpen, shift + 11.0);
      prices[0].AddData(SPriceData::kHigh, shift + 13.0);
      prices[0].AddData(SPriceData::kLow, shift + 10.0);
      prices[0].AddData(SPriceData::kClose, shift + 12.0);
    }
    for (int line = 0; line < kExpressions; ++line) {
      index.AddData(line, 0.125);
      index.AddData(line, 1234.567);
    }
    index.SetData(&prices, 0);
  }

  SPriceDataList prices;
  SIndex index;
};

TEST(ValueText, ValueOfALineFollowsTheTick) {
  Chart chart;
  EXPECT_STREQ(chart.index.GetExpValue(0, 1).c_str(), "1235");
  chart.prices[0].TickSize = 0.05;
  EXPECT_STREQ(chart.index.GetExpValue(4, 1).c_str(), "1234.57");
  EXPECT_STREQ(chart.index.GetExpValue(0, 2).c_str(), "0.00");
  EXPECT_STREQ(chart.index.GetExpValue(0, -1).c_str(), "0.00");
  EXPECT_STREQ(chart.index.GetExpValue(5, 1).c_str(), "");
  EXPECT_STREQ(chart.index.GetExpValue(-1, 1).c_str(), "");
  chart.index.DisplayType[2] = 13;
  EXPECT_STREQ(chart.index.GetExpValue(2, 1).c_str(), "");
  EXPECT_STREQ(chart.index.GetExpValue(1, 1).c_str(), "1234.57");
  chart.index.PriceDataList = nullptr;
  EXPECT_STREQ(chart.index.GetExpValue(1, 1).c_str(), "");
}

TEST(ValueText, OnlyIndicatorsHaveValues) {
  struct Case {
    int kind;
    const char *value;
    const char *withValue[kExpressions];
  };
  const Case cases[] = {
      {kIndicatorIndex, "1235", {"1234.57", "1234.57", "1234.57", "1234.57", "1234.57"}},
      {kConditionIndex, "", {"", "", "", "", ""}},
      {kPatternIndex, "", {"강세패턴"_kr, "약세 패턴"_kr, "", "", ""}},
      {kSystemIndex, "", {"신규매수"_kr, "매수청산"_kr, "신규매도"_kr, "매도청산"_kr, ""}},
      {kFedIndex, "", {"", "", "", "", ""}},
      {kEquityIndex, "", {"", "", "", "", ""}},
      {kFedIndicatorIndex, "1235", {"1234.57", "1234.57", "1234.57", "1234.57", "1234.57"}},
      {kCandleIndex, "", {"", "", "", "", ""}},
  };
  for (const Case &c : cases) {
    Chart chart(c.kind);
    for (int line = 0; line < kExpressions; ++line) {
      EXPECT_STREQ(chart.index.GetExpValue(line, 1).c_str(), c.value) << c.kind << ", line " << line;
      const bool isSignal = c.kind == kPatternIndex || c.kind == kSystemIndex;
      EXPECT_STREQ(chart.index.GetExpNameWithValue(line, 1).c_str(), isSignal ? "" : c.withValue[line]);
      chart.index.Expression[line] = "c";
      EXPECT_STREQ(chart.index.GetExpNameWithValue(line, 1).c_str(), c.withValue[line])
          << c.kind << ", line " << line;
      chart.index.DisplayType[line] = 13;
      EXPECT_STREQ(chart.index.GetExpNameWithValue(line, 1).c_str(), isSignal ? c.withValue[line] : "")
          << c.kind << ", line " << line;
    }
    EXPECT_STREQ(chart.index.GetExpNameWithValue(5, 1).c_str(), "");
  }
}

TEST(ValueText, PriceTextOfEachChartType) {
  constexpr const char *kFour = "시:111.0 고:113.0 저:110.0 종:112.0"_kr;
  for (int type = -1; type <= 19; ++type) {
    Chart chart;
    chart.prices[0].TickSize = 0.5;
    chart.prices[0].property->PriceChartType = type;
    const bool hasText = (type >= 0 && type <= 4) || (type >= 11 && type <= 16) || type == 18;
    const char *const text = !hasText ? "" : type == kCloseLineChart ? "112.0" : kFour;
    EXPECT_STREQ(chart.index.GetPriceValue(1).c_str(), text) << type;
  }
}

TEST(ValueText, ATradeHasOnePrice) {
  struct Case {
    int period;
    double cycle;
    bool isTrade;
  };
  for (const Case &c : {Case{0, 1.0, true}, Case{0, 5.0, false}, Case{1, 1.0, false}}) {
    Chart chart;
    chart.prices[0].SetChartPeriod(c.period);
    chart.prices[0].SetChartCycle(c.cycle);
    EXPECT_STREQ(chart.index.GetPriceValue(0).c_str(), c.isTrade ? "12" : "시:11 고:13 저:10 종:12"_kr);
  }
}

TEST(ValueText, WithoutPricesOrBarsThereIsNothingToRead) {
  EXPECT_STREQ(SIndex("N", kPriceIndex).GetPriceValue(0).c_str(), "");
  Chart chart(kPriceIndex);
  EXPECT_STREQ(chart.index.GetPriceValue(2).c_str(), "시:0 고:0 저:0 종:0"_kr);
}

}  // namespace
}  // namespace trovenu
