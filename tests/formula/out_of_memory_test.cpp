#include <gtest/gtest.h>

#include <new>
#include <thread>

#include "tests/formula/engine.h"
#include "trovenu/support/block_pool.h"

namespace trovenu::tests {
namespace {

constexpr int kBars = 3000;

// Runs `work` on a thread of its own, whose pool has no blocks yet.
template <class Work>
void OnFreshThread(Work work) {
  std::thread thread(work);
  thread.join();
}

int reports = 0;

TEST(OutOfMemory, ExhaustedMemoryLeavesTheEngineUsable) {
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

TEST(OutOfMemory, NoExceptionLeavesTheEngine) {
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
