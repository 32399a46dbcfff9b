#include "tests/tools/tool_runner.h"

namespace trovenu::tests {

namespace {

class EvalTest : public ToolTest {};

constexpr const char *kBars =
    "date,open,high,low,close\n"
    "20240102,1,4,1,2\n"
    "20240103,2,5,2,0.1\n"
    "20240104,3,6,3,1200000\n";

TEST_F(EvalTest, WritesEachFormat) {
  const struct {
    const char *format;
    const char *expected;
  } kCases[] = {
      {"csv",
       "date,c,c(1)\n"
       "2024-01-02,2,\n"
       "2024-01-03,0.1,2\n"
       "2024-01-04,1200000,0.1\n"},
      {"json",
       "[\n"
       "{\"date\":\"2024-01-02\",\"c\":2,\"c(1)\":null},\n"
       "{\"date\":\"2024-01-03\",\"c\":0.1,\"c(1)\":2},\n"
       "{\"date\":\"2024-01-04\",\"c\":1200000,\"c(1)\":0.1}\n"
       "]\n"},
      {"table",
       "      date          c  c(1)\n"
       "----------  ---------  ----\n"
       "2024-01-02        2.0\n"
       "2024-01-03        0.1   2.0\n"
       "2024-01-04  1200000.0   0.1\n"},
  };
  for (const auto &test : kCases) {
    const ToolResult result =
        Run({"eval", "--bars", "-", "--formula", "c", "--formula", "c(1)", "--format", test.format}, kBars);
    EXPECT_EQ(result.exitCode, 0) << result.err;
    EXPECT_EQ(result.out, test.expected);
  }
  EXPECT_EQ(Run({"eval", "--bars", "-", "c", "c(1)"}, kBars).out, kCases[2].expected);
}

TEST_F(EvalTest, WritesNumbersThatReadBackExactly) {
  const struct {
    const char *formula;
    const char *value;
  } kCases[] = {
      {"1/3", "0.3333333333333333"},
      {"0.1+0.2", "0.30000000000000004"},
      {"100000", "100000"},
      {"-2", "-2"},
      {"1/100000", "0.00001"},
      {"1/1000000", "1e-06"},
      {"123456789012345678", "1.2345678901234568e+17"},
      {"pow(10,400)", ""},
      {"0*pow(10,400)", ""},
      {"d", "20240104"},
  };
  for (const auto &test : kCases) {
    SCOPED_TRACE(test.formula);
    const ToolResult result = Eval(kBars, test.formula);
    const std::string end = std::string("\n2024-01-04,") + test.value + "\n";
    EXPECT_TRUE(result.out.ends_with(end)) << result.out << result.err;
  }
}

TEST_F(EvalTest, ShowsTheDecimalsThatCount) {
  const ToolResult result =
      Run({"eval", "--bars", "-", "--last", "1", "1/3", "v=1/30000", "10/4", "10000000*100000000+c"}, kBars);
  EXPECT_EQ(result.out,
            "      date      1/3    v=1/30000  10/4  10000000*100000000+c\n"
            "----------  -------  -----------  ----  --------------------\n"
            "2024-01-04  0.33333  0.000033333   2.5      1.0000000012e+15\n");
}

TEST_F(EvalTest, WritesTheNewestBars) {
  EXPECT_EQ(Run({"eval", "--bars", "-", "c(1)", "--format", "csv", "--last", "1"}, kBars).out,
            "date,c(1)\n2024-01-04,0.1\n");
  EXPECT_EQ(Run({"eval", "--bars", "-", "c", "--format", "csv", "--last", "9"}, kBars).out,
            Run({"eval", "--bars", "-", "c", "--format", "csv"}, kBars).out);
  for (const char *bad : {"0", "-1", "x"}) {
    EXPECT_EQ(Run({"eval", "--bars", "-", "c", "--last", bad}, kBars).exitCode, 2);
  }
}

TEST_F(EvalTest, KeepsVariablesFromFormulaToFormula) {
  EXPECT_EQ(Run({"eval", "--bars", "-", "--format", "csv", "--last", "1", "x = 5; o", "x + 1"}, kBars).out,
            "date,x = 5; o,x + 1\n2024-01-04,3,6\n");
}

TEST_F(EvalTest, NamesColumnsByFormula) {
  const std::vector<std::string> arguments = {"eval",      "--bars", "-", "--last", "1",       "avg(o, 2)",
                                              " o\n +  1", "o",      "o", "종가*0", "--format"};
  const auto with = [&](const char *format) {
    std::vector<std::string> all = arguments;
    all.emplace_back(format);
    return all;
  };
  EXPECT_EQ(Run(with("csv"), kBars).out, "date,\"avg(o, 2)\",o + 1,o,o (2),종가*0\n2024-01-04,2.5,4,3,3,0\n");
  EXPECT_EQ(
      Run(with("json"), kBars).out,
      "[\n{\"date\":\"2024-01-04\",\"avg(o, 2)\":2.5,\"o + 1\":4,\"o\":3,\"o (2)\":3,\"종가*0\":0}\n]\n");
  EXPECT_EQ(Run(with("table"), kBars).out,
            "      date  avg(o, 2)  o + 1  o  o (2)  종가*0\n"
            "----------  ---------  -----  -  -----  ------\n"
            "2024-01-04        2.5      4  3      3       0\n");
}

TEST_F(EvalTest, TakesAFormulaThatBeginsWithAMinus) {
  EXPECT_TRUE(
      Run({"eval", "--bars", "-", "--format", "csv", "--formula", "-o"}, kBars).out.ends_with(",-3\n"));
}

TEST_F(EvalTest, FillsWhatTheResultLacks) {
  // One element in place of a series, none at all, and more of them than bars.
  EXPECT_EQ(Run({"eval", "--bars", "-", "--format", "csv", "min(c,0)", "avg(c,9)", "shift(o,1)"}, kBars).out,
            "date,\"min(c,0)\",\"avg(c,9)\",\"shift(o,1)\"\n"
            "2024-01-02,0,,\n"
            "2024-01-03,,,1\n"
            "2024-01-04,,,2\n");
}

TEST_F(EvalTest, WantsOnlyTheColumnsThatAFormulaReads) {
  const char *bars = "date,close\n20240102,1\n20240103,2\n";
  for (const char *formula :
       {"c", "avg(c,2)", "d", "time", "1", "rsi(2)", "compressc(day)", "compressd(2)", "c*3"}) {
    EXPECT_EQ(Eval(bars, formula).exitCode, 0) << formula;
  }
  const struct {
    const char *formula;
    const char *column;
  } kCases[] = {
      {"v", "volume (거래량)"},        {"시가", "open (시가)"},
      {"amount", "amount (거래대금)"}, {"oi", "openinterest (미결제약정)"},
      {"if(c>0,c,h)", "high (고가)"},  {"x=l; c", "low (저가)"},
      {"pvt()", "volume (거래량)"},    {"pvi(v)", "volume (거래량)"},
      {"nvi(v)", "volume (거래량)"},   {"compressv(day)", "volume (거래량)"},
      {"compresso(2)", "open (시가)"}, {"dayopen()", "open (시가)"},
      {"predayhigh()", "high (고가)"}, {"sar(0.02,0.2)", "high (고가)"},
      {"cci(2)", "high (고가)"},
  };
  for (const auto &test : kCases) {
    SCOPED_TRACE(test.formula);
    const ToolResult result = Eval(bars, test.formula);
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err, std::string("trovenu: standard input:1: expected a column ") + test.column +
                              ", which the formula \"" + test.formula + "\" reads\n");
  }
}

TEST_F(EvalTest, TellsAFaultyFormulaInOneLine) {
  const struct {
    const char *formula;
    const char *line;
  } kCases[] = {
    {"c +", "formula \"c +\": 수식이 불완전합니다. 필요한 변수나 연산자가 없습니다. (line 1, column 4)"},
    {"c;\nfoo", "formula \"c; foo\": foo이(가) 정의되지 않았습니다. (line 2, column 4)"},
    {"c + 😀", "formula \"c + 😀\": has a character that is not in the Korean code page"},
    {"종가 + 종가 + 종가 + 종가 + 종가 + 종가 + 종가 + 종가 + 종가 + 종가 + 종가 + 종가 + 종가 + 종가 + "
     "없음",
     "formula \"종가 + 종가 + 종가 + 종가 + 종가 + 종가 ...\": 없음이(가) 정의되지 않았습니다. (line 1, "
     "column 103)"},
#if !defined(_WIN32)  // whose programs are given characters, not bytes
    {"c\xFF", "formula \"c?\": expected UTF-8, found other bytes"},
#endif
  };
  for (const auto &test : kCases) {
    SCOPED_TRACE(test.formula);
    const ToolResult result = Eval(kBars, test.formula);
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(result.err, std::string("trovenu: ") + test.line + "\n");
  }
}

}  // namespace

}  // namespace trovenu::tests
