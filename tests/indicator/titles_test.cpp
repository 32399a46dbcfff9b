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

}  // namespace
}  // namespace trovenu
