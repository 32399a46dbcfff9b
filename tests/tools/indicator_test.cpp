#include <algorithm>
#include <utility>

#include "tests/tools/tool_runner.h"

namespace trovenu::tests {

namespace {

constexpr const char *kDaily = TROVENU_DATA_DIR "/daily.csv";

class IndicatorTest : public ToolTest {
 protected:
  ToolResult Indicator(std::vector<std::string> arguments, std::string_view input = "") const {
    arguments.insert(arguments.begin(), "indicator");
    arguments.insert(arguments.end(), {"--index-dir", Path("tables")});
    return Run(arguments, input);
  }

  // Runs a command that must succeed, and gives what it prints.
  std::string Done(const std::vector<std::string> &arguments, std::string_view input = "") const {
    const ToolResult result = Indicator(arguments, input);
    EXPECT_EQ(result.exitCode, 0) << result.err;
    EXPECT_EQ(result.err, "");
    return result.out;
  }

  void ExpectFailure(const std::vector<std::string> &arguments, const std::string &err, int exitCode = 1,
                     std::string_view input = "") const {
    const ToolResult result = Indicator(arguments, input);
    EXPECT_EQ(result.exitCode, exitCode);
    EXPECT_EQ(result.out, "");
    EXPECT_EQ(WithSlashes(result.err), WithSlashes("trovenu: " + err + "\n"));
  }

