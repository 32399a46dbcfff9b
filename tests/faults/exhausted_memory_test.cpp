// Memory that runs out in the middle of what a chart does all day: it is reported, nothing throws, what the
// host has bound stays as it was, and the same objects work once there is memory again.

#include <gtest/gtest.h>

#include <memory>
#include <new>
#include <string>
#include <utility>
#include <vector>

#include "tests/chart_types/chart_case.h"
#include "tests/formula/bars.h"
#include "tests/formula/engine.h"
#include "tests/platform/temp_folder.h"
#include "tests/support/series_tools.h"
#include "trovenu/backtest/optimiser.h"
#include "trovenu/formula/user_function_list.h"
#include "trovenu/indicator/index.h"
#include "trovenu/price/price_data_list.h"
#include "trovenu/support/block_pool.h"

namespace trovenu::tests {
namespace {

constexpr int kBars = 3000;

// Bars, and what is drawn of them; memory runs out in `Draw`.
class Drawing {
 public:
  Drawing() : bars(RandomBars(kBars, 1)) {}
  virtual ~Drawing() = default;
  Drawing(const Drawing &) = delete;
  Drawing &operator=(const Drawing &) = delete;
  virtual void Draw() = 0;
  // What the host does once it has heard of it.
  virtual void DrawAgain() { Draw(); }
  virtual std::vector<SVector> Results() const = 0;
  // Whether each result is whole or empty after a refusal.
  virtual bool IsAllOrNothing() const { return false; }

  Bars bars;
};

class Indicator : public Drawing {
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

struct BackTest : Drawing {
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

// Over bars of its own, three to one.
struct CompressedBackTest : BackTest {
  void Draw() override {
    test.SetVariable(bars.close, bars.open, bars.high, bars.low, bars.volume, bars.date, bars.openInterest,
                     bars.amount);
    test.CompressData(3);
    BackTest::Draw();
    test.CalcProfitLoss();
  }
  std::vector<SVector> Results() const override {
    std::vector<SVector> results = BackTest::Results();
    results.push_back(test.Index.ExpData[kRunningProfit]);
    return results;
  }
};

struct ValuesSearch : BackTest {
  ValuesSearch() {
    test.Index.SetExpression(0, "crossup(c,avg(c,n))");
    test.Index.VarName[0] = "n";
    test.Index.VarStart[0] = "5";
    test.Index.VarEnd[0] = "7";
    test.Index.VarIncrement[0] = "1";
  }
  void Draw() override {
    SSimulationMain search(&test, SSimulationMain::Variables, folder.Path().c_str());
    tagOPVARTHREADINFO info;
    EXPECT_EQ(search.Calc(&info), 1U);
    EXPECT_EQ(info.Current, 2);
  }

  TempFolder folder{TempFolder::Place::InMemory};
};

struct Feed : Drawing {
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
  std::vector<SVector> Results() const override {
    return {data.close,  data.open, data.high,         data.low,
            data.volume, data.date, data.openInterest, data.amount};
  }

  SPriceData data;
};

// A list that grows moves its symbols.
struct Symbols : Drawing {
  void Draw() override {
    list.Clear();
    SPriceData symbol;
    symbol.close = bars.close;
    symbol.date = bars.date;
    for (int i = 0; i < 3; ++i) list.Add(symbol);
    copy = list;
  }
  std::vector<SVector> Results() const override { return {list[2].close, copy[0].date, copy[2].close}; }

  SPriceDataList list;
  SPriceDataList copy;
};

// One of the charts without a time axis.
class OtherChart : public Drawing {
 public:
  explicit OtherChart(std::string calculator)
      : calculator_(std::move(calculator)), chart_(Elements(bars.close)) {
    chart_.index.VarValue[0] = chart_.index.VarValue[1] = "2";
  }
  void Draw() override { chart_.Run(calculator_); }
  void DrawAgain() override {
    // The counter-clock appends to what there is.
    for (SVector &series : chart_.index.ExpData) series.ClearData();
    Draw();
  }
  std::vector<SVector> Results() const override {
    return {chart_.index.ExpData, chart_.index.ExpData + kExpressions};
  }
  bool IsAllOrNothing() const override { return true; }

 private:
  std::string calculator_;
  Chart chart_;
};

template <class Kind, class... Arguments>
void ExpectSurvivesEveryRefusal(Arguments... arguments) {
  std::vector<SVector> expected;
  OnFreshThread([&] {
    Kind whole(arguments...);
    whole.Draw();
    expected = whole.Results();
  });
  bool refused = true;
  for (int nth = 1; refused; ++nth) {
    SCOPED_TRACE("block " + std::to_string(nth));
    OnFreshThread([&] {
      Kind drawing(arguments...);
      Bars before = drawing.bars;
      ErrorTrap trap;
      const unsigned long long refusals = RefusedBlockCount();
      FailBlockAllocation(nth);
      EXPECT_NO_THROW(drawing.Draw());
      FailBlockAllocation(0);
      refused = RefusedBlockCount() != refusals;
      EXPECT_EQ(trap.Count(), refused ? 1 : 0);
      if (!refused) return;
      EXPECT_EQ(trap.Last(), "Out of memory trying to create SVector\n");
      std::vector<SVector> results = drawing.Results();
      for (std::size_t i = 0; i < results.size(); ++i) {
        ExpectSound(results[i]);
        if (drawing.IsAllOrNothing() && results[i].GetSize() > 0) ExpectSameSeries(results[i], expected[i]);
      }
      const auto bound = drawing.bars.Columns();
      for (std::size_t i = 0; i < bound.size(); ++i) ExpectSameSeries(*bound[i], *before.Columns()[i]);
      drawing.DrawAgain();
      results = drawing.Results();
      for (std::size_t i = 0; i < results.size(); ++i) {
        SCOPED_TRACE("result " + std::to_string(i));
        ExpectSameSeries(results[i], expected[i]);
      }
    });
    if (testing::Test::HasFailure()) return;
    ASSERT_TRUE(refused || nth > 1);
  }
}

TEST(ExhaustedMemory, WhatAChartDrawsComesBack) {
  ExpectSurvivesEveryRefusal<Lines>();
  ExpectSurvivesEveryRefusal<Tick>();
  ExpectSurvivesEveryRefusal<Patterns>();
  ExpectSurvivesEveryRefusal<Search>();
}

TEST(ExhaustedMemory, OtherChartsComeBack) {
  for (const std::string &calculator : Calculators()) {
    SCOPED_TRACE(calculator);
    ExpectSurvivesEveryRefusal<OtherChart>(calculator);
  }
}

TEST(ExhaustedMemory, ABackTestCanBeRunAgain) {
  ExpectSurvivesEveryRefusal<BackTest>();
  ExpectSurvivesEveryRefusal<CompressedBackTest>();
  ExpectSurvivesEveryRefusal<ValuesSearch>();
}

TEST(ExhaustedMemory, DataCanBeFilledInAgain) {
  ExpectSurvivesEveryRefusal<Feed>();
  ExpectSurvivesEveryRefusal<Symbols>();
}

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
