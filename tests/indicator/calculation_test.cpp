#include <gtest/gtest.h>

#include <cmath>
#include <random>
#include <string>
#include <vector>

#include "tests/formula/bars.h"
#include "tests/formula/random_formula.h"
#include "trovenu/formula/user_function_list.h"
#include "trovenu/indicator/index.h"
#include "trovenu/support/block_pool.h"

namespace trovenu::tests {
namespace {

void BindTo(SIndex &index, Bars &bars) {
  index.SetVariable(bars.close, bars.open, bars.high, bars.low, bars.volume, bars.date, bars.openInterest,
                    bars.amount);
}

std::vector<double> Values(const SVector &series) {
  std::vector<double> values;
  for (int i = 0; i < series.GetSize(); ++i) values.push_back(series[i]);
  return values;
}

Bars SmallBars() {
  Bars bars;
  bars.close = Series({10, 12, 11, 13, 9, 14});
  bars.open = Series({11, 11, 11, 11, 11, 11});
  bars.high = Series({12, 13, 12, 14, 12, 15});
  bars.low = Series({9, 10, 10, 10, 8, 10});
  bars.volume = Series({1, 2, 3, 4, 5, 6});
  bars.date = Series({20240102, 20240103, 20240104, 20240105, 20240108, 20240109});
  return bars;
}

TEST(Calc, EvaluatesItsFormulasOnOneEngine) {
  Bars bars = SmallBars();
  SIndex index;
  BindTo(index, bars);
  index.VarName[0] = "n";
  index.VarValue[0] = "2";
  index.SetExpression(0, "x = avg(c, n)");
  index.SetExpression(3, "x * 0 + 5");
  index.Calc();
  EXPECT_EQ(index.ExpData[0].GetStartIndex(), 1);
  EXPECT_EQ(index.ExpData[0][1], 11);
  EXPECT_EQ(index.ExpData[3].GetStartIndex(), 1);
  EXPECT_EQ(index.ExpData[3][5], 5);
  // A slot without a formula keeps what it has.
  EXPECT_EQ(index.ExpData[1].GetSize(), 0);
}

TEST(Calc, SignalsBecomeTheCloseOfTheirBar) {
  Bars bars = SmallBars();
  for (const int kind : {kConditionIndex, kSystemIndex, kIndicatorIndex, kPatternIndex}) {
    SIndex index("", kind);
    BindTo(index, bars);
    index.SetExpression(0, "c > o");
    index.Calc();
    const bool marked = kind == kConditionIndex || kind == kSystemIndex;
    EXPECT_EQ(Values(index.ExpData[0]),
              marked ? (std::vector<double>{0, 12, 0, 13, 0, 14}) : (std::vector<double>{0, 1, 0, 1, 0, 1}));
  }
}

TEST(Calc, SeriesFromOutsideStayAsTheyAre) {
  Bars bars = SmallBars();
  for (const int kind : {kFedIndex, kEquityIndex, kFedIndicatorIndex}) {
    SIndex index("", kind);
    BindTo(index, bars);
    index.SetExpression(0, "c");
    index.AddData(0, 1);
    index.AddData(5, 1);
    index.UpdateData(0, 2);
    index.UpdateData(1, 2);
    index.Calc();
    index.CalcLast();
    EXPECT_EQ(Values(index.ExpData[0]), std::vector<double>{2});
    EXPECT_EQ(index.ExpData[1].GetSize(), 0);
  }
}

TEST(Calc, RecordsTheFunctionsOfTheLastFullCalculation) {
  Bars bars = SmallBars();
  SFunctionList functions;
  SFunction function;
  function.IndexName = "twice";
  function.VarName[0] = "x";
  function.Expression = "x * 2";
  functions.Add(function);
  SIndex index;
  BindTo(index, bars);
  index.SetFunction(&functions);
  index.SetExpression(0, "twice(c)");
  index.Calc();
  index.Calc();
  index.CalcLast();
  ASSERT_EQ(index.FuncHistory.GetSize(), 1);
  EXPECT_STREQ(index.FuncHistory[0].c_str(), "twice");
  EXPECT_EQ(index.ExpData[0][0], 20);
}

TEST(Calc, WithoutSeriesNothingIsCalculated) {
  SIndex index("", kConditionIndex);
  index.SetExpression(0, "avg(c, 3)");
  index.Calc();
  index.CalcLast();
  index.CalcLast();
  EXPECT_EQ(index.ExpData[0].GetSize(), 0);
}

TEST(CalcLast, TakesTheTailOnceItHasABase) {
  Bars bars = SmallBars();
  SIndex index;
  BindTo(index, bars);
  index.SetExpression(0, "avg(c, 3)");
  index.SetExpression(1, "rsi(2)");
  index.Calc();
  EXPECT_EQ(index.CalcCount[0], -1);
  index.CalcLast();
  EXPECT_EQ(index.CalcCount[0], 0);
  EXPECT_EQ(index.CalcStart[0], 2);
  // What looks at the whole past never gets a base.
  EXPECT_EQ(index.CalcCount[1], -1);

  // The tail redoes the last old bar and adds the new ones, and nothing else.
  index.ExpData[0][3] = -7;
  bars.close.Update(20, 0);
  bars.close.Add(30);
  bars.close.Add(40);
  for (SVector *series : {&bars.open, &bars.high, &bars.low, &bars.volume, &bars.date}) {
    series->Add(1);
    series->Add(1);
  }
  index.CalcLast();
  EXPECT_EQ(Values(index.ExpData[0]), (std::vector<double>{0, 0, 11, -7, 11, 14, 59.0 / 3, 30}));
  EXPECT_EQ(index.CalcCount[0], 0);

  index.SetCalcInit();
  EXPECT_EQ(index.CalcStart[0], -1);
  index.CalcLast();
  EXPECT_EQ(index.ExpData[0][3], 12);
}

// Required: after a full pass every bar is marked, also below the start index.
TEST(CalcLast, MarksTheBarsThatItHasRedone) {
  Bars bars = SmallBars();
  SIndex index("", kConditionIndex);
  BindTo(index, bars);
  index.SetExpression(0, "ref(c, 1) < c");
  index.CalcLast();
  EXPECT_EQ(Values(index.ExpData[0]), (std::vector<double>{0, 12, 0, 13, 0, 14}));
  bars.close.Update(8, 0);
  index.CalcLast();
  EXPECT_EQ(index.ExpData[0][5], 0);
  bars.close.Add(10);
  index.CalcLast();
  EXPECT_EQ(index.ExpData[0][6], 10);
}

bool SameValid(const SVector &live, const SVector &whole) {
  if (live.GetSize() != whole.GetSize()) return false;
  for (int i = std::max(whole.GetStartIndex(), 0); i < whole.GetSize(); ++i) {
    if (!SameNumber(live[i], whole[i])) return false;
  }
  return true;
}

// A feed that changes the newest bar and adds bars, and after each tick nothing but `CalcLast`.
class Feed {
 public:
  explicit Feed(std::uint32_t seed, int bars) : random_(seed) {
    for (int i = 0; i < bars; ++i) Add();
  }
  Bars &Now() { return bars_; }
  void Tick() {
    if (Uniform(3) == 0) {
      for (int i = Uniform(3); i >= 0; --i) Add();
    } else {
      const double price = bars_.close[bars_.close.GetSize() - 1] + Uniform(7) - 3;
      bars_.close.Update(price, 0);
      if (price > bars_.high[bars_.high.GetSize() - 1]) bars_.high.Update(price, 0);
      if (price < bars_.low[bars_.low.GetSize() - 1]) bars_.low.Update(price, 0);
      bars_.volume.Update(1000 + Uniform(1000), 0);
    }
  }

