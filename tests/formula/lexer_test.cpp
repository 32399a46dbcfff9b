#include <gtest/gtest.h>

#include <sstream>
#include <string>

#include "tests/formula/engine.h"
#include "trovenu/support/korean.h"

namespace trovenu::tests {
namespace {

// A token as text: "c" for a name, "5" for a number, else the name of the token.
std::string Describe(const SCalc &calc, TokenValue token) {
  static const struct {
    TokenValue token;
    const char *name;
  } kNames[] = {
      {MOD, "MOD"},   {AND, "AND"},       {LP, "LP"},       {RP, "RP"},   {MUL, "MUL"},
      {PLUS, "PLUS"}, {COMMA, "COMMA"},   {MINUS, "MINUS"}, {DIV, "DIV"}, {PRINT, "PRINT"},
      {OR, "OR"},     {ASSIGN, "ASSIGN"}, {CARET, "CARET"}, {LT, "LT"},   {LE, "LE"},
      {GT, "GT"},     {GE, "GE"},         {EQ, "EQ"},       {NE, "NE"},   {NOT, "NOT"},
  };
  if (token == NAME) return calc.nameString;
  if (token == NUMBER) {
    std::ostringstream out;
    out.precision(17);
    out << calc.numberValue;
    return out.str();
  }
  for (const auto &entry : kNames) {
    if (entry.token == token) return entry.name;
  }
  return "?";
}

// All tokens up to the first PRINT, itself included.
std::string Tokens(SCalc &calc, const std::string &text) {
  calc.SetExpression(text.c_str());
  std::string tokens;
  for (;;) {
    const TokenValue token = calc.GetToken();
    EXPECT_EQ(token, calc.currentToken);
    tokens += Describe(calc, token);
    if (token == PRINT) return tokens;
    tokens += ' ';
  }
}

TEST(Lexer, ReadsTokens) {
  const struct {
    const char *text;
    const char *tokens;
  } kCases[] = {
      {"c", "c PRINT"},
      {"+-*/%(),^", "PLUS MINUS MUL DIV MOD LP RP COMMA CARET PRINT"},
      {"a<b a<=b a>b a>=b", "a LT b a LE b a GT b a GE b PRINT"},
      {"a==b a!=b a<>b a=b", "a EQ b a NE b a NE b a ASSIGN b PRINT"},
      {"===", "EQ ASSIGN PRINT"},
      {"!a !=a ! =a", "NOT a NE a NOT ASSIGN a PRINT"},
      {"a AND b Or c nOT d", "a AND b OR c NOT d PRINT"},
      {"a 그리고 b 또는 부정 c"_kr, "a AND b OR NOT c PRINT"},
      {"종가(1)"_kr, "종가 LP 1 RP PRINT"_kr},
      {"orc andy notx and1", "orc andy notx and1 PRINT"},
      {"x_1 a1b_", "x_1 a1b_ PRINT"},
      {"_x", "PRINT"},
      {"1 23 4.5 0.25", "1 23 4.5 0.25 PRINT"},
      {"1.2.3", "1.2 PRINT"},
      {"007", "7 PRINT"},
      {"2x", "2 x PRINT"},
      {"\t\n\v\r 1", "1 PRINT"},
      {"a// b\nc", "a c PRINT"},
      {"a//b\rc", "a PRINT"},
      {"a/* b\n */c/**/d", "a c d PRINT"},
      {"a/*/b*/c", "a c PRINT"},
      {"a/* /* b */ c", "a c PRINT"},
      {"a/* b", "a PRINT"},
      {"// a\n/* b */ // c\n d", "d PRINT"},
      {"a/", "a DIV PRINT"},
      {"a*/b", "a MUL DIV b PRINT"},
      // What starts no token.
      {"#", "PRINT"},
      {"\f", "PRINT"},
      {"\xFF", "PRINT"},
      // The range of Korean bytes, one by one and without pairs.
      {"\xA1 \xFE \xB0 \xB0z", "\xA1 \xFE \xB0 \xB0z PRINT"},
  };
  for (const auto &test : kCases) {
    SCalc calc;
    EXPECT_EQ(Readable(Tokens(calc, test.text)), Readable(test.tokens)) << Readable(test.text);
    EXPECT_EQ(calc.errorCount, 0) << test.text;
  }
}

TEST(Lexer, RequiredALoneAmpersandOrBarIsAnErrorAndThenAComparison) {
  const struct {
    const char *text;
    const char *tokens;
    int errors;
  } kCases[] = {
      {"a&b", "a LT b PRINT", 2},  {"a|b", "a LT b PRINT", 1},  {"a&=b", "a LE b PRINT", 2},
      {"a|=b", "a LE b PRINT", 1}, {"a&>b", "a NE b PRINT", 2}, {"a|>b", "a NE b PRINT", 1},
      {"a&|b", "a OR b PRINT", 1}, {"a&", "a LT PRINT", 2},
  };
  for (const auto &test : kCases) {
    SCalc calc;
    EXPECT_EQ(Tokens(calc, test.text), test.tokens) << test.text;
    EXPECT_EQ(calc.errorCount, test.errors) << test.text;
    EXPECT_STREQ(calc.errorText.c_str(), "bad token") << test.text;
    EXPECT_EQ(calc.errorPosition, 1) << test.text;
  }
}

TEST(Lexer, RequiredAPeekedWordEndsAtItsFirstUnderscore) {
  SCalc calc;
  calc.SetExpression("ab_c de_f");
  EXPECT_STREQ(calc.PeekName(calc.expression), "ab");
  EXPECT_STREQ(calc.PeekName(calc.expression + 5), "de");
  EXPECT_EQ(calc.readPointer, calc.expression);
  EXPECT_STREQ(calc.GetName(nullptr), "ab_c");
  EXPECT_EQ(calc.readPointer, calc.expression + 4);

  // So a keyword swallows what follows it behind an underscore.
  EXPECT_EQ(Tokens(calc, "and_x OR_1_2 not_"), "AND OR NOT PRINT");
  EXPECT_EQ(Readable(Tokens(calc, "그리고_가 x_and"_kr)), "AND x_and PRINT");
}

TEST(Lexer, RequiredWhiteSpaceHoldsAtMostOneComment) {
  const struct {
    const char *text;
    const char *left;
  } kCases[] = {
      {"", ""},
      {" \t\n\v\rx", "x"},
      {"x", "x"},
      {"  / x", "/ x"},
      {"/", "/"},
      {" // a\n b", "\n b"},
      {" // a", ""},
      {" /* a */ b", " b"},
      {" /* a */ /* b */", " /* b */"},
      {"/* a *//* b */", "/* b */"},
      {" /* a", ""},
      {" /*/ a", ""},
      {"\fx", "\fx"},
  };
  for (const auto &test : kCases) {
    SCalc calc;
    calc.SetExpression(test.text);
    calc.SkipWhite();
    EXPECT_STREQ(calc.readPointer, test.left) << test.text;
  }
}

TEST(Lexer, WordsAndNumbersHaveLimits) {
  const std::string word(kWordBytes - 1, 'w');
  const std::string number(kNumberBytes - 1, '1');
  const struct {
    std::string text;
    std::string token;
    const char *message;
  } kCases[] = {
      {word, word, ""},
      {word + "w", word, "이름이 너무 깁니다."},
      {word + std::string(3000, 'w'), word, "이름이 너무 깁니다."},
      // The pair of bytes that the limit would split is no concern of the lexer, which has no pairs.
      {word + "가"_kr, word, "이름이 너무 깁니다."},
      {number, "1.1111111111111111e+198", ""},
      {number + "1", "1.1111111111111111e+198", "숫자가 너무 깁니다."},
      {"0." + std::string(kNumberBytes - 4, '0') + "5", "5.0000000000000002e-197", ""},
      {"0." + std::string(kNumberBytes - 3, '0') + "5", "0", "숫자가 너무 깁니다."},
      {"1" + std::string(4000, '.'), "1", "숫자가 너무 깁니다."},
  };
  for (const auto &test : kCases) {
    SCalc calc;
    const std::string tokens = Tokens(calc, test.text + " end");
    EXPECT_EQ(tokens, test.token + " end PRINT");
    EXPECT_EQ(Readable(calc.errorText.c_str()), test.message) << test.text.size();
    EXPECT_EQ(calc.errorCount, test.message[0] == '\0' ? 0 : 1);
  }
}

}  // namespace
}  // namespace trovenu::tests
