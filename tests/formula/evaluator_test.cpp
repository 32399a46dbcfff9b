#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/formula/engine.h"
#include "trovenu/support/korean.h"

namespace trovenu::tests {
namespace {

std::vector<double> Four(double value) { return std::vector<double>(4, value); }

TEST(Evaluator, CountsFaultsAndKeepsThePositionOfTheFirst) {
  struct {
    const char *formula;
    int errors, position;
  } const cases[] = {
      {"1 2", 1, 3},  {"ma(c 2)", 1, 6}, {"(1 2)", 4, 4}, {"", 0, 0},
      {" ", 1, 1},    {"// c", 1, 4},    {"\"c\"", 2, 1}, {"x=c;x(", 2, 6},
      {"ma c", 2, 4}, {"c & o", 2, 2},   {"c|o", 1, 1},   {"foo;bar;1 2", 3, 4},
  };
  for (const auto &test : cases) {
    Engine engine;
    engine.Calculate(test.formula);
    EXPECT_EQ(engine.calc.errorCount, test.errors) << test.formula;
    EXPECT_EQ(engine.calc.errorPosition, test.position) << test.formula;
    EXPECT_EQ(*engine.calc.readPointer, '\0') << test.formula;
  }
}

TEST(Evaluator, ReadsWhatMeansTheSame) {
  const struct {
    const char *formula, *same;
    int full;
  } kCases[] = {
      {"ma(o,2,단순)"_kr, "avg(o,2)", 0},
      {"ma(o,2,지수)"_kr, "eavg(o,2)", 1},
      {"ma(o,2,가중)"_kr, "wavg(o,2)", 0},
      {"ma(o,2,기하)"_kr, "gavg(o,2)", 0},
      {"ma(o,2,조화)"_kr, "havg(o,2)", 0},
      // Required: a number as the method means the simple average.
      {"ma(o,2,1)", "avg(o,2)", 0},
      {"x=1;ma(o,2,x)", "eavg(o,2)", 1},
      {"x=9;ma(o,2,x)", "avg(o,2)", 0},
      {"max(o,c,15)", "max(max(o,c),15)", 0},
      // Required: a unit is a word; an unknown one means the hour, be it a variable or not.
      {"CompressC(foo)", "CompressC(hour)", 1},
      {"x=2;CompressC(x)", "CompressC(hour)", 1},
      {"CompressC(2)", "CompressC(1.9999999)", 1},
      // Arguments are evaluated from left to right.
      {"if((x=c)>15,x,(x=o))+x*0", "if(c>15,c,o)", 0},
      {"pow((x=c),(x=2))+x*0", "pow(c,2)", 0},
  };
  for (const auto &test : kCases) {
    Engine engine;
    Engine other;
    const SVector result = engine.Calculate(test.formula);
    EXPECT_EQ(engine.calc.errorCount, 0) << Readable(test.formula) << ": " << Readable(engine.Message());
    EXPECT_EQ(engine.calc.fullCalc, test.full) << Readable(test.formula);
    EXPECT_TRUE(Agree(result, other.Calculate(test.same))) << Readable(test.formula);
  }
}

TEST(Evaluator, RequiredAPeriodWithAMethodIsNotCheckedAndANumberAmongSeveralLeavesASingleBar) {
  Engine engine;
  for (const char *formula : {"ma(c,0,1)", "ma(c,-3,지수)"_kr, "stdev(c,0)"}) {
    EXPECT_EQ(engine.Calculate(formula).GetStartIndex(), kNoValidBar) << Readable(formula);
    EXPECT_EQ(engine.calc.errorCount, 0) << Readable(formula);
  }
  for (const char *formula : {"max(c,5)", "max(5,c)", "min(c,o,99)"}) {
    EXPECT_EQ(engine.Calculate(formula).GetSize(), 1) << formula;
  }
  EXPECT_EQ(engine.Calculate("max(5,3)").GetSize(), 4);
}

TEST(Evaluator, NamesAndTheirNumberHaveALimit) {
  const std::string fits(kNameBytes - 1, 'n');
  Engine engine;
  EXPECT_EQ(engine.Calculate(fits + "=7;" + fits)[3], 7.0);
  EXPECT_EQ(engine.Calculate(fits + "n = 8; x = " + fits).GetStartIndex(), kNoValidBar);
  EXPECT_EQ(Readable(engine.Message()), "변수의 이름이 너무 깁니다.");
  EXPECT_EQ(engine.calc.Look("x", 0)->value[0], 7.0);
  engine.calc.InitCalc();
  std::string text;
  for (int i = 0; i < kTableEntries; ++i) text += "v" + std::to_string(i) + "=" + std::to_string(i) + ";";
  EXPECT_EQ(engine.Calculate(text + "v49")[0], 49.0);
  EXPECT_EQ(engine.Calculate("v3 = (more = 6); v3").GetStartIndex(), kNoValidBar);
  EXPECT_EQ(Readable(engine.Message()), "변수가 너무 많습니다.");
  // The value of the refused assignment passes on.
  EXPECT_EQ(engine.calc.Look("v3", 0)->value[0], 6.0);
}

TEST(Evaluator, AFaultAnywhereVoidsTheResult) {
  Engine engine;
  EXPECT_EQ(engine.Calculate("foo; x = 3; x").GetStartIndex(), kNoValidBar);
  EXPECT_EQ(engine.Calculate("x").GetStartIndex(), 0);
  EXPECT_EQ(engine.calc.errorCount, 0);
  // A stray character is passed with the fault, and only it.
  EXPECT_EQ(engine.Calculate("#y=4").GetStartIndex(), kNoValidBar);
  EXPECT_EQ(engine.Calculate("y")[0], 4.0);
}

TEST(Evaluator, RequiredOfTwoNumbersSideBySideTheSecondCounts) {
  Engine engine;
  engine.calc.SetExpression("1 2");
  engine.calc.GetToken();
  EXPECT_EQ(engine.calc.Prim()[0], 2.0);
}

TEST(Evaluator, RequiredWhiteSpaceBehindASemicolonHoldsAtMostOneComment) {
  for (const char *text : {"c; // a\n", "c; /* a */ /* b */", "c; /* a */ // b"}) {
    Engine engine;
    engine.Calculate(text);
    EXPECT_EQ(engine.calc.errorCount, 1) << text;
    EXPECT_EQ(Readable(engine.Message()), "수식이 불완전합니다. 필요한 변수나 연산자가 없습니다.") << text;
  }
  Engine engine;
  for (const char *text : {"c; // a", "c // a\n"}) EXPECT_EQ(engine.Calculate(text)[3], 40.0) << text;
}

TEST(Evaluator, RequiredAKeywordWithATailCannotNameAVariable) {
  Engine engine;
  engine.Calculate("and_x = 1");
  EXPECT_EQ(engine.calc.errorCount, 2);
  EXPECT_EQ(engine.calc.tableCount, 0);
  EXPECT_EQ(ValuesOf(engine.Calculate("1 or_x 0")), Four(1));
}

std::string Repeated(const char *text, int times) {
  std::string all;
  for (int i = 0; i < times; ++i) all += text;
  return all;
}

TEST(Evaluator, NestingHasALimit) {
  const char *const kTooDeep = "수식이 너무 복잡합니다.";
  const struct {
    const char *open;
    const char *inner;
    const char *close;
    int times;
    const char *message;
  } kCases[] = {{"(", "3", ")", kNestingLimit - 1, ""},
                {"(", "3", ")", kNestingLimit, kTooDeep},
                {"-", "3", "", kNestingLimit, kTooDeep},
                {"!", "3", "", 4000, kTooDeep},
                {"x=", "3", "", kNestingLimit - 1, ""},
                {"x=", "3", "", kNestingLimit, kTooDeep},
                {"abs(", "3", ")", kNestingLimit - 1, ""},
                {"abs(", "3", ")", kNestingLimit, kTooDeep},
                {"c(0*", "3", ")", 600, kTooDeep},
                {"if(1,", "3", ",0)", 450, kTooDeep},
                // These step on without nesting.
                {"+", "3", "", 4000, ""},
                {",", "3", "", 4000, ""},
                {"3;", "3", "", 1500, ""},
                {"0+", "3", "", 1500, ""}};
  for (const auto &test : kCases) {
    Engine engine;
    const std::string text = Repeated(test.open, test.times) + test.inner + Repeated(test.close, test.times);
    ASSERT_LT(text.size() + 10, static_cast<std::size_t>(kExpressionBytes));
    // A stray ")" passes the character behind it, hence the blanks.
    engine.Calculate(text + " ; 0 ; y=4");
    EXPECT_EQ(Readable(engine.Message()), test.message) << text.substr(0, 20);
    EXPECT_EQ(*engine.calc.readPointer, '\0') << text.substr(0, 20);
    ASSERT_NE(engine.calc.Look("y", 0), nullptr) << text.substr(0, 20);
    EXPECT_EQ(engine.calc.Look("y", 0)->value[0], 4.0) << text.substr(0, 20);
    if (test.message[0] == '\0') {
      EXPECT_EQ(ValuesOf(engine.Calculate(text)), Four(3)) << text.substr(0, 20);
    }
  }
}

}  // namespace
}  // namespace trovenu::tests