 private:
  int Uniform(int n) { return static_cast<int>(random_() % static_cast<unsigned>(n)); }
  void Add() {
    const int n = bars_.close.GetSize();
    const double before = n > 0 ? bars_.close[n - 1] : 500;
    const double open = before + Uniform(5) - 2;
    const double close = open + Uniform(9) - 4;
    bars_.open.Add(open);
    bars_.close.Add(close);
    bars_.high.Add(std::max(open, close) + Uniform(3));
    bars_.low.Add(std::min(open, close) - Uniform(3));
    bars_.volume.Add(1000 + Uniform(1000));
    bars_.date.Add(20240102000000.0 + (n / 50) * 1000000.0 + 90000 + (n % 50) * 100);
    bars_.openInterest.Add(10000 + Uniform(100));
    bars_.amount.Add(5000 + Uniform(100));
  }

  std::mt19937 random_;
  Bars bars_;
};

// After any mixture of updates and new bars the live lines are those of one full calculation.
void ExpectLiveAsReloaded(std::uint32_t seed, int ticks, const std::vector<std::string> &formulas) {
  Feed feed(seed, 60);
  SIndex live;
  BindTo(live, feed.Now());
  for (std::size_t i = 0; i < formulas.size(); ++i)
    live.SetExpression(static_cast<int>(i), formulas[i].c_str());
  for (int tick = 0; tick < ticks; ++tick) {
    live.CalcLast();
    feed.Tick();
  }
  live.CalcLast();
  SIndex whole(live);
  whole.Calc();
  for (std::size_t i = 0; i < formulas.size(); ++i) {
    EXPECT_TRUE(SameValid(live.ExpData[i], whole.ExpData[i])) << "slot " << i << ": " << formulas[i];
  }
}

TEST(LiveEqualsReloaded, ForRandomFormulas) {
  for (std::uint32_t seed = 1; seed <= 60; ++seed) {
    RandomFormula random(seed, RandomFormula::Words::TailCalls);
    std::vector<std::string> formulas;
    for (int i = 0; i < kExpressions; ++i) formulas.push_back(random.Next());
    SCOPED_TRACE(seed);
    ExpectLiveAsReloaded(seed, 25, formulas);
  }
}

TEST(LiveEqualsReloaded, WhereFormulasShareVariables) {
  const std::vector<std::vector<std::string>> sets = {
      {"x = avg(c, 10)", "avg(x, 20)", "y = x - c", "stdev(y, 15)", "y + x(40)"},
      // A later formula that needs all bars.
      {"x = avg(c, 5)", "pvi(x) + sum(x)", "x"},
      {"x = avg(c, 5)", "y = highest(x, 30)", "BarsSince(y > c) + y"},
      {"x = c", "x = x + avg(x, 9)", "x = x + avg(x, 9)", "x + ref(x, 30)"},
      {"m = 3", "avg(c, m)", "ma(c, 4, m)"},
  };
  for (std::size_t i = 0; i < sets.size(); ++i) {
    SCOPED_TRACE(i);
    for (std::uint32_t seed = 1; seed <= 5; ++seed) ExpectLiveAsReloaded(seed, 30, sets[i]);
  }
}

TEST(LiveEqualsReloaded, WhereUserFunctionsChangeVariables) {
  SFunctionList functions;
  SFunction function;
  function.IndexName = "smooth";
  function.VarName[0] = "x";
  function.Expression = "last = avg(x, 12); avg(last, 7)";
  functions.Add(function);
  Feed feed(7, 80);
  SIndex live;
  BindTo(live, feed.Now());
  live.SetFunction(&functions);
  live.SetExpression(0, "smooth(c)");
  live.SetExpression(1, "avg(last, 25)");
  live.SetExpression(2, "smooth(h) - smooth(l)");
  for (int tick = 0; tick < 40; ++tick) {
    live.CalcLast();
    feed.Tick();
  }
  live.CalcLast();
  SIndex whole(live);
  whole.Calc();
  for (int i = 0; i < 3; ++i) EXPECT_TRUE(SameValid(live.ExpData[i], whole.ExpData[i])) << i;
}

TEST(CalcLast, ATickTakesNoNewBlock) {
  Bars bars;
  for (SVector *series : bars.Columns()) {
    for (int i = 0; i < 50000; ++i) series->Add(100 + i % 17);
  }
  SIndex index;
  BindTo(index, bars);
  index.SetExpression(0, "avg(c, 20)");
  index.SetExpression(1, "x = stdev(c, 20); (c - avg(c, 20)) / x");
  for (int i = 0; i < 3; ++i) index.CalcLast();
  const auto before = AllocatedBlockCount();
  for (int i = 0; i < 100; ++i) {
    bars.close.Update(100 + i, 0);
    index.CalcLast();
  }
  EXPECT_EQ(AllocatedBlockCount(), before);
}

// Entry and exit rows are bars; a dot stands for 0.
SVector Signals(const std::string &row) {
  std::vector<double> values;
  for (const char c : row) values.push_back(c == '.' ? 0.0 : 5.0);
  return Series(values);
}

std::string Row(const SVector &series) {
  std::string row;
  for (const double value : Values(series)) row += value == 0.0 ? '.' : 'x';
  return row;
}

TEST(PreProcess, EntriesAndExitsAlternate) {
  struct {
    const char *entry;
    const char *exit;
    const char *entryAfter;
    const char *exitAfter;
  } const cases[] = {
      {"x..x..", "..x..x", "x..x..", "..x..x"},
      // Two entries without an exit: the first stays. An exit before the first entry, and on its bar, goes.
      {".xx..x", "xx..x.", ".x...x", "....x."},
      // Entry and exit on a bar while the position is open: the exit counts.
      {"x.x.", "..x.", "x...", "..x."},
      // Entry and exit on a bar while it is closed: the entry counts.
      {"x..x..", ".x.x.x", "x..x..", ".x...x"},
      {"......", "x..x..", "......", "......"},
      {"x.....", "......", "x.....", "......"},
      // Required: behind the common length an entry opens nothing, so both stay while the position is closed.
      {"x..xx.x", ".x", "x..xx.x", ".x"},
      {"x..xx.x", "..", "x......", ".."},
      {"x.", ".x.x.x", "x.", ".x...."},
      {"x.", "...x.x", "x.", "...x.."},
  };
  for (const auto &test : cases) {
    SIndex index("", kSystemIndex);
    index.ExpData[0] = index.ExpData[2] = Signals(test.entry);
    index.ExpData[1] = index.ExpData[3] = Signals(test.exit);
    index.PreProcess();
    for (const int i : {0, 2}) {
      EXPECT_EQ(Row(index.ExpData[i]), test.entryAfter) << test.entry << ' ' << test.exit;
      EXPECT_EQ(Row(index.ExpData[i + 1]), test.exitAfter) << test.entry << ' ' << test.exit;
    }
  }
}

TEST(PreProcess, IsForTradingSystemsThatWantIt) {
  for (const int kind : {kConditionIndex, kSystemIndex}) {
    SIndex index("", kind);
    index.BlPreProcess = kind == kSystemIndex ? 0 : 1;
    index.ExpData[0] = Signals("xx");
    index.ExpData[1] = Signals("..");
    index.PreProcess();
    EXPECT_EQ(Row(index.ExpData[0]), "xx");
  }
}

}  // namespace
}  // namespace trovenu::tests
