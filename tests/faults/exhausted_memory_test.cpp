// Memory that runs out in the middle of what a chart does all day: it is reported, nothing throws, what the
// host has bound stays as it was, and the same objects work once there is memory again.

#include <gtest/gtest.h>

#include <memory>
#include <new>
#include <string>
#include <vector>

#include "tests/formula/bars.h"
#include "tests/formula/engine.h"
#include "tests/support/series_tools.h"
#include "trovenu/backtest/simulation.h"
#include "trovenu/formula/user_function_list.h"
#include "trovenu/indicator/index.h"
#include "trovenu/price/price_data.h"
#include "trovenu/support/block_pool.h"

namespace trovenu::tests {
namespace {

constexpr int kBars = 3000;

// A chart with what it draws; `Draw` is what memory runs out in.
class Chart {
 public:
  Chart() : bars(RandomBars(kBars, 1)) {}
  virtual ~Chart() = default;
  Chart(const Chart &) = delete;
  Chart &operator=(const Chart &) = delete;
  virtual void Draw() = 0;
  // What the host does once it has heard of it.
  virtual void DrawAgain() { Draw(); }
  virtual std::vector<SVector> Results() const = 0;

  Bars bars;
};

class Indicator : public Chart {
 public:
  explicit Indicator(int type = kIndicatorIndex) : index("", type) {
    index.SetVariable(bars.close, bars.open, bars.high, bars.low, bars.volume, bars.date, bars.openInterest,
                      bars.amount);
    index.SetFunction(&functions);
  }
  void Draw() override { index.Calc(); }
  std::vector<SVector> Results() const override { return {index.ExpData, index.ExpData + kExpressions}; }

  SFunctionList functions;
  SIndex index;
};

struct Lines : Indicator {
  Lines() {
    char spread[] = "spread|avg(x,5)-avg(x,20)|x";
    functions.SetExpressionWithVariable(spread);
    index.SetExpression(0, "a=avg(c,5);a-stdev(a*2,20)");
    index.SetExpression(1, "spread(c)*a");
    index.SetExpression(2, "if(crossup(c,a),highest(h,9),rsi(9))");
    index.SetExpression(3, "compressc(day)+shift(sum(v),2)");
    index.SetExpression(4, "x=c;zigzag(3)+valuewhen(2,c>o,pow(c,2))+(x=1)+cci(9)");
  }
};

struct Tick : Lines {
  Tick() {
    index.Calc();
    index.CalcLast();
    for (SVector *series : bars.Columns()) {
      for (int i = 0; i < 900; ++i) series->Add((*series)[series->GetSize() - 1]);
    }
  }
  void Draw() override { index.CalcLast(); }
};

struct Patterns : Indicator {
  Patterns() : Indicator(kCandleIndex) {
    for (const char *pattern : {"c>o", "c>ref(h,1)", "l<lowest(l,5)(1)"}) {
      SFunction function;
      function.Expression = pattern;
      functions.Add(function);
    }
    index.SetCandle(&functions);
  }
};

struct Search : Indicator {
  Search() : Indicator(kConditionIndex) { index.SetExpression(0, "crossup(avg(c,5),avg(c,20))||rsi(9)<30"); }
  void Draw() override {
    index.GetMinDataSize();
    index.CalcSrch();
  }
};

struct BackTest : Chart {
  BackTest() {
    SIndex rules("", kSystemIndex);
    rules.SetExpression(0, "crossup(c,avg(c,5))");
    rules.SetExpression(1, "crossdown(c,avg(c,5))");
    test.SetIndex(rules);
    test.SetVariablePointer(&bars.close, &bars.open, &bars.high, &bars.low, &bars.volume, &bars.date,
                            &bars.openInterest, &bars.amount);
    test.TickSize = 0.05;
    test.Setting.BlMoneyManagementStop = test.Setting.BlRiskTrailingStop = 1;
  }
  void Draw() override {
    test.SetVariableToIndex();
    test.Index.Calc();
    test.TradeRules();
    equity = SVector();
    test.CalcEquity(&equity, 0);
  }
  std::vector<SVector> Results() const override {
    std::vector<SVector> results(test.History, test.History + kTradeColumns);
    results.push_back(equity);
    return results;
  }

