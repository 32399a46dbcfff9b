#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/formula/bars.h"
#include "trovenu/formula/messages.h"
#include "trovenu/formula/user_function_list.h"

namespace trovenu::tests {
namespace {

SFunction MakeFunction(const char *name, const char *body, const std::vector<const char *> &parameters = {}) {
  SFunction function;
  function.IndexName = name;
  function.Expression = body;
  for (std::size_t i = 0; i < parameters.size(); ++i) function.VarName[i] = parameters[i];
  return function;
}

// Close 10 to 15 and a few functions.
class UserCall : public testing::Test {
 protected:
  UserCall() {
    bars_.close = Series({10, 11, 12, 13, 14, 15});
    bars_.Bind(calc_);
    calc_.SetFunction(&list_);
    list_.Add(MakeFunction("avg2", "(a+b)/2", {"a", "b"}));
    list_.Add(MakeFunction("next", "y = x + 1; y * 10", {"x"}));
    list_.Add(MakeFunction("seven", "7"));
    list_.Add(MakeFunction("loop", "loop()"));
    list_.Add(MakeFunction("nothing", ""));
    list_.Add(MakeFunction("broken", "c +"));
    list_.Add(MakeFunction("DeCompress", "c * 100"));
    list_.Add(MakeFunction("sum", "0"));
    list_.Add(MakeFunction("outer", "t = 1; next(x, 1) + t", {"x"}));
    list_.Add(MakeFunction("leaky", "x = 5; next(1, 0); x", {"x"}));
  }

  SVector Evaluate(const char *formula) {
    calc_.SetExpression(formula);
    return calc_.Calculate();
  }
  // The value at the last bar; reports a fault of the formula.
  double Last(const char *formula) {
    const SVector result = Evaluate(formula);
    EXPECT_EQ(calc_.errorCount, 0) << formula << ": " << calc_.errorText.c_str();
    return result[result.GetSize() - 1];
  }

