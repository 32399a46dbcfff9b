#include <gtest/gtest.h>

#include <string>

#include "tests/formula/engine.h"
#include "trovenu/formula/user_function_list.h"

namespace trovenu::tests {
namespace {

// A reader of arguments found the same comma for ever where the nesting had come to its limit.
TEST(FormulaRegression, ACommaAtTheNestingLimitEnds) {
  for (const char *call : {"max(,c", "min(,,", "(,", "x(,"}) {
    for (int depth = kNestingLimit - 3; depth < kNestingLimit + 2; ++depth) {
      Engine engine;
      engine.Calculate("x=c;" + std::string(static_cast<std::size_t>(depth), '(') + call);
      EXPECT_GT(engine.calc.errorCount, 0);
      EXPECT_EQ(*engine.calc.readPointer, '\0');
    }
  }
}

// So was a stray character in the body of a function that is called there.
TEST(FormulaRegression, AStrayCharacterAtTheNestingLimitEnds) {
  for (const char *body : {"#", "c;#;", "\"", "x.5"}) {
    for (std::size_t depth = kNestingLimit - 3; depth < kNestingLimit + 2; ++depth) {
      SFunction function;
      function.IndexName = "f";
      function.Expression = body;
      SFunctionList list;
      list.Add(function);
      Engine engine;
      engine.calc.SetFunction(&list);
      engine.Calculate(std::string(depth, '(') + "f()#");
      EXPECT_GT(engine.calc.errorCount, 0);
      EXPECT_EQ(*engine.calc.readPointer, '\0');
    }
  }
}

// A result that was computed in a copy of close still knew the largest element of close.
TEST(FormulaRegression, AResultForgetsTheExtremesOfItsOperands) {
  for (const char *formula :
       {"max(c,o)", "max(c,o)+0", "abs(c-100)", "-c", "c+o", "x=c;x=max(x,o)", "min(c,o)"}) {
    Engine engine;
    engine.bars.close.GetMaxTemp(0, 3);
    engine.bars.close.GetMinTemp(0, 3);
    const SVector result = engine.Calculate(formula);
    EXPECT_EQ(result.GetMaxTemp(0, 3), result.GetMax(0, 3, 0)) << formula;
    EXPECT_EQ(result.GetMinTemp(0, 3), result.GetMin(0, 3, 0)) << formula;
  }
}

// `Calculate(int)` went on counting calls where the evaluation before it had stopped.
TEST(FormulaRegression, ATailStartsWithFreshDepths) {
  Engine engine;
  engine.calc.userDepth = 50;
  engine.calc.exprDepth = 9;
  engine.Calculate("", 2);
  EXPECT_EQ(engine.calc.userDepth, 0);
  EXPECT_EQ(engine.calc.exprDepth, 0);
}

}  // namespace
}  // namespace trovenu::tests
