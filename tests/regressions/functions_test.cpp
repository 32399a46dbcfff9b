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

}  // namespace
}  // namespace trovenu::tests
