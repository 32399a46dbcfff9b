#include <gtest/gtest.h>

#include <string>

#include "tests/formula/engine.h"
#include "trovenu/support/korean.h"

namespace trovenu::tests {
namespace {

const char *const kIncomplete = "수식이 불완전합니다. 필요한 변수나 연산자가 없습니다.";
const char *const kParenthesis = ")가 필요합니다.";

TEST(CallReader, ReadsWhatMeansTheSame) {
  const struct {
    const char *formula;
    const char *same;
    int full;
  } kCases[] = {
      {"ma(o,2)", "avg(o,2)", 0},
      {"ma(o,2,단순)"_kr, "avg(o,2)", 0},
      {"ma(o,2,지수)"_kr, "eavg(o,2)", 1},
      {"ma(o,2,가중)"_kr, "wavg(o,2)", 0},
      {"ma(o,2,기하)"_kr, "gavg(o,2)", 0},
      {"ma(o,2,조화)"_kr, "havg(o,2)", 0},
      // Required: a number as the method means the simple average.
      {"ma(o,2,1)", "avg(o,2)", 0},
      {"ma(o,2,2)", "avg(o,2)", 0},
      {"x=1;ma(o,2,x)", "eavg(o,2)", 1},
      {"x=2.9;ma(o,2,X)", "wavg(o,2)", 0},
      {"x=9;ma(o,2,x)", "avg(o,2)", 0},
      {"x=-1;ma(o,2,x)", "avg(o,2)", 0},
      {"x=o;ma(o,2,x)", "eavg(o,2)", 1},
      {"avg(o,2)", "sum(o,2)/2", 0},
      {"avg(o,2,1)", "x=avg(o,2);x(1)", 0},
      {"max(o)", "o", 0},
      {"max(o,c,15)", "max(max(o,c),15)", 0},
      // Required: a unit is a word; an unknown one means the hour, be it a variable or not.
      {"CompressC(foo)", "CompressC(hour)", 1},
      {"x=2;CompressC(x)", "CompressC(hour)", 1},
      {"CompressC(월)"_kr, "CompressC(month)", 1},
      {"CompressC(2)", "CompressC(1.9999999)", 1},
      // Arguments are evaluated from left to right.
      {"if((x=c)>15,x,(x=o))+x*0", "if(c>15,c,o)", 0},
      {"pow((x=c),(x=2))+x*0", "pow(c,2)", 0},
  };
  for (const auto &test : kCases) {
    Engine engine;
    const SVector result = engine.Calculate(test.formula);
    EXPECT_EQ(engine.calc.errorCount, 0) << Readable(test.formula) << ": " << Readable(engine.Message());
    EXPECT_EQ(engine.calc.fullCalc, test.full) << Readable(test.formula);
    Engine other;
    EXPECT_TRUE(Agree(result, other.Calculate(test.same))) << Readable(test.formula);
  }
}

TEST(CallReader, RecordsFaults) {
  const struct {
    const char *formula;
    const char *message;
    int errors;
  } kCases[] = {
      {"avg(c", "알수 없는 오류", 2},
      {"avg(c;2)", "알수 없는 오류", 2},
      {"tavg(c)", "알수 없는 오류", 1},
      {"gavg(c)", "알수 없는 오류", 1},
      {"havg(c", "알수 없는 오류", 2},
      {"sum(c", "알수 없는 오류입니다", 2},
      {"esum(c", kParenthesis, 1},
      {"ma(c,2", "알수 없는 오류", 2},
      {"ma(c)", kIncomplete, 2},
      {"ma(c,0)", "이동평균 기간이 0보다 작음", 1},
      {"ma(c,-5)", "이동평균 기간이 0보다 작음", 1},
      // The method must be one token: the rest of an expression stays.
      {"ma(c,2,+1)", kParenthesis, 1},
      {"ma(c,2,)", "", 0},
      {"ma(c,2,1+1)", kParenthesis, 1},
      {"ma(c,2,foo)", "함수 사용법이 잘못 되었습니다", 4},
      {"ma(c,2,ma)", "함수 사용법이 잘못 되었습니다", 4},
      {"CompressC()", kParenthesis, 1},
      {"CompressC(+2)", kParenthesis, 3},
      {"CompressC((day))", kParenthesis, 3},
      {"CompressC(day,1)", kParenthesis, 1},
      {"max()", kIncomplete, 1},
      {"max(c,)", kIncomplete, 1},
      {"if(c,1)", kIncomplete, 1},
      {"if(c)", kIncomplete, 2},
      {"if()", kIncomplete, 3},
      {"crossup(c,o,1,2)", kParenthesis, 1},
      {"pow(c,2,1)", kParenthesis, 1},
      {"ad(1)", kParenthesis, 3},
      // Required: a word of the family without a rule reads nothing, so its first argument is in the way.
      {"좌우이동(c,1)"_kr, kParenthesis, 2},
      // Required: this synonym of ma is in no list of names.
      {"이평(c,2)"_kr, "이평이(가) 정의되지 않았습니다.\n", 1},
  };
  for (const auto &test : kCases) {
    Engine engine;
    engine.Calculate(test.formula);
    EXPECT_EQ(Readable(engine.Message()), test.message) << Readable(test.formula);
    EXPECT_EQ(engine.calc.errorCount, test.errors) << Readable(test.formula);
    EXPECT_EQ(*engine.calc.readPointer, '\0') << Readable(test.formula);
  }
}

TEST(CallReader, RequiredAPeriodWithAMethodIsNotChecked) {
  Engine engine;
  for (const char *formula : {"ma(c,0,1)", "ma(c,-3,지수)"_kr, "stdev(c,0)"}) {
    EXPECT_EQ(engine.Calculate(formula).GetStartIndex(), kNoValidBar) << Readable(formula);
    EXPECT_EQ(engine.calc.errorCount, 0) << Readable(formula);
  }
}

TEST(CallReader, RequiredANumberAmongSeveralLeavesASingleBar) {
  Engine engine;
  for (const char *formula : {"max(c,5)", "max(5,c)", "min(c,o,99)"}) {
    EXPECT_EQ(engine.Calculate(formula).GetSize(), 1) << formula;
    EXPECT_EQ(engine.calc.errorCount, 0) << formula;
  }
  EXPECT_EQ(engine.Calculate("max(5,3)").GetSize(), 4);
}

TEST(CallReader, AWordWithoutARuleGivesAnEmptySeries) {
  for (const char *formula : {"좌우이동()"_kr, "좌우이동(,1)"_kr, "c+좌우이동()"_kr}) {
    Engine engine;
    EXPECT_EQ(engine.Calculate(formula).GetSize(), 0) << Readable(formula);
    EXPECT_EQ(engine.calc.errorCount, 0) << Readable(formula);
  }
}

TEST(CallReader, FamiliesCanBeCalledWithAWord) {
  using Process = SVector (SCalc::*)(const char *);
  const struct {
    Process process;
    const char *word;
    const char *arguments;
    const char *same;
    TokenValue next;
  } kCases[] = {
      {&SCalc::ProcessVectorFunction, "MA", "c,2)", "ma(c,2)", RP},
      {&SCalc::ProcessVectorFunction, "이평"_kr, "c,2)", "ma(c,2)", RP},
      {&SCalc::ProcessVectorFunction, "highest", "c,2,1)", "highest(c,2)", COMMA},
      {&SCalc::ProcessVectorFunction, "좌우이동"_kr, "c,1)", nullptr, NAME},
      {&SCalc::ProcessVectorFunction, "abs", "c)", nullptr, NAME},
      {&SCalc::ProcessVectorFunction, "nothing", "c)", nullptr, NAME},
      {&SCalc::ProcessVectorFunction, nullptr, "c)", nullptr, NAME},
      {&SCalc::ProcessMathFunction, "abs", "-c)", "c", RP},
      {&SCalc::ProcessMathFunction, "^", "c,2)", nullptr, RP},
      {&SCalc::ProcessMathFunction, "ma", "c,2)", nullptr, NAME},
      {&SCalc::ProcessDataVariable, "종가"_kr, "(1)", "c", LP},
      {&SCalc::ProcessDataVariable, "abs", "(1)", nullptr, LP},
      {&SCalc::ProcessTimeFunction, "CompressO", "2)", "CompressO(2)", RP},
      {&SCalc::ProcessTimeFunction, "c", "2)", nullptr, NUMBER},
  };
  for (const auto &test : kCases) {
    Engine engine;
    engine.calc.SetExpression(test.arguments);
    engine.calc.GetToken();
    const SVector result = (engine.calc.*test.process)(test.word);
    EXPECT_EQ(engine.calc.currentToken, test.next) << test.arguments;
    EXPECT_EQ(engine.calc.errorCount, 0) << test.arguments;
    Engine other;
    EXPECT_TRUE(Agree(result, test.same != nullptr ? other.Calculate(test.same) : SVector()))
        << test.arguments;
  }
}

}  // namespace
}  // namespace trovenu::tests