  Bars bars_;
  SFunctionList list_;
  SCalc calc_;
};

TEST_F(UserCall, GivesTheValueOfItsLastStatement) {
  EXPECT_EQ(Last("avg2(c, 5)"), 10);
  EXPECT_EQ(Last("AVG2(c, c)"), 15);
  EXPECT_EQ(Last("next(2)"), 30);
  EXPECT_EQ(Last("seven() + seven()"), 14);
  EXPECT_EQ(Last("avg2(next(c), next(c - 1))"), 155);
}

TEST_F(UserCall, StandsBetweenTheWordsOfMathAndThoseOfTime) {
  EXPECT_EQ(Last("DeCompress()"), 1500);
  EXPECT_EQ(Last("sum(c, 2)"), 29);
}

TEST_F(UserCall, PutsBackWhatTheCallerKnewAndLeavesTheRest) {
  EXPECT_EQ(Last("x = 100; next(2); x"), 100);
  EXPECT_EQ(Last("next(2); y"), 3);
  // Known before the call, so put back.
  EXPECT_EQ(Last("y = 1; next(2); y"), 1);
  EXPECT_EQ(Last("y = 1; y + next(y) + y"), 22);
}

// Required: the argument behind the declared ones shifts the result, and such a call puts nothing back.
TEST_F(UserCall, ShiftsByAFurtherArgumentAndThenPutsNothingBack) {
  EXPECT_EQ(Last("avg2(c, c, 1)"), 14);
  EXPECT_EQ(Last("x = 100; next(2, 0); x"), 2);
  // The call around it does: what it changed is known to its own caller.
  EXPECT_EQ(Last("x = 100; t = 3; y = 9; outer(c) * 0 + x + t * 1000 + y * 10000"), 93100);
  EXPECT_EQ(Last("x = 100; leaky(2) + x"), 101);
}

TEST_F(UserCall, ArgumentsSeeTheParametersBoundBefore) { EXPECT_EQ(Last("avg2(4, a)"), 4); }

// Required: fifty calls of an evaluation, side by side or nested.
TEST_F(UserCall, CountsTheCallsOfAnEvaluation) {
  std::string formula = "seven()";
  for (int i = 1; i < kUserCallLimit; ++i) formula += "+seven()";
  EXPECT_EQ(Last(formula.c_str()), 350);
  EXPECT_EQ(Last(formula.c_str()), 350);
  formula += "+seven()";
  EXPECT_EQ(Evaluate(formula.c_str()).GetStartIndex(), kNoValidBar);
  EXPECT_STREQ(calc_.errorText.c_str(), messages::kTooManyCalls);
  Evaluate("loop()");
  EXPECT_STREQ(calc_.errorText.c_str(), messages::kTooManyCalls);
}

TEST_F(UserCall, ReportsFaults) {
  struct {
    const char *formula;
    const char *message;
    int position;
  } const cases[] = {
      {"seven", messages::kFaultyFunction, 5}, {"seven(", messages::kParenthesisNeeded, 6},
      {"next()", messages::kIncomplete, 6},    {"1 + broken()", messages::kIncomplete, 12},
      {"avg2(c)", messages::kIncomplete, 7},
  };
  for (const auto &test : cases) {
    SCOPED_TRACE(test.formula);
    EXPECT_EQ(Evaluate(test.formula).GetStartIndex(), kNoValidBar);
    EXPECT_STREQ(calc_.errorText.c_str(), test.message);
    EXPECT_EQ(calc_.errorPosition, test.position);
  }
  EXPECT_EQ(calc_.ProcessUserFunction("unknown").GetSize(), 0);
  list_.Add(MakeFunction("long", std::string(kExpressionBytes, ' ').c_str()));
  Evaluate("long()");
  EXPECT_STREQ(calc_.errorText.c_str(), messages::kFormulaTooLong);
}

// Required: an index past the end lowers the size as well.
TEST(FunctionList, DeletesAndReachesPastItsEnd) {
  SFunctionList list;
  for (const char *name : {"a", "b", "c"}) list.Add(MakeFunction(name, ""));
  list.Delete(1);
  EXPECT_EQ(list.Size, 2);
  EXPECT_STREQ(list[1].IndexName.c_str(), "c");
  list.Delete(7);
  EXPECT_EQ(list.Size, 1);
  list.Delete(-1);
  list.Delete(0);
  EXPECT_EQ(list.Size, 0);
  for (const long i : {-1L, 0L, 1000L}) EXPECT_EQ(&list[i], static_cast<SFunction *>(&list));
}

TEST(FunctionList, ReadsAFunctionFromOneText) {
  struct {
    const char *text;
    const char *name;
    const char *body;
    std::vector<const char *> parameters;
  } const cases[] = {
      {"avg2|(a+b)/2|a|b", "avg2", "(a+b)/2", {"a", "b"}},
      {"f|c+\n1", "f", "c+1", {}},
      {"f", "f", "", {}},
      {"f|c|", "f", "c", {""}},
      {"f|c|1|2|3|4|5|6|7|8|9|10|11", "f", "c", {"1", "2", "3", "4", "5", "6", "7", "8", "9", "10"}},
  };
  for (const auto &test : cases) {
    SCOPED_TRACE(test.text);
    SFunctionList list;
    std::string text = test.text;
    list.SetExpressionWithVariable(text.data());
    ASSERT_EQ(list.Size, 1);
    EXPECT_STREQ(list[0].IndexName.c_str(), test.name);
    EXPECT_STREQ(list[0].Expression.c_str(), test.body);
    for (std::size_t i = 0; i < kParameters; ++i) {
      EXPECT_STREQ(list[0].VarName[i].c_str(), i < test.parameters.size() ? test.parameters[i] : "");
    }
  }
}

}  // namespace
}  // namespace trovenu::tests
