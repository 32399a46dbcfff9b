#include "trovenu/formula/calc.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <memory>
#include <string>
#include <utility>

#include "tests/formula/engine.h"
#include "trovenu/support/korean.h"

namespace trovenu::tests {
namespace {

TEST(Calc, ATextHasALimit) {
  Engine engine;
  const std::string fits = "x=3;" + std::string(kExpressionBytes - 6, ' ') + "c";
  ASSERT_EQ(fits.size(), 4095U);
  EXPECT_EQ(engine.Calculate(fits)[0], 10.0);
  EXPECT_EQ(engine.calc.errorCount, 0);

  EXPECT_EQ(engine.Calculate("x=4;" + fits).GetStartIndex(), kNoValidBar);
  EXPECT_EQ(Readable(engine.Message()), "수식이 너무 깁니다.");
  EXPECT_EQ(engine.calc.Look("x", 0)->value[0], 3.0);
}

TEST(Calc, ATailStartsAtTheGivenBar) {
  const struct {
    const char *formula;
    int start;
    int resultStart;
    std::vector<double> values;
  } kCases[] = {
      {"c", 2, 2, {0, 0, 30, 40}},
      {"c", 0, 0, {10, 20, 30, 40}},
      {"c", -3, 0, {10, 20, 30, 40}},
      {"c", 4, 4, {0, 0, 0, 0}},
      {"c", 1000, 1000, {0, 0, 0, 0}},
      {"c+o", 3, 3, {0, 0, 0, 84}},
      {"c(1)", 1, 2, {0, 0, 20, 30}},
      {"ma(h,2)+l", 1, 2, {0, 0, 52.5, 73.5}},
      {"v*2", 3, 3, {0, 0, 0, 800}},
      {"x=c;x+x(1)", 1, 2, {0, 0, 50, 70}},
      // Only the first five series are cut.
      {"oi", 3, 0, {7, 8, 9, 6}},
      {"amount", 3, 0, {1000, 4000, 9000, 16000}},
      {"d", 3, 0, {20240102, 20240103, 20240104, 20240201}},
      {"oi+c", 2, 2, {0, 0, 39, 46}},
      // Required: no start index marks a fault.
      {"foo;c", 2, 2, {0, 0, 30, 40}},
      {"c;#", 2, 0, {}},
      // Required: a number is not widened.
      {"2+1", 2, 0, {3}},
      {"", 2, 0, {}},
  };
  for (const auto &test : kCases) {
    Engine engine;
    const SVector result = engine.Calculate(test.formula, test.start);
    EXPECT_EQ(result.GetStartIndex(), test.resultStart) << test.formula;
    EXPECT_EQ(ValuesOf(result), test.values) << test.formula;
    EXPECT_EQ(engine.calc.calcStart, std::max(test.start, 0)) << test.formula;
  }
  Engine engine;
  EXPECT_TRUE(engine.Calculate("2+1", 2).IsConstant());
  // The start index may also fall.
  engine.bars.close.SetStartIndex(3);
  EXPECT_EQ(engine.Calculate("c", 1).GetStartIndex(), 1);
}

TEST(Calc, RequiredATailDoesNotResetTheErrors) {
  Engine engine;
  engine.Calculate("foo");
  engine.Calculate("bar;c", 1);
  EXPECT_EQ(engine.calc.errorCount, 2);
  EXPECT_EQ(Readable(engine.Message()), "foo이(가) 정의되지 않았습니다.\n");
  engine.Calculate("c", 1);
  EXPECT_EQ(engine.calc.errorCount, 2);
  engine.Calculate("c");
  EXPECT_EQ(engine.calc.errorCount, 0);
}

TEST(Calc, ATailRestoresTheStartIndexes) {
  for (const char *formula : {"c", "c+o*h-l/v", "foo;(", "1 2", "x=c;x(-1)", "max(,", ""}) {
    for (const int start : {-1, 0, 2, 4, 100, kNoValidBar, 2147483647}) {
      Engine engine;
      int index = 0;
      for (SVector *series : engine.bars.Columns()) series->SetStartIndex(index++);
      engine.Calculate(formula, start);
      index = 0;
      for (const SVector *series : engine.bars.Columns())
        EXPECT_EQ(series->GetStartIndex(), index++) << formula;
    }
  }
}

TEST(Calc, ATailRestoresASeriesThatIsBoundTwice) {
  SVector price = Series({1, 2, 3, 4}, 1);
  SVector other = Series({1, 2, 3, 4}, 2);
  SCalc calc;
  calc.SetVariable(price, price, other, price, other, price, other, price);
  calc.SetExpression("c+o+h+l+v");
  EXPECT_EQ(calc.Calculate(3)[3], 20.0);
  EXPECT_EQ(price.GetStartIndex(), 1);
  EXPECT_EQ(other.GetStartIndex(), 2);
}

TEST(Calc, CopiesShareTheVariables) {
  Engine engine;
  engine.Calculate("x=c;y=3");
  SCalc first(engine.calc);
  auto second = std::make_unique<SCalc>();
  second->SetExpression("z=1");
  second->Calculate();
  *second = first;
  const auto &self = *second;
  *second = self;
  EXPECT_EQ(second->tableCount, 2);
  EXPECT_EQ(second->Look("z", 0), nullptr);
  EXPECT_EQ(second->Look("x", 0), engine.calc.Look("x", 0));

  first.SetExpression("x=5;new=6");
  first.Calculate();
  EXPECT_EQ(engine.Calculate("x")[0], 5.0);
  // What one of them makes afterwards is its own.
  EXPECT_EQ(engine.calc.Look("new", 0), nullptr);

  // Each may go before the others.
  engine.calc.InitCalc();
  second->SetExpression("x+y");
  EXPECT_EQ(second->Calculate()[0], 8.0);
  second.reset();
  first.SetExpression("x+y+new");
  EXPECT_EQ(first.Calculate()[0], 14.0);
}

}  // namespace
}  // namespace trovenu::tests
