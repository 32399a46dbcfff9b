#include <gtest/gtest.h>

#include "tests/formula/engine.h"
#include "tests/formula/postfix/program_text.h"
#include "trovenu/formula/user_function_list.h"

namespace trovenu::tests {
namespace {

SFunctionList Functions(int count) {
  SFunctionList list;
  for (int i = 0; i < count; ++i) {
    SFunction function;
    function.IndexName = ("f" + std::to_string(i)).c_str();
    function.Expression = ("a+" + std::to_string(i)).c_str();
    function.VarName[0] = "a";
    list.Add(function);
  }
  return list;
}

std::string Compiled(SCalc &calc, const std::string &formula) {
  calc.SetExpression(CodePageFromUtf8(formula, nullptr).c_str());
  calc.InfixToPostFix();
  return ProgramText(*calc.programStack);
}

std::string Compiled(const std::string &formula, SFunctionList *functions = nullptr) {
  SCalc calc;
  calc.SetFunction(functions);
  return Compiled(calc, formula);
}

TEST(Compiler, ItemsStandInTheOrderInWhichTheyRun) {
  const struct {
    const char *formula;
    const char *program;
  } kCases[] = {
      {"c+1", "c 1 PLUS"},
      {"1+c*o", "1 c o MUL PLUS"},
      {"(c+o)*2", "c o PLUS 2 MUL"},
      {"a-b-c", "a b MINUS c MINUS"},
      {"a<b==c and !d or e", "a b OPLT c OPEQ d OPNOT OPAND e OPOR"},
      {"c*-o", "c o UMINUS MUL"},
      {"(+c)%h/l", "c UPLUS h MOD l DIV"},
      {"c>=o && c<=h || c!=l", "c o OPGE c h OPLE OPAND c l OPNEQ OPOR"},
      {"c>o 그리고 부정 (c<>h)", "c o OPGT c h OPNEQ OPNOT OPAND"},
      {"max(a,b,c)", "a b c max/3"},
      {"AVG(c, max(o,h)+1)", "c o h max/2 1 PLUS AVG/2"},
      {"평균(종가,5)", "종가 5 평균/2"},
      {"ad()*pow(c,2)-abs(-c)", "ad/0 c 2 pow/2 MUL c UMINUS abs/1 MINUS"},
      {"c(2)", "c 2 PREV/1"},
      {"x(n+1)*c(o(1))", "x n 1 PLUS PREV/1 c o 1 PREV/1 PREV/1 MUL"},
      {"x=c; x+1", "x c OPASSIGN x 1 PLUS"},
      {"x=c>o;", "x c o OPGT OPASSIGN"},
      // Everything groups from the left.
      {"a^b^c", "a b OPPOW/0 c OPPOW/0"},
      {"max(a,b,c)^2", "a b c max/3 2 OPPOW/3"},
      {"x=y=c", "x y OPASSIGN c OPASSIGN"},
      {"a+x=c", "a x PLUS c OPASSIGN"},
      // No operand is expected where a statement begins, so the sign is an operator.
      {"-c", "c MINUS"},
      {"x=1;-x", "x 1 OPASSIGN x MINUS"},
      // The second sign sends the first one out.
      {"c+-!o", "c UMINUS o OPNOT PLUS"},
      // Dropped words, and those that are passed over.
      {"rsi(14)>30", "14 30 OPGT"},
      {"ma(c,5,단순)", "c 5 단순"},
      {"CompressC(day)", "CompressC/2 day"},
      {"DeCompress(c,d)", "c d"},
      {"csar(0.02,0.2)", "0.02 0.2 csar/2"},
      {"Year+1", "Year 1 PLUS"},
      // Malformed.
      {"", ""},
      {"c o", "o c"},
      {"c 1", "1 c"},
      {"(c", "c OPLP"},
      {"c)", ""},
      {"c(1", "1 OPLP c"},
      {"c # 'o", "o c"},
      {"c;# ;o", "c o"},
      {"avg(c;5)", "c OPLP avg/1 5"},
  };
  for (const auto &[formula, program] : kCases) EXPECT_EQ(Compiled(formula), program) << formula;
}

TEST(Compiler, CountsArguments) {
  const struct {
    const char *text;
    int count;
  } kCases[] = {{"()", 0},  {"(a)", 1},    {"(a,b)", 2}, {" ( (a,b), c(1,2) ) + d", 2},
                {"", 0},    {"a", 0},      {"(a,b", 1},  {"(#'a;b,c)", 2},
                {"(,)", 1}, {"((,,))", 0}, {"(", 0}};
  for (const auto &[text, count] : kCases) {
    SCalc calc;
    calc.SetExpression(text);
    EXPECT_EQ(calc.GetParamCount(), count) << text;
    EXPECT_EQ(calc.readPointer, calc.expression);
  }
}

TEST(Compiler, CodesHaveTheirTypeAndPrecedence) {
  const SCalc calc;
  const struct {
    int first, last, type, precedence;
  } kRows[] = {{-1, -1, 90, 1}, {0, 0, 0, 8},   {1, 1, 1, 8},    {2, 2, 2, 8},   {3, 3, 3, 1},
               {4, 4, 4, 1},    {5, 5, 90, 1},  {6, 6, 90, 9},   {7, 7, 90, 10}, {8, 10, 5, 7},
               {11, 12, 5, 5},  {13, 15, 5, 6}, {16, 21, 5, 4},  {22, 23, 5, 3}, {24, 24, 5, 2},
               {25, 25, 90, 1}, {26, 39, 2, 8}, {40, 45, 90, 1}, {46, 89, 2, 8}, {90, 99, 90, 1}};
  for (const auto &row : kRows) {
    for (int code = row.first; code <= row.last; ++code) {
      EXPECT_EQ(calc.GetOpType(code), row.type) << code;
      EXPECT_EQ(calc.GetPrecedence(code), row.precedence) << code;
    }
  }
}

TEST(Compiler, FunctionsHaveTheirCodes) {
  const struct {
    int code;
    const char *call;
  } kCases[] = {{26, "절대값(c)"},     {35, "atan(c)"},      {39, "누승(c,2)"},
                {47, "합계(c)"},       {51, "만일(c,o,h)"},  {57, "LowestSince(1,c,o)"},
                {63, "상향돌파(c,o)"}, {67, "BarsSince(c)"}, {72, "PVT()"},
                {76, "RSquared(c,5)"}, {77, "ZigZag(5)"},    {78, "sar(1,2)"},
                {78, "c파라볼릭(1,2)"}};
  for (const auto &[code, call] : kCases) {
    SCalc calc;
    Compiled(calc, call);
    EXPECT_EQ(calc.programStack->Items[0].OpCode, code) << call;
  }
}

TEST(Compiler, UserFunctionsHaveTheCodeOfTheirPlace) {
  SFunctionList functions = Functions(12);
  SCalc calc;
  calc.SetFunction(&functions);
  EXPECT_EQ(Compiled(calc, "F9(c,2)+f10(o)"), "c 2 F9/2 o f10/1 PLUS");
  const SStack &program = *calc.programStack;
  EXPECT_EQ(program.Items[3].OpCode, 89);
  EXPECT_EQ(program.Items[1].OpCode, 90);
  EXPECT_EQ(ProgramText(*calc.functionStacks[9]), "a 9 PLUS");
  EXPECT_STREQ(calc.expression, "F9(c,2)+f10(o)");
}

TEST(Compiler, AFullProgramDropsTheRest) {
  std::string formula = "c";
  for (int i = 1; i < 50; ++i) formula += "+c";
  SCalc fits;
  Compiled(fits, formula + "+");
  EXPECT_EQ(fits.itemsDropped, 0);
  SCalc calc;
  const std::string text = Compiled(calc, formula + "+o");
  EXPECT_EQ(calc.programStack->Count, 100);
  EXPECT_EQ(calc.itemsDropped, 1);
  EXPECT_TRUE(text.ends_with("c PLUS o")) << text;
  EXPECT_EQ(Compiled("1" + std::string(150, ')') + std::string(150, '(')).substr(0, 7), "1 OPLP ");
}

// Required: compiling again adds to the program, and a copy doesn't run.
TEST(Compiler, CompilingAgainAddsAndACopyHasToBeCompiled) {
  Engine engine;
  EXPECT_EQ(Compiled(engine.calc, "c+1"), "c 1 PLUS");
  SCalc copy(engine.calc);
  EXPECT_EQ(copy.programStack->Top, -1);
  EXPECT_EQ(copy.programStack->Count, 3);
  EXPECT_STREQ(copy.programStack->Items[2].Name.c_str(), "c");
  EXPECT_EQ(copy.CalcOp(nullptr).GetSize(), 0);
  EXPECT_EQ(Compiled(engine.calc, "o"), "PLUS 1 c o");
}

TEST(Stack, IsBounded) {
  SStack stack;
  SStackItem item;
  item.ParamCount = 7;
  stack.Pop(item);
  stack.Peek(item);
  EXPECT_EQ(item.ParamCount, 7);
  for (int i = 0; i < 120; ++i) {
    item.ParamCount = i;
    stack.Push(item);
  }
  EXPECT_EQ(stack.Top, 99);
  EXPECT_EQ(stack.Count, 100);
  stack.Pop(item);
  EXPECT_EQ(item.ParamCount, 99);
  EXPECT_EQ(stack.Count, 99);
}

}  // namespace
}  // namespace trovenu::tests
