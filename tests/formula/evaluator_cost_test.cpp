#include <gtest/gtest.h>

#include <chrono>
#include <new>
#include <string>
#include <thread>

#include "tests/formula/engine.h"
#include "trovenu/support/block_pool.h"
#include "trovenu/support/korean.h"

namespace trovenu::tests {
namespace {

constexpr int kBars = 3000;

// Runs `work` on a thread of its own, whose pool has no blocks yet.
template <class Work>
void OnFreshThread(Work work) {
  std::thread thread(work);
  thread.join();
}

// The most blocks of kBars elements that were in use at once.
int PeakBlocks(Bars &bars, const std::string &formula) {
  int peak = 0;
  OnFreshThread([&] {
    SCalc calc;
    bars.Bind(calc);
    calc.SetExpression(formula.c_str());
    calc.Calculate();
    EXPECT_EQ(calc.errorCount, 0) << Readable(formula);
    peak = static_cast<int>(AllocatedBlockCount());
  });
  return peak;
}

TEST(EvaluatorCost, MemoryIsThatOfTheOperandsThatWait) {
  const struct {
    const char *formula;
    int blocks;
  } kCases[] = {
      {"c", 1},
      {"5", 1},
      {"c+o", 1},
      {"c+o-h*2+l", 2},
      {"c+o-h*l+v", 2},
      {"-(c+o)", 1},
      {"!(c>o)", 1},
      {"c>o and h>l", 2},
      {"(c+o)*(h-l)", 2},
      {"(c+o)*((h-l)*(c-o))", 3},
      {"((c+o)*(h-l))*(c-o)", 2},
      {"c+(o+(h+(l+(v+1))))", 1},
      {"1+(2+(c+3))", 1},
      {"c(1)+c(2)+c(3)", 2},
      {"abs(c+o)", 1},
      {"ma(c,5)", 1},
      {"ma(c+o,5)", 2},
      {"ma(ma(ma(c+o,5),5),5)", 2},
      {"ma(c,5)+ma(c,20)+ma(c,60)", 2},
      {"if(c>o,c,o)", 2},
      {"if(c>o,ma(c,5),ma(c,20))", 4},
      {"max(c,o,h,l)", 1},
      {"highest(c,1)", 1},
      {"x=c;x", 2},
      {"x=c+o;x*x", 2},
      {"x=c;y=x+1;x=y+1;y=x", 3},
      {"rsi(14)", 1},
      // A variable that was changed while its old value waits.
      {"x=c;x+(x=1)", 2},
  };
  Bars bars = RandomBars(kBars, 1);
  for (const auto &test : kCases) EXPECT_EQ(PeakBlocks(bars, test.formula), test.blocks) << test.formula;

  std::string chain = "c";
  for (int i = 0; i < 300; ++i) chain += i % 2 == 0 ? "+o*2" : "-ma(h,9)";
  EXPECT_EQ(PeakBlocks(bars, chain), 2);
}

TEST(EvaluatorCost, SteadyStateTakesNoMemory) {
  Bars bars = RandomBars(kBars, 1);
  OnFreshThread([&] {
    const auto evaluate = [&](int start) {
      SCalc calc;
      bars.Bind(calc);
      calc.SetExpression("x=ma(c,5)-ma(c,20);if(x>0,highest(h,9)-x,(c+o)*(h-l))");
      start < 0 ? calc.Calculate() : calc.Calculate(start);
    };
    evaluate(-1);
    evaluate(kBars - 30);
    const auto blocks = AllocatedBlockCount();
    for (int i = 0; i < 20; ++i) evaluate(i % 3 == 0 ? -1 : kBars - 30);
    EXPECT_EQ(AllocatedBlockCount(), blocks);
  });
}

TEST(EvaluatorCost, NoTextTakesLong) {
  Bars bars = RandomBars(kBars, 1);
  const char *const kParts[] = {"(",       "ma(",
                                "c+",      "x=",
                                "if(c,",   "max(c,",
                                "c,",      "c;",
                                "-",       "1 ",
                                "foo ",    "c(1)+",
                                "#",       "&",
                                "(c+o)*(", "x=c+o;",
                                "/*",      "swinghigh(1,c,9,99)+",
                                "cci(9)+", "zigzag(5)+",
                                "time+",   "stdev(c,999)-",
                                "rsi(9)*", "correlation(c,o,99)+"};
  for (const char *part : kParts) {
    std::string text;
    while (text.size() < kExpressionBytes) text += part;
    SCalc calc;
    bars.Bind(calc);
    calc.SetExpression(text.c_str());
    const auto begin = std::chrono::steady_clock::now();
    calc.Calculate();
    const std::chrono::duration<double> seconds = std::chrono::steady_clock::now() - begin;
    EXPECT_EQ(*calc.readPointer, '\0') << part;
    EXPECT_LT(seconds.count(), 5.0) << part;
  }
}

int reports = 0;

TEST(EvaluatorCost, ExhaustedMemoryLeavesTheEngineUsable) {
  SVector::SetErrorHandler([](const char *) { ++reports; });
  for (const char *formula :
       {"c", "c+o", "ma(c+o,5)*2", "x=c;y=x;x+(x=1)+y", "5", "if(c>o,ma(c,5),h)", "rsi(9)", "cci(9)",
        "max(c,o)", "zigzag(5)", "compressc(day)+1", "pow(c,o/100)"}) {
    for (int failing = 1; failing <= 6; ++failing) {
      for (const bool isTail : {false, true}) {
        OnFreshThread([&] {
          Engine engine(RandomBars(1500, 1));
          engine.bars.close.SetStartIndex(3);
          const SVector expected = engine.Calculate(formula);
          // Another size, so that the blocks of before are of no use.
          Engine other(RandomBars(kBars, 1));
          other.bars.close.SetStartIndex(3);
          FailBlockAllocation(failing);
          if (isTail) {
            other.Calculate(formula, 2000);
          } else {
            other.Calculate(formula);
          }
          FailBlockAllocation(0);
          EXPECT_EQ(other.bars.close.GetStartIndex(), 3);
          other.calc.InitCalc();
          other.calc.SetVariable(engine.bars.close, engine.bars.open, engine.bars.high, engine.bars.low,
                                 engine.bars.volume, engine.bars.date, engine.bars.openInterest,
                                 engine.bars.amount);
          EXPECT_TRUE(Agree(other.Calculate(formula), expected)) << formula;
        });
      }
    }
  }
  SVector::SetErrorHandler(nullptr);
  EXPECT_GT(reports, 0);
}

TEST(EvaluatorCost, NoExceptionLeavesTheEngine) {
  SVector::SetErrorHandler([](const char *) { throw std::bad_alloc(); });
  for (const bool isTail : {false, true}) {
    OnFreshThread([&] {
      Engine engine(RandomBars(kBars, 1));
      engine.bars.close.SetStartIndex(3);
      FailBlockAllocation(1);
      const SVector result =
          isTail ? engine.Calculate("y=2;(c+o)*2;x=1", 100) : engine.Calculate("y=2;(c+o)*2;x=1");
      FailBlockAllocation(0);
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
  SVector::SetErrorHandler(nullptr);
}

}  // namespace
}  // namespace trovenu::tests
