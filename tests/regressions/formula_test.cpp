// Faults that were fixed once.

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

#include "tests/formula/engine.h"
#include "trovenu/formula/user_function_list.h"

namespace trovenu::tests {
namespace {

// A reader of arguments found the same comma for ever where the nesting had come to its limit; so it was with
// a stray character in the body of a function that is called there.
TEST(FormulaRegression, ACommaOrAStrayCharacterAtTheNestingLimitEnds) {
  SFunctionList list;
  for (const char *body : {"#", "c;#;", "\"", "x.5"}) {
    SFunction function;
    function.IndexName = ("f" + std::to_string(list.Size)).c_str();
    function.Expression = body;
    list.Add(function);
  }
  for (const char *call : {"max(,c", "min(,,", "(,", "x(,", "f0()#", "f1()#", "f2()#", "f3()#"}) {
    for (std::size_t depth = kNestingLimit - 3; depth < kNestingLimit + 2; ++depth) {
      Engine engine;
      engine.calc.SetFunction(&list);
      engine.Calculate("x=c;" + std::string(depth, '(') + call);
      EXPECT_GT(engine.calc.errorCount, 0);
      EXPECT_EQ(*engine.calc.readPointer, '\0');
    }
  }
}

// A result that was computed in a copy of close still knew the largest element of close.
TEST(FormulaRegression, AResultForgetsTheExtremesOfItsOperands) {
  for (const char *formula : {"max(c,o)+0", "abs(c-100)", "-c", "x=c;x=max(x,o)"}) {
    Engine engine;
    engine.bars.close.GetMaxTemp(0, 3);
    const SVector result = engine.Calculate(formula);
    EXPECT_EQ(result.GetMaxTemp(0, 3), result.GetMax(0, 3, 0)) << formula;
  }
}

// `Calculate(int)` went on counting calls where the evaluation before it had stopped.
TEST(FormulaRegression, ATailStartsWithFreshDepths) {
  Engine engine;
  engine.calc.userDepth = 50;
  engine.calc.exprDepth = 9;
  engine.Calculate("", 2);
  EXPECT_EQ(engine.calc.userDepth + engine.calc.exprDepth, 0);
}

// The result of numbers alone starts before close, and a tail may begin before the first written element of a
// computed series. What was written there stayed in the block, and a later series showed it.
TEST(FormulaRegression, NothingIsLeftInABlockBelowTheStartIndex) {
  SVector source;
  for (int i = 0; i < 16; ++i) source.Add(i);
  const std::pair<const char *, bool> cases[] = {
      {"!if(1,0,0)", false}, {"cos(if(1,0,0))", false}, {"cos(c)", true}, {"max(c,o+1)", true}};
  for (const auto &[formula, isTail] : cases) {
    {
      Engine engine;
      engine.bars.close = engine.bars.open = source;
      engine.bars.close.SetStartIndex(8);
      if (isTail) engine.bars.close.CalcAvg(source, 9);
      if (isTail) engine.bars.open = engine.bars.close;
      const SVector result = isTail ? engine.Calculate(formula, 2) : engine.Calculate(formula);
    }
    std::vector<SVector> averages(12);
    for (SVector &average : averages) {
      average.CalcAvg(source, 10);
      EXPECT_EQ(std::as_const(average)[0], 0.0) << formula;
      EXPECT_EQ(std::as_const(average)[2], 0.0) << formula;
    }
  }
}

// Four short functions that call one another made millions of calls in a program, and hours of work.
TEST(FormulaRegression, AProgramThatCallsForEverEnds) {
  SFunctionList list;
  for (const char *callee : {"f1()", "f2()", "f3()", "c"}) {
    SFunction function;
    function.IndexName = ("f" + std::to_string(list.Size)).c_str();
    std::string body = callee;
    for (int i = 1; i < 50; ++i) body += std::string("+") + callee;
    function.Expression = body.c_str();
    list.Add(function);
  }
  Engine engine;
  engine.calc.SetFunction(&list);
  engine.calc.SetExpression("f0()+f1()");
  engine.calc.InfixToPostFix();
  for (int run = 0; run < 2; ++run) engine.calc.CalcOp(nullptr);
  EXPECT_STREQ(Readable(engine.Message()).c_str(), "함수식이 너무 복잡합니다.");
}

}  // namespace
}  // namespace trovenu::tests
