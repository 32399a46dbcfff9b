#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>
#include <string>
#include <vector>

#include "tests/formula/bars.h"
#include "tests/formula/engine.h"
#include "tests/formula/random_formula.h"
#include "trovenu/formula/user_function_list.h"
#include "trovenu/indicator/index.h"

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
  Feed(std::uint32_t seed, int bars) : random_(seed), source_(RandomBars(bars + 100, seed)) {
    while (bars-- > 0) Add();
  }
  Bars &Now() { return bars_; }
  void Tick() {
    if (random_() % 3 == 0) {
      for (auto i = random_() % 3 + 1; i > 0; --i) Add();
    } else {
      const double price = bars_.close[bars_.close.GetSize() - 1] + static_cast<int>(random_() % 7) - 3;
      bars_.close.Update(price, 0);
      if (price > bars_.high[bars_.high.GetSize() - 1]) bars_.high.Update(price, 0);
      if (price < bars_.low[bars_.low.GetSize() - 1]) bars_.low.Update(price, 0);
      bars_.volume.Update(1000 + static_cast<int>(random_() % 1000), 0);
    }
  }

 private:
  void Add() {
    const int next = bars_.close.GetSize();
    const auto from = source_.Columns();
    const auto to = bars_.Columns();
    for (std::size_t i = 0; i < to.size(); ++i) to[i]->Add((*from[i])[next]);
  }

  std::mt19937 random_;
  Bars source_, bars_;
};

// After any mixture of updates and new bars the live lines are those of one full calculation.
void ExpectLiveAsReloaded(std::uint32_t seed, int ticks, const std::vector<std::string> &formulas) {
  Feed feed(seed, 60);
  SFunctionList functions = RandomFormula::UserFunctions();
  SIndex live;
  BindTo(live, feed.Now());
  live.SetFunction(&functions);
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
    EXPECT_TRUE(SameValid(live.ExpData[i], whole.ExpData[i]))
        << "slot " << i << ": " << Readable(formulas[i]);
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

// Entry and exit rows are bars; a dot stands for 0, n for NaN.
SVector Signals(const std::string &row) {
  std::vector<double> values;
  for (const char c : row) values.push_back(c == '.' ? 0.0 : c == 'n' ? std::nan("") : 5.0);
  return Series(values);
}

std::string Row(const SVector &series) {
  std::string row;
  for (const double value : Values(series)) row += value == 0.0 ? '.' : std::isnan(value) ? 'n' : 'x';
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
      // NaN is no signal.
      {"nx.nx.", "..nx.x", "nx..x.", "..nx.x"},
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

}  // namespace
}  // namespace trovenu::tests
