#include "trovenu/indicator/starter_set.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <fstream>
#include <iterator>
#include <map>
#include <string>
#include <vector>

#include "tests/formula/bars.h"
#include "trovenu/formula/user_function_list.h"
#include "trovenu/platform/code_page.h"
#include "trovenu/support/korean.h"

namespace trovenu {
namespace {

using tests::Bars;
using tests::Series;

constexpr const char *kFiles[] = {"indicators.txt", "conditions.txt", "systems.txt", "candles.txt"};

std::vector<SIndex> Read(const std::string &file) {
  std::ifstream stream(std::string(TROVENU_DATA_DIR) + "/" + file, std::ios::binary);
  const std::string text{std::istreambuf_iterator<char>(stream), {}};
  bool ok = false;
  std::vector<SIndex> entries;
  StarterFault fault;
  EXPECT_TRUE(ParseStarterSet(CodePageFromUtf8(text, &ok), &entries, &fault))
      << file << ":" << fault.line << ": " << fault.message;
  EXPECT_TRUE(ok) << file << " has a character that the code page lacks";
  return entries;
}

std::vector<SIndex> ShippedSet() {
  std::vector<SIndex> all;
  for (const char *file : kFiles) std::ranges::move(Read(file), std::back_inserter(all));
  return all;
}

std::string NameOf(const SIndex &index) { return Utf8FromCodePage(index.IndexName.c_str(), nullptr); }

// Calculates the formulas of an entry, one after the other, as a chart does.
std::vector<SVector> Evaluate(SIndex &entry, Bars &bars) {
  SCalc calc;
  bars.Bind(calc);
  SFunctionList none;
  calc.SetFunction(&none);
  entry.ConvertExpression();
  std::vector<SVector> results;
  for (const SString &formula : entry.ConvExpression) {
    if (formula.IsEmpty()) continue;
    calc.SetExpression(formula.c_str());
    results.push_back(calc.Calculate());
    EXPECT_EQ(calc.errorCount, 0) << NameOf(entry) << ": " << formula.c_str() << ": "
                                  << Utf8FromCodePage(calc.errorText.c_str(), nullptr);
  }
  return results;
}

TEST(StarterSet, IsWhole) {
  std::map<int, int> entries;
  for (const SIndex &entry : ShippedSet()) {
    ++entries[entry.IndexType];
    const std::string text = Utf8FromCodePage(entry.Description.c_str(), nullptr);
    EXPECT_EQ(std::count(text.begin(), text.end(), '|'), 2) << NameOf(entry) << ": " << text;
    EXPECT_NE(text.find(": "), std::string::npos) << NameOf(entry);
    EXPECT_NE(text.find("출처: "), std::string::npos) << NameOf(entry);
    EXPECT_TRUE(std::ranges::any_of(NameOf(entry), [](char c) { return (c & 0x80) != 0; })) << NameOf(entry);
  }
  EXPECT_GE(entries[kIndicatorIndex], 30);
  EXPECT_GE(entries[kConditionIndex], 10);
  EXPECT_GE(entries[kSystemIndex], 5);
  EXPECT_GE(entries[kCandleIndex], 8);
}

TEST(StarterSet, EveryFormulaHasValuesOnTheShippedBars) {
  Bars daily = tests::DailyBars();
  // The daily bars have neither.
  for (SVector *series : {&daily.openInterest, &daily.amount}) series->SetSize(daily.close.GetSize());
  for (SIndex &entry : ShippedSet()) {
    for (const SVector &result : Evaluate(entry, daily)) {
      EXPECT_LT(result.GetStartIndex(), result.GetSize()) << NameOf(entry);
      for (int i = result.GetStartIndex(); i < result.GetSize(); ++i) {
        ASSERT_LT(std::abs(result[i]), 1e300) << NameOf(entry) << i;
      }
    }
  }
}

// Values worked out by hand for the bars below, at the last of them.
TEST(StarterSet, IndicatorsWorkedOutByHand) {
  struct Case {
    const char *name;
    const char *variables[3];
    int line;
    double value;
  };
  Bars bars;
  bars.close = Series({10, 12, 11, 11, 13});
  bars.open = bars.close;
  bars.high = Series({11, 13, 12, 12, 15});
  bars.low = Series({9, 10, 10, 11, 11});
  bars.volume = Series({100, 200, 300, 400, 500});
  bars.date = Series({20240101, 20240102, 20240103, 20240104, 20240105});
  bars.openInterest = bars.amount = bars.volume;
  const Case cases[] = {
      // True ranges 3, 2, 1, 4 from the second bar: (3 + 2) / 2 = 2.5, 1.75, 2.875.
      {"평균변동폭(ATR)", {"2"}, 0, 2.875},
      // 200 - 300 + 0 + 500.
      {"누적거래량(OBV)", {"2"}, 0, 400},
      // Up 500, down 0, same 400 / 2.
      {"거래량비율(VR)", {"2"}, 0, 700.0 / 200 * 100},
      // Typical prices 11 1/3, 13: all of the last two bars' change is up.
      {"자금흐름지수(MFI)", {"1"}, 0, 100},
      // Typical 11, 34/3, 13: both rise.
      {"자금흐름지수(MFI)", {"2"}, 0, 100},
      {"투자심리선", {"4"}, 0, 50},
      {"변화율(ROC)", {"2"}, 0, 200.0 / 11},
      {"모멘텀", {"4", "1"}, 0, 3},
      {"윌리엄스R", {"5"}, 0, -200.0 / 6},
      {"스토캐스틱 패스트", {"5", "1"}, 0, 400.0 / 6},
      {"이격도", {"2", "2"}, 0, 1300.0 / 12},
      // Day before: 12, 11, 11.
      {"피봇", {}, 0, 34.0 / 3},
      {"피봇", {}, 1, 68.0 / 3 - 11},
      {"피봇", {}, 4, 34.0 / 3 - 1},
      {"돈치안채널", {"3"}, 1, 12.5},
      // Middle of the last two closes 12, deviation 1.
      {"볼린저밴드", {"2", "3"}, 0, 15},
      {"볼린저밴드", {"2", "3"}, 2, 9},
      {"엔벨로프", {"2", "10"}, 0, 13.2},
      // The line ends at 38 / 3 and misses 11, 11, 13 by a third, two thirds and a third.
      {"회귀채널", {"3", "2"}, 1, 38.0 / 3 + 2 * std::sqrt(2.0 / 3)},
      // Buying 2 and range 4 in the last bar, 0 and 1 in the one before, 1 and 2, 2 and 3.
      {"얼티미트오실레이터", {"1", "2", "3"}, 0, (4 * 2.0 / 4 + 2 * 2.0 / 5 + 3.0 / 7) / 7 * 100},
      // A rise of 3, no fall, a range of 4.
      {"방향운동지수(DMI)", {"1"}, 0, 75},
      {"방향운동지수(DMI)", {"1"}, 1, 0},
      {"방향운동지수(DMI)", {"1"}, 2, 100},
  };
  std::vector<SIndex> indicators = Read("indicators.txt");
  for (const Case &c : cases) {
    const auto found = std::ranges::find_if(indicators, [&](const SIndex &i) { return NameOf(i) == c.name; });
    ASSERT_NE(found, indicators.end()) << c.name;
    SIndex entry = *found;
    for (int i = 0; i < 3 && c.variables[i] != nullptr; ++i) entry.VarValue[i] = c.variables[i];
    const std::vector<SVector> results = Evaluate(entry, bars);
    EXPECT_NEAR(results[static_cast<std::size_t>(c.line)][4], c.value, 1e-9) << c.name << ", line " << c.line;
  }
}

struct Candle {
  double open, high, low, close;
};

// Each pattern fits a textbook example of its own, with a long fall or rise before it, and the scan gives it
// the last word there.
TEST(StarterSet, CandlePatternsFitTheirExamples) {
  struct Case {
    const char *name;
    double before;
    double step;
    std::vector<Candle> candles;
  };
  const Case cases[] = {
      {"도지", 100, 0, {{100, 103, 97, 100}}},
      {"망치형", 100, -2, {{80, 82, 70, 81.5}}},
      {"유성형", 100, 2, {{121, 130, 120, 120.5}}},
      {"상승장악형", 100, -2, {{80, 80.5, 75, 76}, {75, 83, 74, 82}}},
      {"하락장악형", 100, 2, {{120, 125, 119, 124}, {125, 126, 116, 117}}},
      {"샛별형", 100, -2, {{80, 81, 69, 70}, {68, 70, 66, 69}, {70, 79, 69, 78}}},
      {"석별형", 100, 2, {{120, 131, 119, 130}, {132, 134, 130, 131}, {130, 131, 120, 121}}},
      {"적삼병", 100, 0, {{100, 106, 99, 105}, {103, 110, 102, 109}, {107, 114, 106, 113}}},
  };
  std::vector<SIndex> patterns = Read("candles.txt");
  SFunctionList list;
  for (const SIndex &pattern : patterns) {
    SFunction function;
    function.IndexName = pattern.IndexName;
    function.Expression = pattern.Expression[0];
    std::copy(std::begin(pattern.VarName), std::end(pattern.VarName), function.VarName);
    std::copy(std::begin(pattern.VarValue), std::end(pattern.VarValue), function.VarValue);
    list.Add(function);
  }
  for (const Case &c : cases) {
    Bars bars;
    const auto add = [&bars](const Candle &candle) {
      bars.open.Add(candle.open);
      bars.high.Add(candle.high);
      bars.low.Add(candle.low);
      bars.close.Add(candle.close);
    };
    for (int i = 0; i < 20; ++i) {
      const double close = c.before + c.step * 0.5 * i;
      add({close - 0.5, close + 0.7, close - 0.7, close});
    }
    // The examples continue the fall or rise where it ends.
    const double shift = c.before + c.step * 10 - (c.step == 0 ? 100 : c.step < 0 ? 80 : 120);
    for (const Candle &x : c.candles) add({x.open + shift, x.high + shift, x.low + shift, x.close + shift});
    for (SVector *series : {&bars.volume, &bars.date, &bars.openInterest, &bars.amount}) {
      series->SetSize(bars.close.GetSize());
    }
    SIndex scan("", kCandleIndex);
    SFunctionList none;
    scan.SetVariable(bars.close, bars.open, bars.high, bars.low, bars.volume, bars.date, bars.openInterest,
                     bars.amount);
    scan.SetFunction(&none);
    scan.SetCandle(&list);
    scan.Calc();
    const int last = bars.close.GetSize() - 1;
    const auto mark = static_cast<int>(scan.ExpData[0][last]);
    EXPECT_EQ(Utf8FromCodePage(list[mark].IndexName.c_str(), nullptr), c.name);
    EXPECT_EQ(scan.ExpData[0][10], -1.0) << c.name;
  }
}

TEST(StarterSet, ReadsEveryKindOfEntry) {
  constexpr const char *kText =
      "# a remark\n"
      "indicator  two words \r\n"
      "english En\nkorean Ko\nabout Ab\nsource So\nvariable A 1\nvariable B 2\n"
      "line first %A%\nformula avg(c,\n  A)\n\tformula goes on\nform 1\nwidth 3\nbase 20 80\n\n"
      "line second\nformula c\npattern P\nbull c>o\nbear c<o\n"
      "function F\nvariable x\nvariable y\nformula x+y\n"
      "condition two words\nformula c>1\n"
      "system S\nvariable A 1 2 3 4\nopen-long c\nclose-long o\nopen-short h\nclose-short l";
  std::vector<SIndex> entries;
  StarterFault fault;
  ASSERT_TRUE(ParseStarterSet(kText, &entries, &fault)) << fault.line << ": " << fault.message;
  ASSERT_EQ(entries.size(), 5U);
  const std::pair<SString, const char *> cases[] = {
      {entries[0].IndexName, "two words"},  {entries[0].Description, "Ko | En: Ab | 출처: So"_kr},
      {entries[0].VarName[1], "B"},         {entries[0].VarValue[1], "2"},
      {entries[0].ExpName[0], "first %A%"}, {entries[0].Expression[0], "avg(c, A) formula goes on"},
      {entries[0].YValue[1], "80"},         {entries[0].Expression[1], "c"},
      {entries[1].Expression[1], "c<o"},    {entries[2].VarName[1], "y"},
      {entries[3].IndexName, "two words"},  {entries[4].VarIncrement[0], "4"},
      {entries[4].Expression[3], "l"}};
  for (const auto &[value, expected] : cases) EXPECT_STREQ(value.c_str(), expected);
  EXPECT_EQ(entries[0].LineWidth[0], 3);
  EXPECT_EQ(entries[3].IndexType, kConditionIndex);
}

TEST(StarterSet, FaultsNameTheirLine) {
  struct Case {
    const char *text;
    int line;
  };
  const Case cases[] = {
      {"formula c", 1},
      {"condition", 1},
      {"condition a\n\nformula", 3},
      {"condition a\nkorean b", 1},
      {"condition a\nformula c\ncondition b\n\ncondition c\nformula c", 3},
      {"condition a\nformula c\ncondition a\nformula c", 3},
      {"condition a\nformula c\nformula o", 3},
      {"condition a\nline x\nformula c", 2},
      {"indicator a\nformula c", 2},
      {"indicator a\nform 1", 2},
      {"indicator a\nline x\nformula c\nwidth 1.5", 4},
      {"indicator a\nline x\nformula c\ncolor 4294967295", 4},
      {"indicator a\nline x\nformula c\nlog 2", 4},
      {"indicator a\nline x\nformula c\nleast low", 4},
      {"system a\ncolor 1", 2},
      {"condition a\nscale 1", 2},
      {"indicator a\nline x\nformula c\nbase 1 2 3 4 5 6", 4},
      {"indicator a\nline 1\nline 2\nline 3\nline 4\nline 5\nline 6", 7},
      {"condition a\nvariable x", 2},
      {"condition a\nvariable x 1 2", 2},
      {"system a\nvariable x 1 2 3", 2},
      {"function a\nvariable a\nvariable a\nvariable a\nvariable a\nvariable a\nvariable a\nvariable a\n"
       "variable a\nvariable a\nvariable a\nvariable a",
       12},
      {"condition a\nunknown b", 2},
  };
  for (const Case &c : cases) {
    std::vector<SIndex> entries(1);
    StarterFault fault;
    EXPECT_FALSE(ParseStarterSet(c.text, &entries, &fault)) << c.text;
    EXPECT_EQ(fault.line, c.line) << c.text << ": " << fault.message;
    EXPECT_FALSE(fault.message.empty());
    EXPECT_EQ(entries.size(), 1U);
    EXPECT_FALSE(ParseStarterSet(c.text, &entries, nullptr));
  }
  const std::string longest = "condition a\nformula " + std::string(kExpressionBytes - 1, 'c');
  std::vector<SIndex> entries;
  EXPECT_TRUE(ParseStarterSet(longest, &entries, nullptr));
  EXPECT_FALSE(ParseStarterSet(longest + "c", &entries, nullptr));
}

}  // namespace
}  // namespace trovenu
