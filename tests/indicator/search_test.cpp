#include <gtest/gtest.h>

#include "tests/formula/engine.h"
#include "trovenu/indicator/index.h"

namespace trovenu::tests {
namespace {

void Bind(SIndex &index, Bars &bars) {
  index.SetVariable(bars.close, bars.open, bars.high, bars.low, bars.volume, bars.date, bars.openInterest,
                    bars.amount);
}

TEST(Search, TellsHowManyBarsAFormulaNeeds) {
  const struct {
    const char *first;
    const char *second;
    int bars;
  } kCases[] = {
      {"c", "", 1},
      {"5", "", 1},
      {"avg(c,20)", "", 20},
      {"crossup(avg(c,5),avg(c,20)(1))", "", 2147483647},
      {"crossup(avg(c,5),avg(c,20,3))", "", 24},
      {"c", "stdev(c(2),10)", 12},
      {"", "cci(14)", 14},
      {"c+", "", 2147483647},
      {"", "", 0},
      // A sound formula that has no valid bar without data.
      {"valuewhen(1,c>o,h)", "", 2147483647},
  };
  for (const auto &[first, second, expected] : kCases) {
    Bars bars = FourBars();
    SIndex index("", kConditionIndex);
    Bind(index, bars);
    index.SetExpression(0, first);
    index.SetExpression(1, second);
    EXPECT_EQ(index.GetMinDataSize(), expected) << first << " and " << second;
    EXPECT_EQ(index.ExpData[0].GetSize(), 0);
  }
}

TEST(Search, RunsTheFormulaOverSymbolAfterSymbol) {
  Bars bars = FourBars();
  SIndex index("", kConditionIndex);
  Bind(index, bars);
  index.VarName[0] = "n";
  index.VarValue[0] = "2";
  index.SetExpression(0, "avg(c,n)>c(1)+2");
  index.SetExpression(1, "c");
  index.CalcSrch();
  EXPECT_EQ(index.ExpData[0].GetSize(), 0) << "before it is compiled";
  ASSERT_EQ(index.GetMinDataSize(), 2);
  index.CalcSrch();
  EXPECT_TRUE(Agree(index.ExpData[0], Engine().Calculate("avg(c,2)>c(1)+2")));
  EXPECT_EQ(index.ExpData[1].GetSize(), 0) << "one formula alone";

  for (const std::uint32_t seed : {1U, 2U}) {
    Bars next = RandomBars(50, seed);
    bars.close = next.close;
    index.CalcSrch();
    EXPECT_TRUE(Agree(index.ExpData[0], Engine(next).Calculate("avg(c,2)>c(1)+2")));
  }

  // Compiling for another formula forgets the first one; an empty one leaves the result.
  index.SetExpression(0, "c*2");
  index.GetMinDataSize();
  index.CalcSrch();
  EXPECT_EQ(index.ExpData[0][0], bars.close[0] * 2);
  index.SetExpression(0, "");
  index.ConvertExpression();
  index.CalcSrch();
  EXPECT_EQ(index.ExpData[0].GetSize(), 50);

  // Required: a copy has to be compiled again.
  index.SetExpression(0, "c");
  index.GetMinDataSize();
  SIndex copy(index);
  copy.CalcSrch();
  EXPECT_EQ(copy.ExpData[0].GetSize(), 0);
  EXPECT_EQ(copy.GetMinDataSize(), 1);
  copy.CalcSrch();
  EXPECT_EQ(copy.ExpData[0].GetSize(), 50);
}

}  // namespace
}  // namespace trovenu::tests
