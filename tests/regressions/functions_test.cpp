#include <gtest/gtest.h>

#include <vector>

#include "tests/formula/bars.h"

namespace trovenu::tests {
namespace {

// The result of numbers alone starts before close. What an operator wrote into its first bars stayed behind
// in the block, and a later series showed it below its start index.
TEST(FunctionsRegression, IfOfThreeNumbersLeavesNothingInItsBlock) {
  Bars bars;
  for (int i = 0; i < 16; ++i) bars.close.Add(i);
  bars.close.SetStartIndex(8);
  for (const char *formula : {"!if(1,0,0)", "cos(if(1,0,0))", "if(1,0,0)+1"}) {
    { const SVector result = Evaluate(bars, formula); }
    std::vector<SVector> averages(12);
    for (SVector &average : averages) {
      average.CalcAvg(bars.close, 2);
      EXPECT_EQ(static_cast<const SVector &>(average)[0], 0.0) << formula;
    }
  }
}

// A tail may begin before the first written element of a series that was itself computed. What a function
// wrote there in place stayed behind in the block in the same way.
TEST(FunctionsRegression, ATailBeforeTheWrittenElementsLeavesNothingInItsBlock) {
  Bars bars;
  SVector source;
  for (int i = 0; i < 16; ++i) source.Add(i);
  bars.close.CalcAvg(source, 9);
  bars.open = bars.close;
  for (const char *formula : {"cos(c)", "max(c,o+1)"}) {
    {
      SCalc calc;
      bars.Bind(calc);
      calc.SetExpression(formula);
      const SVector result = calc.Calculate(2);
    }
    std::vector<SVector> averages(12);
    for (SVector &average : averages) {
      average.CalcAvg(source, 10);
      EXPECT_EQ(static_cast<const SVector &>(average)[2], 0.0) << formula;
    }
  }
}

}  // namespace
}  // namespace trovenu::tests