  SSimulation test;
  SVector equity;
};

struct Feed : Chart {
  void Draw() override {
    for (int i = 0; i < kBars; ++i) {
      for (int code = 0; code < SPriceData::kBarFields; ++code) data.AddData(code, i + code);
    }
    for (int i = 0; i < kBars; ++i) {
      for (int code = 0; code < SPriceData::kBarFields; ++code) data.InsertData(code, i - code);
    }
    data.InsertDataEnd();
  }
  void DrawAgain() override {
    data.ClearTempData();
    data.ClearData();
    Draw();
  }
  std::vector<SVector> Results() const override { return {data.close, data.open, data.volume, data.amount}; }

  SPriceData data;
};

template <class Kind>
void ExpectSurvivesEveryRefusal() {
  std::vector<SVector> expected;
  unsigned long long blocks = 0;
  OnFreshThread([&] {
    Kind chart;
    blocks = AllocatedBlockCount();
    chart.Draw();
    blocks = AllocatedBlockCount() - blocks;
    expected = chart.Results();
  });
  EXPECT_GT(blocks, 1U);
  for (int nth = 1; nth <= static_cast<int>(blocks); ++nth) {
    SCOPED_TRACE(nth);
    OnFreshThread([&] {
      Kind chart;
      const Bars before = chart.bars;
      ErrorTrap trap;
      FailBlockAllocation(nth);
      EXPECT_NO_THROW(chart.Draw());
      FailBlockAllocation(0);
      EXPECT_GE(trap.Count(), 1);
      EXPECT_EQ(trap.Last(), "Out of memory trying to create SVector\n");
      for (const SVector &result : chart.Results()) ExpectSound(result);
      ExpectSameSeries(chart.bars.close, before.close);
      ExpectSameSeries(chart.bars.volume, before.volume);
      chart.DrawAgain();
      const std::vector<SVector> results = chart.Results();
      for (std::size_t i = 0; i < results.size(); ++i) {
        SCOPED_TRACE("result " + std::to_string(i));
        ExpectSameSeries(results[i], expected[i]);
      }
    });
    if (testing::Test::HasFailure()) return;
  }
}

TEST(ExhaustedMemory, WhatAChartDrawsComesBack) {
  ExpectSurvivesEveryRefusal<Lines>();
  ExpectSurvivesEveryRefusal<Tick>();
  ExpectSurvivesEveryRefusal<Patterns>();
  ExpectSurvivesEveryRefusal<Search>();
}

TEST(ExhaustedMemory, ABackTestCanBeRunAgain) { ExpectSurvivesEveryRefusal<BackTest>(); }

TEST(ExhaustedMemory, DataCanBeFilledInAgain) { ExpectSurvivesEveryRefusal<Feed>(); }

TEST(ExhaustedMemory, AHandlerThatThrowsStopsTheFormulaAlone) {
  for (const bool isTail : {false, true}) {
    OnFreshThread([&] {
      Engine engine(RandomBars(kBars, 1));
      engine.bars.close.SetStartIndex(3);
      SVector::SetErrorHandler([](const char *) { throw std::bad_alloc(); });
      FailBlockAllocation(1);
      const SVector result =
          isTail ? engine.Calculate("y=2;(c+o)*2;x=1", 100) : engine.Calculate("y=2;(c+o)*2;x=1");
      FailBlockAllocation(0);
      SVector::SetErrorHandler(nullptr);
      EXPECT_EQ(result.GetSize(), 0);
      EXPECT_EQ(engine.calc.errorCount, 1);
      EXPECT_EQ(Readable(engine.Message()), "메모리가 부족합니다.");
      EXPECT_EQ(*engine.calc.readPointer, '\0');
      EXPECT_EQ(engine.bars.close.GetStartIndex(), 3);
      EXPECT_EQ(engine.calc.Look("x", 0), nullptr);
      EXPECT_EQ(engine.Calculate("c+o+y").GetSize(), kBars);
      EXPECT_EQ(engine.calc.errorCount, 0);
    });
  }
}

}  // namespace
}  // namespace trovenu::tests