  std::string Table(const std::string &name) const { return Content("tables/" + name); }
};

constexpr const char *kBars = "date,open,close\n20240102,1,2\n20240103,2,4\n20240104,6,6\n";

TEST_F(IndicatorTest, AddsShowsRunsAndRemoves) {
  EXPECT_EQ(Done({"add", "내 평균", "--formula", "avg(c, 기간)", "--formula", "Diff = c - o; diff", "--line",
                  "평균 %기간%", "--line", "차이", "--var", "기간=2", "--description", "시험"}),
            "added indicator \"내 평균\"\n");
  EXPECT_EQ(Done({"show", "내 평균"}),
            "indicator   내 평균\n"
            "korean      시험\n"
            "variable    기간 2\n"
            "line        평균 %기간%\n"
            "formula     avg(c, 기간)\n"
            "line        차이\n"
            "formula     Diff = c - o; diff\n");
  EXPECT_EQ(Done({"run", "내 평균", "--bars", "-", "--format", "csv"}, kBars),
            "date,평균 2,차이\n2024-01-02,,1\n2024-01-03,3,2\n2024-01-04,5,0\n");
  EXPECT_EQ(
      Done({"run", "내 평균", "--bars", "-", "--format", "csv", "--last", "1", "--set", "기간=3"}, kBars),
      "date,평균 3,차이\n2024-01-04,4,0\n");

  ExpectFailure({"add", "내 평균", "--formula", "c"},
                "indicator \"내 평균\": is there already (--replace puts the new one in its place)");
  EXPECT_EQ(Done({"add", "내 평균", "--formula", "c * 2", "--replace"}), "replaced indicator \"내 평균\"\n");
  EXPECT_EQ(Done({"run", "내 평균", "--bars", "-", "--format", "csv", "--last", "1"}, kBars),
            "date,c * 2\n2024-01-04,12\n");
  EXPECT_EQ(Done({"list", "--format", "csv"}), "kind,name,table,description\nindicator,내 평균,user,\n");

  EXPECT_EQ(Done({"remove", "내 평균"}), "removed indicator \"내 평균\", 1 record\n");
  EXPECT_EQ(Done({"list", "--format", "csv"}), "kind,name,table,description\n");
  ExpectFailure({"remove", "내 평균"}, "no indicator \"내 평균\" in " + Path("tables/"));
  // The record stays in the file, and the name is free again.
  EXPECT_NE(Table("User.ind").find("c * 2"), std::string::npos);
  EXPECT_EQ(Done({"add", "내 평균", "--formula", "c"}), "added indicator \"내 평균\"\n");
}

TEST_F(IndicatorTest, KnowsEveryKind) {
  const struct {
    const char *kind;
    std::vector<std::string> add;
    const char *result;
  } kCases[] = {
      {"condition", {"--formula", "c > o + 1"}, "date,k\n2024-01-02,0\n2024-01-03,4\n2024-01-04,0\n"},
      {"pattern",
       {"--formula", "c > o", "--formula", "c == o"},
       "date,k 강세패턴,약세 패턴\n"
       "2024-01-02,1,0\n2024-01-03,1,0\n2024-01-04,0,1\n"},
      {"system",
       {"--formula", "c == 2", "--formula", "", "--formula", "c == 6"},
       "date,k 신규매수,신규매도\n2024-01-02,2,0\n2024-01-03,0,0\n2024-01-04,0,6\n"},
      {"candle",
       {"--formula", "c == o * n", "--var", "n=2"},
       "date,k\n2024-01-02,1\n2024-01-03,1\n2024-01-04,0\n"},
  };
  for (const auto &test : kCases) {
    SCOPED_TRACE(test.kind);
    std::vector<std::string> add = {"add", "k", "--kind", test.kind};
    add.insert(add.end(), test.add.begin(), test.add.end());
    EXPECT_EQ(Done(add), std::string("added ") + test.kind + " \"k\"\n");
    EXPECT_EQ(Done({"run", "k", "--kind", test.kind, "--bars", "-", "--format", "csv"}, kBars), test.result);
    EXPECT_EQ(Done({"remove", "k", "--kind", test.kind}),
              std::string("removed ") + test.kind + " \"k\", 1 record\n");
  }
}

TEST_F(IndicatorTest, FormulasCallUserFunctions) {
  ExpectFailure(
      {"add", "x", "--formula", "mid(c, o)"},
      "indicator \"x\", formula 1 \"mid(c, o)\": mid이(가) 정의되지 않았습니다. (line 1, column 5)");
  EXPECT_EQ(
      Done({"add", "mid", "--kind", "function", "--formula", "(a + b) / 2", "--var", "a", "--var", "b"}),
      "added function \"mid\"\n");
  Done({"add", " x ", "--formula", "mid(c, o)"});
  EXPECT_EQ(Done({"run", "x", "--bars", "-", "--format", "csv", "--last", "1"}, kBars),
            "date,\"mid(c, o)\"\n2024-01-04,6\n");
  EXPECT_EQ(Run({"eval", "--bars", "-", "--format", "csv", "--last", "1", "--index-dir", Path("tables"),
                 "mid(c, o) + 1"},
                kBars)
                .out,
            "date,\"mid(c, o) + 1\"\n2024-01-04,7\n");
  ExpectFailure({"add", "avg", "--kind", "function", "--formula", "1"},
                "function \"avg\": is a word of the language, which goes before it");
  // What repaints may stand in a function.
  Done({"add", "ahead", "--kind", "function", "--formula", "y = x; ref(y, -1)", "--var", "x"});
  const ToolResult check = Run({"check", "--repaint", "--bars", kDaily, "--index-dir", Path("tables"),
                                "mid(c, 2 * AHEAD(c)) + mid(c, o)"});
  EXPECT_EQ(check.exitCode, 1);
  EXPECT_NE(check.out.find("cause: ref, a negative shift, in AHEAD (line 1, column 12)\n"), std::string::npos)
      << check.out;
}

TEST_F(IndicatorTest, InstallsTheStarterSet) {
  EXPECT_EQ(Done({"install", "--kind", "candle"}), "installed: 8 candles\n");
  EXPECT_EQ(Done({"install"}), "installed: 34 indicators, 10 conditions, 5 systems, 8 candles\n");
  const std::string list = Done({"list", "--format", "csv"});
  EXPECT_EQ(std::count(list.begin(), list.end(), '\n'), 58);
  EXPECT_EQ(Files(), std::vector<std::string>{"tables"});

  // Again, over what the user has made meanwhile.
  Done({"add", "mine", "--formula", "c"});
  Done({"install"});
  EXPECT_EQ(Done({"list", "--format", "csv", "--kind", "condition"}).substr(0, 28),
            "kind,name,table,description\n");
  const std::string again = Done({"list", "--format", "csv"});
  EXPECT_EQ(std::count(again.begin(), again.end(), '\n'), 59);
  EXPECT_NE(again.find("indicator,mine,user,\n"), std::string::npos);
}

TEST_F(IndicatorTest, ShowPrintsWhatInstallReads) {
  const std::string text =
      "system      돌파\n"
      "korean      설명\n"
      "variable    n 20 10 30 5\n"
      "open-long   c > highest(h, n, 1)\n"
      "color       255\n"
      "close-short c < o /* 주석 */ - 1\n"
      "form        2\n"
      "password    열쇠 1\n"
      "\n"
      "condition   k\n"
      "formula     c > o\n"
      "width       2\n"
      "period      일 주\n"
      "\n"
      "pattern     p\n"
      "bull        c > o\n"
      "bear        c < o\n"
      "\n"
      "indicator   i\n"
      "line        a\n"
      "formula     c\n"
      "show        0\n"
      "form        1\n"
      "width       3\n"
      "style       4\n"
      "color       -1\n"
      "compare     5\n"
      "up-color    6\n"
      "up-value    7 %\n"
      "down-color  8\n"
      "down-value  9\n"
      "line        b\n"
      "formula     o\n"
      "up-value    10\n"
      "base        30 70.5\n"
      "base-color  11\n"
      "base-style  12\n"
      "base-width  13\n"
      "scale       3\n"
      "least       -1.5\n"
      "most        1e+08\n"
      "log         1\n"
      "invert      1\n"
      "\n"
      "function    f\n"
      "variable    x\n"
      "formula     x * 2\n"
      "\n"
      "candle      양봉\n"
      "formula     c > o\n"
      "password    p\n";
  EXPECT_EQ(Done({"install", "--from", "-"}, text),
            "installed: 1 indicator, 1 condition, 1 pattern, 1 system, 1 function, 1 candle\n");
  std::string shown;
  for (const auto &[name, kind] :
       {std::pair("돌파", "system"), std::pair("k", "condition"), std::pair("p", "pattern"),
        std::pair("i", "indicator"), std::pair("f", "function"), std::pair("양봉", "candle")}) {
    shown += (shown.empty() ? "" : "\n") + Done({"show", name, "--kind", kind});
  }
  EXPECT_EQ(shown, text);
  // Line breaks and comments to their end fit into the one line.
  Done({"add", "lines", "--formula", "x = 1; // eins\nx +\n\tc"});
  EXPECT_NE(Done({"show", "lines"}).find("formula     x = 1; /* eins*/ x + c\n"), std::string::npos);
}

TEST_F(IndicatorTest, FailuresLeaveTheTablesAsTheyWere) {
  Done({"install", "--from", "-"}, "indicator a\nline 1\nformula c\n");
  const std::string before = Table("System.ind") + Table("User.ind");
  const std::string tooLong(200, 'n');
  const struct {
    std::vector<std::string> arguments;
    std::string err;
    int exitCode = 1;
    std::string input = {};
  } kCases[] = {
      {{"install", "--from", "-"},
       "standard input:4: there is a formula already",
       1,
       "indicator b\nline 1\nformula c\nformula o\n"},
      {{"install", "--from", "-"},
       "indicator \"" + tooLong.substr(0, 40) +
           "...\": can't be written; a text may be too long for its field",
       1,
       "indicator b\nline 1\nformula c\nindicator " + tooLong + "\nline 1\nformula c\n"},
      {{"install", "--from", "none.txt"}, "none.txt: can't be read (No such file or directory)"},
      {{"add", "b", "--formula", "c +"},
       "indicator \"b\", formula 1 \"c +\": 수식이 불완전합니다. 필요한 변수나 연산자가 없습니다. (line 1, "
       "column 4)"},
      {{"add", "b", "--formula", "c😀"},
       "formula \"c😀\": has a character that is not in the Korean code page"},
      {{"add", " ", "--formula", "c"}, "NAME: expected a text, found nothing"},
      {{"add", "b"}, "--formula is required (see trovenu indicator --help)", 2},
      {{"add", "b", "--kind", "pattern", "--formula", "1", "--formula", "1", "--formula", "1"},
       "--formula: expected at most 2 for --kind pattern (see trovenu indicator --help)",
       2},
      {{"add", "b", "--formula", " "},
       "--formula: expected a formula, found nothing (see trovenu indicator --help)",
       2},
      {{"add", "b", "--formula", "c", "--var", "1x=1"},
       "--var 1x: expected letters, digits and _, a letter first"},
      {{"add", "b", "--formula", "n", "--var", "n=1", "--var", "N=2"}, "--var N: is there twice"},
      {{"add", "b", "--formula", "n", "--var", "n=" + std::string(251, '1')},
       "indicator \"b\": VarValue0: expected at most 250 bytes, found 251"},
      {{"add", "my f", "--kind", "function", "--formula", "c"},
       "function \"my f\": expected letters, digits and _, a letter first"},
      {{"add", "f", "--kind", "function", "--formula", "x + y", "--var", "x"},
       "function \"f\", formula \"x + y\": y이(가) 정의되지 않았습니다. (line 1, column 6)"},
      {{"add", "f", "--kind", "function", "--formula", "x", "--var", "x=1"},
       "--var x: expected no value, which a call of the function gives"},
      {{"run", "a", "--bars", kDaily, "--set", "n=1"}, "indicator \"a\": no variable \"n\"; it has none"},
      {{"run", "b", "--bars", kDaily}, "no indicator \"b\" in " + Path("tables/")},
      {{"run", "a", "--bars", "none.csv"}, "none.csv: can't be read (No such file or directory)"},
  };
  for (const auto &test : kCases) {
    SCOPED_TRACE(test.err);
    ExpectFailure(test.arguments, test.err, test.exitCode, test.input);
    EXPECT_EQ(Table("System.ind") + Table("User.ind"), before);
  }
  EXPECT_EQ(Files(), std::vector<std::string>{"tables"});
}

TEST_F(IndicatorTest, DamagedAndMissingTablesAreNamed) {
  ExpectFailure({"list"}, Path("tables/") + ": no formula tables (trovenu indicator install makes them)");
  ExpectFailure({"show", "a"},
                Path("tables/System.ind") + ": no such table (trovenu indicator install makes it)");
  Done({"install", "--from", "-"}, "indicator a\nline 1\nformula c\nindicator b\nline 1\nformula c\n");
  const std::string whole = Table("System.ind");
  const struct {
    std::string content;
    const char *fault;
  } kCases[] = {
      {"", "expected a formula table"},
      {"no table at all", "expected a formula table"},
      {whole.substr(0, 100), "expected a formula table"},
      {whole.substr(0, whole.size() * 3 / 4), "damaged table: 1 of its 2 records are missing"},
  };
  for (const auto &test : kCases) {
    File("tables/System.ind", test.content);
    for (const std::vector<std::string> &arguments : {std::vector<std::string>{"list"},
                                                      {"show", "a"},
                                                      {"run", "a", "--bars", kDaily},
                                                      {"remove", "a"},
                                                      {"add", "c", "--formula", "c"},
                                                      {"install"}}) {
      ExpectFailure(arguments, Path("tables/System.ind") + ": " + test.fault);
      EXPECT_EQ(Table("System.ind"), test.content);
    }
  }
}

}  // namespace

}  // namespace trovenu::tests
