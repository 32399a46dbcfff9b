#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "trovenu/indicator/index.h"
#include "trovenu/price/price_data_list.h"
#include "trovenu/support/korean.h"

namespace trovenu {
namespace {

// An indicator over one symbol with three bars; line 0 is 1, 2, 3.
struct Chart {
  explicit Chart(int kind = kIndicatorIndex, const char *name = "MA") : index(name, kind) {
    prices.Add();
    prices[0].SymbolName = "KRX";
    prices[0].TickSize = 0.5;
    for (const double price : {10.0, 11.0, 12.0}) {
      prices[0].AddData(SPriceData::kClose, price);
      index.AddData(0, price - 9.0);
    }
    index.SetData(&prices, 0);
    index.Expression[0] = "c";
  }
  SPriceProperty &Property() { return *prices[0].property; }

  SPriceDataList prices;
  SIndex index;
};

TEST(Titles, PlaceholdersBecomeValues) {
  struct Case {
    const char *name;
    const char *title;
  };
  const Case cases[] = {
      {"MA", "MA"},
      {"%Period%일"_kr, "20일"_kr},
      {"a %PERIOD%, %x% b", "a 20, 7 b"},
      {"%x%%period%", "720"},
      {"100%%", "100%"},
      {"%%%x%", "%7"},
      {"%Unknown%", "%Unknown%"},
      {"%Unknown%x%", "%Unknown%x%"},
      {"50% of %", "50% of %"},
      {"x%", "x%"},
      {"%behind%", "%behind%"},
      {"가%x%힝"_kr, "가7힝"_kr},
  };
  SIndex index("MA", kIndicatorIndex);
  index.VarName[0] = "period";
  index.VarValue[0] = "20";
  index.VarName[1] = "x";
  index.VarValue[1] = "7";
  // The list of variables ends at the first one without a name.
  index.VarName[3] = "behind";
  index.VarValue[3] = "9";
  for (const Case &c : cases) {
    index.ExpName[2] = c.name;
    EXPECT_STREQ(index.GetExpTitleName(2).c_str(), c.title) << c.name;
  }
  EXPECT_STREQ(index.GetExpTitleName(0).c_str(), "");
}

// The names of lines 0 to 4, alone and with variables.
struct Names {
  int kind;
  std::vector<const char *> plain;
  std::vector<const char *> withVariable;
};

TEST(Titles, NamesOfTheLinesOfEachKind) {
  const Names cases[] = {
      {kIndicatorIndex, {"line 7", "N[1]", "N[2]", "line 7", "N[4]"}, {"line 7", "N[1]", "", "", ""}},
      {kConditionIndex, {"N", "N", "N", "N", "N"}, {"line %x%", "N", "N", "line %x%", "N"}},
      {kPatternIndex,
       {"N 강세패턴"_kr, "약세 패턴"_kr, "", "", ""},
       {"N 강세패턴"_kr, "약세 패턴"_kr, "", "", ""}},
      {kSystemIndex, {"N 매수"_kr, "매수청산"_kr, "", "", ""}, {"N 신규매수"_kr, "매수청산"_kr, "", "", ""}},
      {kFunctionIndex, {"", "", "", "", ""}, {"", "", "", "", ""}},
      {kFedIndex, {"", "", "", "", ""}, {"", "", "", "", ""}},
      {kEquityIndex, {"수익곡선"_kr, "", "", "", ""}, {"수익곡선"_kr, "", "", "", ""}},
      {kFedIndicatorIndex, {"line %x%", "", "", "line %x%", ""}, {"line %x%", "", "", "line %x%", ""}},
      {kCandleIndex, {"N", "N", "N", "N", "N"}, {"N", "N", "N", "N", "N"}},
      {kPriceIndex, {"", "", "", "", ""}, {"", "", "", "", ""}},
  };
  for (const Names &c : cases) {
    SIndex index("N", c.kind);
    index.VarName[0] = "x";
    index.VarValue[0] = "7";
    index.Expression[0] = index.Expression[1] = "c";
    index.ExpName[0] = index.ExpName[3] = "line %x%";
    for (int line = 0; line < 5; ++line) {
      const auto at = static_cast<std::size_t>(line);
      EXPECT_STREQ(index.GetExpName(line).c_str(), c.plain[at]) << c.kind << ", line " << line;
      EXPECT_STREQ(index.GetExpNameWithVariable(line).c_str(), c.withVariable[at])
          << c.kind << ", line " << line;
    }
  }
}

TEST(Titles, ASystemThatOnlySellsBearsItsNameThere) {
  SIndex index("N", kSystemIndex);
  index.Expression[2] = index.Expression[3] = "c";
  EXPECT_STREQ(index.GetExpName(0).c_str(), "");
  EXPECT_STREQ(index.GetExpName(2).c_str(), "N 매도"_kr);
  EXPECT_STREQ(index.GetExpName(3).c_str(), "매도청산"_kr);
  EXPECT_STREQ(index.GetExpNameWithVariable(2).c_str(), "N 신규매도"_kr);
  index.Expression[0] = "c";
  EXPECT_STREQ(index.GetExpName(2).c_str(), "매도"_kr);
  EXPECT_STREQ(index.GetExpNameWithVariable(2).c_str(), "신규매도"_kr);
}

TEST(Titles, ArgumentsOfAConditionBecomeValues) {
  struct Case {
    const char *name;
    const char *title;
  };
  const Case cases[] = {
      {"", "N"},
      {"plain", "plain"},
      {"golden(short,LONG) x", "golden(5,20) x"},
      {"f(short+1,,longer,short)", "f(short+1,,longer,5)"},
      {"f()", "f()"},
      {"f(short", "f(short"},
      {"a) f(late) g(short)", "a) f(3) g(short)"},
  };
  SIndex index("N", kConditionIndex);
  index.VarName[0] = "Short";
  index.VarValue[0] = "5";
  index.VarName[1] = "long";
  index.VarValue[1] = "20";
  index.VarValue[2] = "unnamed";
  index.VarName[5] = "late";
  index.VarValue[5] = "3";
  for (const Case &c : cases) {
    index.ExpName[0] = c.name;
    EXPECT_STREQ(index.GetExpNameWithVariable(0).c_str(), c.title) << c.name;
  }
}

TEST(Titles, ListOfVariables) {
  SIndex index("N", kIndicatorIndex);
  EXPECT_STREQ(index.GetIndexVariable().c_str(), "");
  index.VarValue[4] = "unnamed";
  EXPECT_STREQ(index.GetIndexVariable().c_str(), "");
  index.VarName[1] = "a";
  index.VarValue[1] = "5";
  index.VarName[9] = "b";
  index.VarValue[9] = "20";
  EXPECT_STREQ(index.GetIndexVariable().c_str(), "(5,20)");
  index.VarValue[1] = "";
  EXPECT_STREQ(index.GetIndexVariable().c_str(), "(,20)");
}

TEST(Titles, LongestNameCountsBytes) {
  SIndex index("N", kIndicatorIndex);
  index.ExpName[0] = "a name without a formula";
  EXPECT_EQ(index.GetMaxExpNameLength(), 0);
  index.Expression[3] = "c";
  index.ExpName[3] = "이평"_kr;
  EXPECT_EQ(index.GetMaxExpNameLength(), 4);
}

TEST(Titles, TitleOfALine) {
  struct Case {
    const char *what;
    int kind;
    int showName;
    int showValue;
    int showSymbol;
    int line;
    const char *title;
  };
  const Case cases[] = {
      {"all", kIndicatorIndex, 1, 1, 1, 0, " KRX MA[0](2.0) "},
      {"no symbol", kIndicatorIndex, 1, 1, 0, 0, " MA[0](2.0) "},
      {"symbol at line 0 alone", kIndicatorIndex, 1, 0, 1, 1, " MA[1] "},
      {"value alone", kIndicatorIndex, 0, 1, 1, 0, "2.0 "},
      {"nothing", kIndicatorIndex, 0, 0, 0, 0, ""},
      {"line without data", kIndicatorIndex, 0, 1, 0, 1, "0.0 "},
      {"fed series have no symbol", kEquityIndex, 1, 1, 1, 0, " 수익곡선 "_kr},
      {"condition", kConditionIndex, 1, 1, 1, 0, " KRX MA "},
      {"condition without name", kConditionIndex, 0, 1, 0, 0, "MA "},
      {"pattern without name", kPatternIndex, 0, 1, 0, 0, "MA 강세패턴 "_kr},
      {"system without name", kSystemIndex, 0, 0, 0, 0, "MA 매수 "_kr},
      {"fed indicator", kFedIndicatorIndex, 1, 1, 1, 0, " (2.0) "},
      {"outside", kIndicatorIndex, 1, 1, 1, 5, ""},
  };
  for (const Case &c : cases) {
    const Chart chart(c.kind);
    EXPECT_STREQ(chart.index.GetExpTitle(c.showName, c.showValue, c.showSymbol, c.line, 1).c_str(), c.title)
        << c.what;
  }
}

TEST(Titles, PriceNameShowsTheOptionsOfTheChartType) {
  struct Case {
    int type;
    const char *name;
  };
  const Case cases[] = {
      {kCandleChart, "KRX"},
      {kCloseLineChart, "KRX"},
      {kVolumeAtPriceChart, "KRX 매물대 수(10) "_kr},
      {kPointAndFigureChart, "KRX 칸전환(3) (0) "_kr},
      {kThreeLineBreakChart, "KRX 칸전환(3) (0) "_kr},
      {kKagiChart, "KRX 최소반전폭(3) "_kr},
      {kCandleVolumeChart, "KRX"},
      {kNetChart, "KRX"},
      {kZigZagChart, "KRX 전환비율(5) "_kr},
      {kMarketProfileChart, "KRX 분간격(30) "_kr},
      {99, "KRX"},
  };
  for (const Case &c : cases) {
    Chart chart;
    chart.Property().PriceChartType = c.type;
    EXPECT_STREQ(chart.index.GetPriceName().c_str(), c.name) << c.type;
  }
  Chart chart;
  chart.Property().PriceChartType = kThreeLineBreakChart;
  chart.Property().BlName1[kThreeLineBreakChart] = 0;
  EXPECT_STREQ(chart.index.GetPriceName().c_str(), "KRX (0) ") << "option 2 is always shown";
  chart.prices[0].SymbolName = "";
  chart.Property().PriceChartType = kFlowChart;
  EXPECT_STREQ(chart.index.GetPriceName().c_str(), "Flow차트"_kr);
}

TEST(Titles, PriceTitle) {
  struct Case {
    int kind;
    int symbols;
    int showName;
    int showValue;
    const char *title;
  };
  const Case cases[] = {
      {kPriceIndex, 1, 1, 1, " KRX 칸전환(3) (0)   "_kr},
      {kPriceIndex, 2, 1, 1, " KRX  "},
      {kFedIndicatorIndex, 2, 1, 0, " KRX 칸전환(3) (0)  "_kr},
      {9, 2, 1, 0, " KRX 칸전환(3) (0)  "_kr},
      {kPriceIndex, 1, 0, 1, "MA "},
      {kPriceIndex, 1, 0, 0, "MA "},
  };
  for (const Case &c : cases) {
    Chart chart(c.kind);
    if (c.symbols > 1) chart.prices.Add();
    chart.index.SetData(&chart.prices, 0);
    chart.Property().PriceChartType = kPointAndFigureChart;
    EXPECT_STREQ(chart.index.GetPriceTitle(c.showName, c.showValue, 2).c_str(), c.title)
        << c.kind << " " << c.symbols << c.showName << c.showValue;
  }
  const Chart chart(kPriceIndex);
  EXPECT_STREQ(chart.index.GetPriceTitle(0, 1, 2).c_str(), "시:0.0 고:0.0 저:0.0 종:12.0 "_kr);
}

TEST(Titles, WithoutPricesThereAreNoPriceTexts) {
  const SIndex index("MA", kIndicatorIndex);
  EXPECT_STREQ(index.GetPriceName().c_str(), "");
  EXPECT_STREQ(index.GetPriceTitle(1, 1, 0).c_str(), "   ");
  EXPECT_STREQ(index.GetPriceTitle(0, 0, 0).c_str(), "MA ");
  EXPECT_STREQ(index.GetExpTitle(1, 1, 1, 0, 0).c_str(), "  MA[0] ");
}

TEST(Titles, LinesOutsideHaveNoNames) {
  const SIndex index("MA", kIndicatorIndex);
  for (const int line : {-1, 5}) {
    EXPECT_TRUE(index.GetExpName(line).IsEmpty());
    EXPECT_TRUE(index.GetExpNameWithVariable(line).IsEmpty());
    EXPECT_TRUE(index.GetExpTitleName(line).IsEmpty());
  }
}

}  // namespace
}  // namespace trovenu
