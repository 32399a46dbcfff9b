#include <gtest/gtest.h>

#include <set>

#include "tests/formula/engine.h"
#include "tests/formula/random_formula.h"
#include "trovenu/formula/postfix/carried.h"
#include "trovenu/formula/user_function_list.h"
#include "trovenu/platform/code_page.h"

namespace trovenu::tests {
namespace {

SFunction Function(const char *name, const char *body, const char *first = "", const char *second = "") {
  SFunction function;
  function.IndexName = name;
  function.Expression = CodePageFromUtf8(body, nullptr).c_str();
  function.VarName[0] = first;
  function.VarName[1] = second;
  return function;
}

// An engine with a compiled formula.
struct Program : Engine {
  explicit Program(const std::string &formula, SFunctionList *functions = nullptr, Bars data = FourBars())
      : Engine(std::move(data)) {
    calc.SetFunction(functions);
    calc.SetExpression(formula.c_str());
    calc.InfixToPostFix();
  }
  SVector Run() { return calc.CalcOp(nullptr); }
};

// What a program gives on the four bars; their closes are 10, 20, 30, 40, their opens 1, 22, 3, 44.
TEST(Walker, GivesTheValuesOfThePrograms) {
  const struct {
    const char *formula;
    int start;
    std::vector<double> values;
  } kCases[] = {
      {"c", 0, {10, 20, 30, 40}},
      {"a=c+1", 0, {11, 21, 31, 41}},
      {"a=c+1; a*2", 0, {22, 42, 62, 82}},
      {"x=c>15; !x", 0, {1, 0, 0, 0}},
      {"c(1)", 1, {0, 10, 20, 30}},
      {"sum(c)", 0, {10, 30, 60, 100}},
      {"sum(c,2,1)", 2, {0, 0, 30, 50}},
      {"max(c,o,25)", 0, {25}},
      {"min(c,o)", 0, {1, 20, 3, 40}},
      {"highest(c,1)", 0, {10, 20, 30, 40}},
      {"ad()*0+1", 0, {1, 1, 1, 1}},
      {"pow(2,c/10)", 0, {2, 4, 8, 16}},
      {"2^3^2", 0, {64}},
      {"sqrt(20-c)", 0, {3.1622776601683795, 0, 0, 0}},
      {"BarsSince(c,o,c==20)", 1, {0, 0, 1, 2}},
      // A sign without an operand, or a call without its arguments, does nothing.
      {"-c", 0, {10, 20, 30, 40}},
      {"c>lowest(c)", 0, {0, 0, 0, 0}},
      {"rsi(14)", 0, {14}},
      {"CompressC(c)+1", 0, {11, 21, 31, 41}},
      {"avg(c,0)", kNoValidBar, {0, 0, 0, 0}},
      // Dates of a plain date number: the day, and its last six digits as a time.
      {"d", 0, {24, 24, 24, 24}},
      {"Time", 0, {240102, 240103, 240104, 240201}},
      {"Time-d", 0, {0, 0, 0, 0}},
  };
  for (const auto &[formula, start, values] : kCases) {
    Program program(formula);
    for (int run = 0; run < 2; ++run) {
      const SVector result = program.Run();
      EXPECT_EQ(result.GetStartIndex(), start) << formula;
      ASSERT_EQ(result.GetSize(), static_cast<int>(values.size())) << formula;
      for (int i = 0; i < result.GetSize(); ++i) {
        EXPECT_EQ(result[i], values[static_cast<std::size_t>(i)]) << formula << ", bar " << i;
      }
    }
    EXPECT_EQ(program.calc.errorCount, 0) << formula;
  }
}

TEST(Walker, RecordsItsFaults) {
  const struct {
    const char *formula;
    const char *message;
  } kCases[] = {
      {"Year", "변수 정의에 오류가 있습니다."},
      {"cci(0)", "1이상의 정수를 사용하여야 합니다"},
      {"LinearRegressionSlope(c,0)", "1이상의 정수를 사용하여야 합니다"},
      {"Correlation(c,o,0)", "1이상의 정수를 사용하여야 합니다"},
      {"valuewhen(0,c,o)", "ValueWhen의 첫번째 인자는 1이상의 정수를 사용하여야 합니다."},
      {"LowestSince(0,c,o)", "HighestSince의 첫번째 파라미터는 1이상의 값이어야 합니다."},
      {"shift(c,2000000)", "기간이 너무 큽니다."},
  };
  for (const auto &[formula, message] : kCases) {
    Program program(formula);
    program.Run();
    EXPECT_EQ(Readable(program.Message()), message) << formula;
  }
  for (const char *formula : {"cci(0)", "valuewhen(0,c,o)", "RSquared(c,0)"}) {
    EXPECT_EQ(Program(formula).Run().GetStartIndex(), kNoValidBar) << formula;
  }
  Program gone("x=c; x+lost");
  gone.calc.ClearNameTable();
  gone.Run();
  EXPECT_EQ(Readable(gone.Message()), "이름을 찾을 수 없습니다 : lost");
}

// Required: a power is stored in its base.
TEST(Walker, PowerChangesTheBoundSeries) {
  Program program("pow(c,2)+c");
  EXPECT_EQ(program.Run()[0], 200);
  EXPECT_EQ(program.bars.close[1], 400);
  EXPECT_EQ(program.Run()[0], 20000);
}

TEST(Walker, CallsUserFunctions) {
  SFunctionList list;
  list.Add(Function("twice", "a*2", "a"));
  list.Add(Function("Spread", "a; b; x=twice(a)-b; x", "a", "b"));
  list.Add(Function("name", "a", "a"));
  list.Add(Function("again", "again(a)+1", "a"));
  list.Add(Function("fifth", "a*2", "a"));
  const struct {
    const char *formula;
    double last;
  } kCases[] = {
      {"TWICE(c)+1", 81},
      {"spread(c,o)", 36},
      {"twice(c,1)", 60},
      // Required: the fifth has no effect.
      {"fifth(c)", 40},
      // Required: a result that is a name is read when it is used, and the parameter has changed by then.
      {"name(c)+name(o)", 88},
      {"b=7; spread(c,o)*0+b", 44},
  };
  for (const auto &[formula, last] : kCases) {
    Program program(formula, &list);
    program.Run();
    EXPECT_EQ(program.Run()[3], last) << formula;
    EXPECT_EQ(program.calc.errorCount, 0) << formula;
  }
  // The direct path allows 50 calls.
  std::string calls = "c";
  for (int i = 0; i < 25; ++i) calls = "twice(" + calls + ")";
  EXPECT_EQ(FindNotCarried((calls + "+" + calls).c_str(), &list).reason, nullptr);
  EXPECT_NE(FindNotCarried(("twice(" + calls + ")+" + calls).c_str(), &list).reason, nullptr);
  Program recursive("again(c)", &list);
  recursive.Run();
  EXPECT_EQ(Readable(recursive.Message()), "함수식이 너무 복잡합니다.");
}

// Random formulas that the compiled path carries give the bits of the direct path, however often they run and
// whatever ran on other data in between.
TEST(Walker, AgreesWithTheDirectPath) {
  SFunctionList functions = RandomFormula::UserFunctions();
  RandomFormula calls(20, RandomFormula::Words::AllCalls);
  // Values that the direct path borrows or writes over stand in slots of their own here.
  RandomFormula operators(21, RandomFormula::Words::Operators);
  const Bars data = RandomBars(80, 3);
  int compared = 0;
  std::set<int> codes;
  for (int n = 0; n < 9000; ++n) {
    const std::string formula = n % 3 == 0 ? operators.Next() : calls.Next();
    if (FindNotCarried(formula.c_str(), &functions).reason != nullptr) continue;
    Engine direct(data);
    direct.calc.SetFunction(&functions);
    const SVector expected = direct.Calculate(formula);
    ASSERT_EQ(direct.calc.errorCount, 0) << Readable(formula);
    Program program(formula, &functions, data);
    EXPECT_TRUE(Agree(program.Run(), expected)) << Readable(formula);
    Bars own = std::move(program.bars);
    program.bars = RandomBars(33, 4);
    program.Run();
    program.bars = std::move(own);
    EXPECT_TRUE(Agree(program.Run(), expected)) << Readable(formula);
    ++compared;
    const SStack &items = *program.calc.programStack;
    for (int i = 0; i <= items.Top; ++i) codes.insert(items.Items[static_cast<std::size_t>(i)].OpCode);
  }
  EXPECT_GT(compared, 1500);
  // Every code but those that no formula of both paths has.
  const std::set<int> kOnlyCompiled = {kCommaCode, 40, 41, 42, 43, 44, 45, 67, 72};
  for (int code = kPlusSignCode; code < 79; ++code) {
    EXPECT_NE(codes.contains(code), kOnlyCompiled.contains(code)) << code;
  }
}

}  // namespace
}  // namespace trovenu::tests
