// What is done to formula texts: variables filled in, faults looked for, comments removed, conditions made.

#include <gtest/gtest.h>

#include <string>

#include "trovenu/indicator/index.h"
#include "trovenu/support/korean.h"

namespace trovenu::tests {
namespace {

TEST(ConvertExpression, FillsInTheValuesOfTheVariables) {
  SIndex index;
  index.VarName[0] = "p";
  index.VarValue[0] = "14";
  index.VarName[1] = "long";
  index.VarValue[1] = "(p * 2)";
  index.VarName[2] = "P";
  index.VarValue[2] = "never";
  index.VarName[3] = "기간"_kr;
  index.VarValue[3] = "7";
  struct {
    const char *formula;
    const char *converted;
  } const cases[] = {
      {"avg(c,P)", "avg(c,14)"},
      // A value is not looked through again.
      {"avg(c,long)", "avg(c,(p * 2))"},
      {"period1 + p1 + p_1", "period1 + p1 + p_1"},
      // A digit begins no name, so a name behind it counts.
      {"5p", "514"},
      {"평균(c,기간)"_kr, "평균(c,7)"_kr},
      {"", ""},
      {"p;p", "14;14"},
  };
  for (const auto &test : cases) {
    index.Expression[0] = test.formula;
    index.ConvertExpression(0);
    EXPECT_STREQ(index.ConvExpression[0].c_str(), test.converted);
  }
  index.Expression[4] = "p";
  index.ConvertExpression(5);
  index.ConvertExpression(-1);
  EXPECT_TRUE(index.ConvExpression[4].IsEmpty());
  index.ConvertExpression();
  EXPECT_STREQ(index.ConvExpression[4].c_str(), "14");
}

// All variables named, as the check needs it.
SIndex Named() {
  SIndex index;
  for (int i = 0; i < kVariables; ++i) index.VarName[i] = (" v" + std::to_string(i) + " ").c_str();
  return index;
}

TEST(CheckError, CountsParentheses) {
  SIndex index = Named();
  EXPECT_TRUE(index.CheckError().Message.IsEmpty());
  EXPECT_STREQ(index.VarName[3].c_str(), "v3");
  index.Expression[1] = " (c) ";
  index.Expression[2] = "((c)";
  index.Expression[3] = ")";
  const IndexError error = index.CheckError();
  EXPECT_STREQ(error.Message.c_str(), "괄호의 개수가 맞지 않습니다."_kr);
  EXPECT_EQ(error.BlVariable, 0);
  EXPECT_EQ(error.ExpIndex, 2);
  EXPECT_STREQ(index.Expression[1].c_str(), "(c)");
  EXPECT_EQ(index.LastError.ExpIndex, 2);
  // Order and comments have no part in it.
  index.Expression[2] = ")c( // ()";
  index.Expression[3] = "";
  EXPECT_TRUE(index.CheckError().Message.IsEmpty());
}

// Required: a variable without a name needs a value, and only it is looked at.
TEST(CheckError, RefusesAVariableWithoutNameAndValue) {
  SIndex index = Named();
  index.VarName[3] = " ";
  const IndexError error = index.CheckError();
  EXPECT_STREQ(error.Message.c_str(), "에 해당하는 변수값이 없읍니다."_kr);
  EXPECT_EQ(error.BlVariable, 1);
  EXPECT_EQ(error.ExpIndex, 0);
  index.VarValue[3] = "5";
  EXPECT_TRUE(index.CheckError().Message.IsEmpty());
  index.VarName[0] = "1 2";
  EXPECT_TRUE(index.CheckError().Message.IsEmpty());
}

TEST(SkipComments, RemovesComments) {
  struct {
    const char *text;
    const char *left;
  } const cases[] = {
      {"a/*x*/b", "a*/b"},        {"a//x", "a"}, {"a/*x", "a"}, {"a/b/c", "a/b/c"}, {"a//x\nb", "a\nb"},
      {"a//x\r\nb", "a\r\nb"},    {"a/", "a/"},  {"", ""},      {"//x\n//y", "\n"}, {"/**/", "*/"},
      {"a//x\n/*y*/b", "a\n*/b"},
  };
  for (const auto &test : cases) {
    SString text = test.text;
    SIndex::SkipComments(text);
    EXPECT_STREQ(text.c_str(), test.left) << test.text;
  }
}

TEST(BlackBox, MakesAConditionOfTheLastStatement) {
  // "X" stands for the name of the result.
  struct {
    const char *formula;
    int kind;
    double params[3];
    const char *made;
  } const cases[] = {
      {"a=avg(c,5); a-avg(c,20);", 0, {0, 30, 0}, "a=avg(c,5);Sum(X =  a-avg(c,20); CrossUp(X,30),0)>=="},
      {"c", 0, {1, 30, 0}, "Sum(X = c; CrossDown(X,30),0)>=="},
      {"c", 1, {0, 1.5, 2}, "Sum(X = c; X >= 1.5,0)>=="},
      {"c", 1, {1, 1.5, 2}, "Sum(X = c; X <= 2,0)>=="},
      {"c", 2, {1, 1, 2}, "Sum(X = c; X >= 1 And X <= 2,0)>=="},
      {"c", 99, {0, 1, 2}, "Sum(X = c,0)>=="},
      {"c", 5, {0, 1, 2}, "Sum(X = c; X(2) > X(1) And X(1) <= X,0)>=="},
      {"c", 5, {2, 1, 2}, "Sum(X = c; X(2) <= X(1) And X(1) > X,0)>=="},
      {"c", 6, {0, 1, 2}, "Sum(X = c; X(2) <= X(1) And X(1) <= X,0)>=="},
      {"c", 6, {1, 1, 2}, "Sum(X = c; X(2) > X(1) And X(1) > X,0)>=="},
      // Required: the last ";" goes whatever stands behind it.
      {"a=1; b", 3, {0, 0, 0}, "Sum(X = a=1 b,0)>=="},
      {";c", 3, {0, 0, 0}, "Sum(X = ;c,0)>=="},
      {"c; // gone\n", 3, {0, 0, 0}, "Sum(X = c \n,0)>=="},
  };
  for (const auto &test : cases) {
    SIndex index;
    index.Expression[1] = test.formula;
    index.ConvBlackBoxToExpression(1, static_cast<TypeBlackBox>(test.kind), test.params);
    std::string made = test.made;
    for (std::size_t at; (at = made.find('X')) != std::string::npos;) made.replace(at, 1, "Black1Box1Exp1");
    EXPECT_EQ(index.Expression[1].c_str(), made) << test.formula;
  }
}

}  // namespace
}  // namespace trovenu::tests
