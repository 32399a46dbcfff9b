#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/formula/engine.h"
#include "trovenu/support/korean.h"

namespace trovenu::tests {
namespace {

// close 10 20 30 40, open 1 22 3 44
struct ValueCase {
  const char *formula;
  std::vector<double> values;
  int start = 0;
};

void ExpectValues(const std::vector<ValueCase> &cases) {
  for (const ValueCase &test : cases) {
    Engine engine;
    const SVector result = engine.Calculate(test.formula);
    EXPECT_EQ(ValuesOf(result), test.values) << Readable(test.formula);
    EXPECT_EQ(result.GetStartIndex(), test.start) << Readable(test.formula);
    EXPECT_EQ(engine.calc.errorCount, 0) << Readable(test.formula) << ": " << Readable(engine.Message());
    EXPECT_EQ(*engine.calc.readPointer, '\0') << Readable(test.formula);
  }
}

std::vector<double> Four(double value) { return std::vector<double>(4, value); }

TEST(Evaluator, BindsOperators) {
  ExpectValues({
      {"1+2*3", Four(7)},
      {"(1+2)*3", Four(9)},
      {"10-4-3", Four(3)},
      {"10-(4-3)", Four(9)},
      {"100/10/5", Four(2)},
      {"7%4*2", Four(6)},
      {"2*7%4", Four(2)},
      {"3>2>1", Four(0)},
      {"1<2==1", Four(1)},
      {"2==2<3", Four(1)},
      {"1+1<3*1", Four(1)},
      {"5!=5<>1", Four(1)},
      {"1<=1>=1", Four(1)},
      {"1||0&&0", Four(0)},
      {"0&&0||1", Four(1)},
      {"1||(0&&0)", Four(1)},
      {"2>1 and 0 or 5", Four(1)},
      {"0 또는 3 그리고 1 > 2"_kr, Four(0)},
      {"1 && 0.5", Four(1)},
      {"-2*3", Four(-6)},
      {"2--3", Four(5)},
      {"2-+3", Four(-1)},
      {"2*-3", Four(-6)},
      {"---2", Four(-2)},
      {"!0+1", Four(2)},
      {"!(0+1)", Four(0)},
      {"-!0", Four(-1)},
      {"!-0.5", Four(0)},
      {"not not 3 * 2", Four(2)},
      {"부정 1"_kr, Four(0)},
      {"c-o", {9, -2, 27, -4}},
      {"-c", {-10, -20, -30, -40}},
      {"!(c>15)", {1, 0, 0, 0}},
      {"c>15 && o<c", {0, 0, 1, 0}},
      {"c > o == 1", {1, 0, 1, 0}},
      {"100-c*2", {80, 60, 40, 20}},
      {"c%7", {3, 6, 2, 5}},
      {"c/(o-22)", {10.0 / -21, 0, 30.0 / -19, 40.0 / 22}},
      {"c+c(1)+ma(c,3)", {0, 0, 70, 100}, 2},
  });
}

TEST(Evaluator, TakesTheLastStatement) {
  ExpectValues({
      {"1;2;3", Four(3)},
      {"1;", Four(1)},
      {" 1 ; ", Four(1)},
      {"1;/*a*/", Four(1)},
      {"1 /*a*/ // b", Four(1)},
      {"1 // a\n", Four(1)},
      {"// a\n/* b */ 1", Four(1)},
      {"c;o", {1, 22, 3, 44}},
      {"x=5;x+1", Four(6)},
      {"x=c;y=x*2;y-x", {10, 20, 30, 40}},
      // An expression that ends before its text begins a further statement.
      {"1)", Four(1)},
      {"1) 2", Four(2)},
      {"c, o", {1, 22, 3, 44}},
      {"1=2", Four(2)},
      {"2=c", {10, 20, 30, 40}},
  });
}

TEST(Evaluator, RequiredACaretEndsAnExpression) {
  ExpectValues({{"2^3", Four(3)}, {"c^2", Four(2)}, {"2^c", {10, 20, 30, 40}}, {"1+2^4*2", Four(8)}});
}

TEST(Evaluator, RequiredACommaIsSteppedOverWhereAPrimaryCanStand) {
  ExpectValues({
      {",5", Four(5)},
      {"1+,2", Four(3)},
      {"(,,7)", Four(7)},
      {"-,3", Four(-3)},
      {"ma(,c,,2)", {0, 15, 25, 35}, 1},
      {"max(c,,o)", {10, 22, 30, 44}},
  });
}

TEST(Evaluator, AssignsAnyName) {
  ExpectValues({
      {"x=5", Four(5)},
      {"(x=2)*x", Four(4)},
      {"1+x=4", Four(5)},
      {"x=y=c;x+y", {20, 40, 60, 80}},
      {"X=3;x", Four(3)},
      {"값=3;값+1"_kr, Four(4)},
      {"x_1=3;x_1", Four(3)},
      // The variable is made before its value is worked out.
      {"x=x+1;x", Four(2)},
      {"x=c;x=x+1;x=x+1", {12, 22, 32, 42}},
      {"x=c;x=x;x", {10, 20, 30, 40}},
      {"x=ma(c,2);x", {0, 15, 25, 35}, 1},
  });
}

TEST(Evaluator, RequiredAVariableHidesWhatItsNameMeant) {
  ExpectValues({
      {"c=1;c+close", {11, 21, 31, 41}},
      {"c=1;C+종가"_kr, {11, 21, 31, 41}},
      {"ma=c;ma(1)", {0, 10, 20, 30}, 1},
      {"abs=3;abs", Four(3)},
      {"compressc=3;CompressC+1", Four(4)},
      {"단순=9;단순"_kr, Four(9)},
      {"year=2024;Year", Four(2024)},
      {"좌우이동=1;좌우이동"_kr, Four(1)},
      // Not where the word is no name but says how something is to be done.
      {"가중=0;ma(c,3,가중)"_kr, {0, 0, 140.0 / 6, 200.0 / 6}, 2},
  });
  Engine engine;
  engine.Calculate("c=1");
  EXPECT_EQ(engine.Calculate("c")[3], 1.0);
  engine.calc.InitCalc();
  EXPECT_EQ(engine.Calculate("c")[3], 40.0);
}

TEST(Evaluator, AnOperandThatWaitsKeepsItsValue) {
  ExpectValues({
      {"x=1;x+(x=10)+x", Four(21)},
      {"x=c;x+(x=1)+x", {12, 22, 32, 42}},
      {"x=c;x*(x=x+1)-x", {99, 399, 899, 1599}},
      {"x=c;x-(x=o)*(x=2)+x", {10, -22, 26, -46}},
      {"x=c;x+(y=x)+(x=2)+y", {32, 62, 92, 122}},
      {"x=c;(y=x)+(x=1)*y", {20, 40, 60, 80}},
      {"x=c;x+(x+(x+(x=1)))", {31, 61, 91, 121}},
      {"x=c;x+-(x=1)", {9, 19, 29, 39}},
      {"x=c;if(x>15,x,(x=0))", {0, 20, 30, 40}},
      {"x=c;max(x,(x=o),x)", {10, 22, 30, 44}},
      {"x=c;x((x=2))", {0, 0, 10, 20}, 2},
      {"x=c;(x=x(1))+x", {0, 20, 40, 60}, 1},
      {"x=c;highest(x,(x=1))+x", {11, 21, 31, 41}},
      {"x=c;y=(x=o)+x*0;x+y", {2, 44, 6, 88}},
  });
}

TEST(Evaluator, ShiftsValues) {
  ExpectValues({
      {"c(0)", {10, 20, 30, 40}},
      {"c(1)", {0, 10, 20, 30}, 1},
      {"c(1+1)", {0, 0, 10, 20}, 2},
      {"c(c/10)", {0, 10, 20, 30}, 1},
      {"종가(1)+c(2)"_kr, {0, 0, 30, 50}, 2},
      {"c(3)", {0, 0, 0, 10}, 3},
      {"c(4)", Four(0), 4},
      {"c(100)", Four(0), 100},
      {"x=c;x(1)", {0, 10, 20, 30}, 1},
      {"x=7;x(2)", Four(7)},
      // A further last argument of a vector function.
      {"ma(c,2)(1)", Four(1)},
      {"highest(c,2,1)", {0, 0, 20, 30}, 2},
      {"avg(c,2,1)", {0, 0, 15, 25}, 2},
      {"if(c>15,c,o,1)", {0, 1, 20, 30}, 1},
      {"ma(c,2,단순,1)"_kr, {0, 0, 15, 25}, 2},
      {"crossup(o,c,1)", {0, 0, 1, 0}, 2},
      {"DayIndex(,1)", Four(0), 1},
      {"avg(c,2,-1)", {15, 25, 35, 0}},
  });
}

TEST(Evaluator, RequiredOnlyADataWordRefusesToLookAhead) {
  ExpectValues({
      {"x=c;x(-1)", {20, 30, 40, 0}},
      {"x=c(2);x(-1)", {0, 10, 20, 0}, 1},
      {"highest(c,1,-2)", {30, 40, 0, 0}},
      {"x=close;c(0)+x(-1)", {30, 50, 70, 40}},
  });
  Engine engine;
  EXPECT_EQ(engine.Calculate("c(-1)").GetStartIndex(), kNoValidBar);
  EXPECT_EQ(Readable(engine.Message()), "음수값을 사용할 수 없습니다.");
  engine.Calculate("c(-0.00001)");
  EXPECT_EQ(engine.calc.errorCount, 1);
}

TEST(Evaluator, RequiredDataWordsRoundAShiftUpABitAndAllElseDoesNot) {
  ExpectValues({
      {"c(1.9999999)", {0, 0, 10, 20}, 2},
      {"x=c;x(1.9999999)", {0, 10, 20, 30}, 1},
      {"highest(c,1,1.9999999)", {0, 10, 20, 30}, 1},
      {"highest(c,1.9999999)", {10, 20, 30, 40}},
      {"c(1.9998)", {0, 10, 20, 30}, 1},
  });
}

TEST(Evaluator, MethodWordsAreNumbers) {
  ExpectValues({
      {"단순"_kr, Four(0)},
      {"지수"_kr, Four(1)},
      {"가중"_kr, Four(2)},
      {"기하"_kr, Four(3)},
      {"조화+1"_kr, Four(5)},
      {"x=지수;ma(c,2,x)"_kr, {0, 15, 25, 35}, 1},
  });
  Engine engine;
  engine.Calculate("기하"_kr);
  EXPECT_EQ(engine.calc.methodValue[0], 3.0);
  EXPECT_EQ(engine.calc.methodValue.GetSize(), 1);
}

TEST(Evaluator, RecordsFaults) {
  const char *const kIncomplete = "수식이 불완전합니다. 필요한 변수나 연산자가 없습니다.";
  const char *const kParenthesis = ")가 필요합니다.";
  const char *const kOperator = "연산자가 필요합니다";
  const char *const kFunction = "함수의 정의에 오류가 있습니다.";
  const struct {
    const char *formula;
    const char *message;
    int errors;
    int position;
  } kCases[] = {
      {"1 2", kOperator, 1, 3},
      {"c o", kOperator, 1, 3},
      {"1e5", kOperator, 1, 3},
      {"ma(c 2)", kOperator, 1, 6},
      {"(1 2)", kOperator, 4, 4},
      {"(1", kParenthesis, 1, 2},
      {"((1)", kParenthesis, 1, 4},
      {"c(1", kParenthesis, 1, 3},
      {"x=c;x(1", kParenthesis, 1, 7},
      {"max(c", kParenthesis, 1, 5},
      {"abs(c,o)", kParenthesis, 1, 6},
      {"", "", 0, 0},
      {" ", kIncomplete, 1, 1},
      {"// c", kIncomplete, 1, 4},
      {"1+", kIncomplete, 1, 2},
      {"+", kIncomplete, 1, 1},
      {"not", kIncomplete, 1, 3},
      {"x=", kIncomplete, 1, 2},
      {"()", kIncomplete, 1, 2},
      {"1;;", kIncomplete, 1, 3},
      {")", kIncomplete, 1, 1},
      {"* 2", kIncomplete, 1, 2},
      {"2 * / 3", kIncomplete, 1, 6},
      {".5", kIncomplete, 1, 1},
      {"\"c\"", kIncomplete, 2, 1},
      {"c;# ", kIncomplete, 1, 3},
      {"c(", kIncomplete, 2, 2},
      {"x=c;x(", kIncomplete, 2, 6},
      {"ma(c)", kIncomplete, 2, 5},
      {"ma", kFunction, 1, 2},
      {"ma c", kFunction, 2, 4},
      {"abs+1", kFunction, 1, 4},
      {"CompressC", kFunction, 1, 9},
      {"좌우이동"_kr, kFunction, 1, 8},
      {"Year", "변수의 정의에 오류가 있습니다.", 1, 4},
      {"월(1)"_kr, "변수의 정의에 오류가 있습니다.", 1, 3},
      {"c(-1)", "음수값을 사용할 수 없습니다.", 1, 5},
      {"c(-1", kParenthesis, 1, 4},
      {"foo", "foo이(가) 정의되지 않았습니다.\n", 1, 3},
      {"Foo_1 + c", "Foo_1이(가) 정의되지 않았습니다.\n", 1, 7},
      {"foo c", "foo이(가) 정의되지 않았습니다.\n", 2, 5},
      {"가격"_kr, "가격이(가) 정의되지 않았습니다.\n", 1, 4},
      {"foo(c)", "foo이(가) 정의되지 않았습니다.\n", 1, 4},
      {"c & o", "bad token", 2, 2},
      {"c | o", "bad token", 1, 2},
      {"c + | o", "bad token", 2, 4},
      // The first message stays.
      {"foo;bar;1 2", "foo이(가) 정의되지 않았습니다.\n", 3, 4},
  };
  for (const auto &test : kCases) {
    Engine engine;
    const SVector result = engine.Calculate(test.formula);
    EXPECT_EQ(engine.calc.errorCount, test.errors) << Readable(test.formula);
    EXPECT_EQ(Readable(engine.Message()), test.message) << Readable(test.formula);
    EXPECT_EQ(engine.calc.errorPosition, test.position) << Readable(test.formula);
    if (test.errors > 0) {
      EXPECT_EQ(result.GetStartIndex(), kNoValidBar) << Readable(test.formula);
    }
    EXPECT_EQ(*engine.calc.readPointer, '\0') << Readable(test.formula);
  }
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
  ExpectValues({{"c; // a", {10, 20, 30, 40}}, {"c // a\n", {10, 20, 30, 40}}});
}

TEST(Evaluator, RequiredAKeywordWithATailCannotNameAVariable) {
  Engine engine;
  engine.Calculate("and_x = 1");
  EXPECT_EQ(engine.calc.errorCount, 2);
  EXPECT_EQ(engine.calc.tableCount, 0);
  EXPECT_EQ(ValuesOf(engine.Calculate("1 or_x 0")), Four(1));
}

TEST(Evaluator, LevelsOfTheGrammarCanBeCalled) {
  Engine engine;
  const struct {
    SVector (SCalc::*level)();
    double value;
    TokenValue next;
  } kCases[] = {
      {&SCalc::Prim, 2, MUL},  {&SCalc::Term, 6, PLUS},  {&SCalc::Add, 10, LT},
      {&SCalc::Relop, 1, AND}, {&SCalc::Expr, 0, PRINT},
  };
  for (const auto &test : kCases) {
    engine.calc.SetExpression("2*3+4<11&&0;");
    engine.calc.GetToken();
    const SVector value = (engine.calc.*test.level)();
    EXPECT_TRUE(value.IsConstant());
    EXPECT_EQ(value[0], test.value);
    EXPECT_EQ(engine.calc.currentToken, test.next);
  }
  // The value belongs to the caller.
  engine.calc.SetExpression("c");
  engine.calc.GetToken();
  SVector value = engine.calc.Prim();
  value[0] = -1.0;
  EXPECT_EQ(engine.bars.close[0], 10.0);
}

TEST(Evaluator, StepsOverTokensThatTheLexerNeverGives) {
  Engine engine;
  engine.calc.currentToken = END;
  const SVector one = engine.calc.Prim();
  EXPECT_EQ(one.GetSize(), 1);
  EXPECT_FALSE(one.IsConstant());
  for (const int blank : {9, 10, 11, 13, 32}) {
    engine.calc.SetExpression("5");
    engine.calc.currentToken = static_cast<TokenValue>(blank);
    EXPECT_EQ(engine.calc.Prim()[0], 5.0);
  }
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
  } kCases[] = {
      {"(", "3", ")", kNestingLimit - 1, ""},
      {"(", "3", ")", kNestingLimit, kTooDeep},
      {"(", "3", ")", 2000, kTooDeep},
      {"--", "3", "", (kNestingLimit - 2) / 2, ""},
      {"-", "3", "", kNestingLimit, kTooDeep},
      {"!", "3", "", 4000, kTooDeep},
      {"not ", "3", "", 1000, kTooDeep},
      {"x=", "3", "", kNestingLimit - 1, ""},
      {"x=", "3", "", kNestingLimit, kTooDeep},
      {"x=", "3", "", 2000, kTooDeep},
      {"abs(", "3", ")", kNestingLimit - 1, ""},
      {"abs(", "3", ")", kNestingLimit, kTooDeep},
      {"abs(", "3", ")", 800, kTooDeep},
      {"c(0*", "3", ")", 600, kTooDeep},
      {"if(1,", "3", ",0)", 450, kTooDeep},
      {"3+(0*", "3", ")", 600, kTooDeep},
      // These step on without nesting.
      {"+", "3", "", 4000, ""},
      {",", "3", "", 4000, ""},
      {"3;", "3", "", 1500, ""},
      {"0+", "3", "", 1500, ""},
  };
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
