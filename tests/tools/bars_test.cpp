#include "tests/tools/tool_runner.h"
#include "trovenu/support/korean.h"

namespace trovenu::tests {

namespace {

class BarsTest : public ToolTest {};

const std::string kMark = "\xEF\xBB\xBF";

// "일자,시간,시가,고가,저가,종가,거래량,거래대금,미결제약정" in either encoding.
constexpr const char *kKoreanHeader = "일자,시간,시가,고가,저가,종가,거래량,거래대금,미결제약정\n";
const std::string kCodePageHeader = "일자,시간,시가,고가,저가,종가,거래량,거래대금,미결제약정\n"_kr;
constexpr const char *kAllFields = "20240102,0901,1,2,3,4,5,6,7\n";
constexpr const char *kWeighOpen = "o+10*h+100*l+1000*c+10000*v+100000*amount+1000000*oi";

TEST_F(BarsTest, ReadsEveryForm) {
  const struct {
    const char *name;
    std::string bars;
    const char *formula;
    const char *rows;
  } kCases[] = {
      {"any order and case", "CLOSE,Date,oPEN\n3,20240102,1\n", "c-o", "2024-01-02,2\n"},
      {"columns that are no part of a bar", "symbol,date,close,Adj Close\nA,20240102,3,2.5\n", "c",
       "2024-01-02,3\n"},
      {"synonyms", "Timestamp;Vol.;Open_Interest;Turnover;Last Price\n2024-01-02;1;2;3;4\n",
       "v+10*oi+100*amount+1000*c", "2024-01-02,4321\n"},
      {"angle brackets", "<DATE>,<TIME>,<CLOSE>\n20240102,090100,3\n", "c", "2024-01-02 09:01,3\n"},
      {"Korean, UTF-8", kKoreanHeader + std::string(kAllFields), kWeighOpen, "2024-01-02 09:01,7654321\n"},
      {"Korean, code page", kCodePageHeader + kAllFields, kWeighOpen, "2024-01-02 09:01,7654321\n"},
      {"byte-order mark", kMark + kKoreanHeader + kAllFields, kWeighOpen, "2024-01-02 09:01,7654321\n"},
      {"semicolons", "date;close\n20240102;3\n", "c", "2024-01-02,3\n"},
      {"tabs", "date\tclose\topen\n20240102\t3\t1\n", "c+o", "2024-01-02,4\n"},
      {"separators in quotes", "\"date\";\"a,b,c\";close\n\"20240102\";\"x;y\";\"3\"\n", "c",
       "2024-01-02,3\n"},
      {"doubled quotes and line breaks in quotes", "date,\"a \"\"b\"\"\",close\n20240102,\"x\n\"\"y\",3\n",
       "c", "2024-01-02,3\n"},
      {"CRLF", "date,close\r\n20240102,3\r\n20240103,4\r\n", "c", "2024-01-02,3\n2024-01-03,4\n"},
      {"no line end behind the last row", "date,close\n20240102,3", "c", "2024-01-02,3\n"},
      {"blanks around fields", " date , close \n 20240102 , +3.5 \n", "c", "2024-01-02,3.5\n"},
      {"blank lines", "\n\ndate,close\n\n20240102,3\n , \n20240103,4\n\n \r\n", "c",
       "2024-01-02,3\n2024-01-03,4\n"},
      {"separators behind the last column", "date,close\n20240102,3,,\n", "c", "2024-01-02,3\n"},
      {"exponents and signs", "date,close\n20240102,-1.5e3\n", "c", "2024-01-02,-1500\n"},
      {"high below low", "date,high,low\n20240102,1,2\n", "h-l", "2024-01-02,-1\n"},
  };
  for (const auto &test : kCases) {
    SCOPED_TRACE(test.name);
    const ToolResult result = Eval(test.bars, test.formula);
    EXPECT_EQ(result.exitCode, 0);
    EXPECT_EQ(result.err, "");
    const size_t header = result.out.find('\n');
    EXPECT_EQ(result.out.substr(header + 1), test.rows);
  }
}

TEST_F(BarsTest, ReadsDatesAndTimes) {
  const struct {
    const char *bars;
    const char *number;
    const char *shown;
  } kCases[] = {
      {"date,close\n20240229,1", "20240229", "2024-02-29"},
      {"date,close\n2024-01-02,1", "20240102", "2024-01-02"},
      {"date,close\n2024/1/2,1", "20240102", "2024-01-02"},
      {"date,close\n2024.01.02,1", "20240102", "2024-01-02"},
      {"date,time,close\n20240102,,1", "20240102", "2024-01-02"},
      {"datetime,close\n2024-01-02T09:01,1", "20240102090100", "2024-01-02 09:01"},
      {"datetime,close\n2024-01-02 09:01:30,1", "20240102090130", "2024-01-02 09:01:30"},
      {"datetime,close\n2024/01/02  0901,1", "20240102090100", "2024-01-02 09:01"},
      {"datetime,close\n20240102 153000,1", "20240102153000", "2024-01-02 15:30"},
      {"datetime,close\n202401020901,1", "20240102090100", "2024-01-02 09:01"},
      {"datetime,close\n20240102090130,1", "20240102090130", "2024-01-02 09:01:30"},
      {"date,close\n2024-01-02 00:00:00,1", "20240102000000", "2024-01-02 00:00"},
      {"date,time,close\n2024-01-02,9:01,1", "20240102090100", "2024-01-02 09:01"},
      {"date,time,close\n2024-01-02,23:59:59,1", "20240102235959", "2024-01-02 23:59:59"},
      {"date,time,close\n2024-01-02,901,1", "20240102090100", "2024-01-02 09:01"},
      {"date,time,close\n2024-01-02,90130,1", "20240102090130", "2024-01-02 09:01:30"},
      {"time,close\n2024-01-02 09:01,1", "20240102090100", "2024-01-02 09:01"},
  };
  for (const auto &test : kCases) {
    SCOPED_TRACE(test.bars);
    const ToolResult result = Eval(test.bars, "compressd(1)");
    EXPECT_EQ(result.exitCode, 0) << result.err;
    EXPECT_EQ(result.out, std::string("date,compressd(1)\n") + test.shown + "," + test.number + "\n");
  }
}

TEST_F(BarsTest, NamesFileLineAndColumn) {
  const std::string minutes = "date,time,close\n20240102,0901,1\n";
  const struct {
    const char *name;
    std::string bars;
    const char *line;
  } kCases[] = {
      {"empty file", "", "bars.csv:1: expected a header with a column date (일자), the file is empty"},
      {"only blank lines", "\n \n",
       "bars.csv:1: expected a header with a column date (일자), the file is empty"},
      {"no bars", "date,close\n\n", "bars.csv:3: expected bars below the header, found none"},
      {"no header", "20240102,3\n",
       "bars.csv:1: expected a header with a column date (일자), found \"20240102\", ..."},
      {"no date", "\nopen,close\n1,2\n",
       "bars.csv:2: expected a header with a column date (일자), found \"open\", ..."},
      {"another encoding",
       "\xFF\xFE"
       "d",
       "bars.csv:1: expected UTF-8 or CP949, found UTF-16"},
      {"the same column twice", "date,Close,종가\n20240102,1,2\n",
       "bars.csv:1: columns \"Close\" and \"종가\" both hold the close (종가)"},
      {"a word", "date,close\n20240102,3\n20240103,abc\n",
       "bars.csv:3: column close: expected a number, found \"abc\""},
      {"a word below a code-page header", "date," + std::string("종가"_kr) + "\n20240102," + "없음"_kr + "\n",
       "bars.csv:2: column 종가: expected a number, found \"없음\""},
      {"nothing", "date,close,open\n20240102,,1\n",
       "bars.csv:2: column close: expected a number, found nothing"},
      {"thousands", "date;close\n20240102;1,234\n",
       "bars.csv:2: column close: expected a number, found \"1,234\""},
      {"not a number", "date,close\n20240102,nan\n",
       "bars.csv:2: column close: expected a number, found \"nan\""},
      {"infinity", "date,close\n20240102,-inf\n",
       "bars.csv:2: column close: expected a number, found \"-inf\""},
      {"too large", "date,close\n20240102,1e999\n",
       "bars.csv:2: column close: expected a number, found \"1e999\""},
      {"two signs", "date,close\n20240102,+-1\n",
       "bars.csv:2: column close: expected a number, found \"+-1\""},
      {"text behind", "date,close\n20240102,1x\n",
       "bars.csv:2: column close: expected a number, found \"1x\""},
      {"no date", "date,close\n2024,1\n",
       "bars.csv:2: column date: expected a date such as 2024-01-02 or 20240102, found \"2024\""},
      {"a date that is not in the calendar", "date,close\n2023-02-29,1\n",
       "bars.csv:2: column date: expected a date such as 2024-01-02 or 20240102, found \"2023-02-29\""},
      {"mixed separators", "date,close\n2023-02/28,1\n",
       "bars.csv:2: column date: expected a date such as 2024-01-02 or 20240102, found \"2023-02/28\""},
      {"no time", "date,time,close\n20240102,9h,1\n",
       "bars.csv:2: column time: expected a time such as 09:01 or 0901, found \"9h\""},
      {"an hour too many", "date,time,close\n20240102,24:00,1\n",
       "bars.csv:2: column time: expected a time such as 09:01 or 0901, found \"24:00\""},
      {"two times", "date,time,close\n202401020901,0901,1\n",
       "bars.csv:2: column time: expected no time beside a date that has one, found \"0901\""},
      {"time missing", minutes + "20240103,,2\n",
       "bars.csv:3: column time: expected a time as in the bars before, found none"},
      {"time added", "date,close\n20240102,1\n20240103 0901,1\n",
       "bars.csv:3: column date: expected no time as in the bars before, found \"20240103 0901\""},
      {"dates fall", "date,close\n20240103,1\n20240102,1\n",
       "bars.csv:3: column date: expected a date after 2024-01-03, found 2024-01-02"},
      {"a date twice", minutes + "20240102,0901,2\n",
       "bars.csv:3: column date: expected a date after 2024-01-02 09:01, found 2024-01-02 09:01"},
      {"too few fields", "date,close,open\n20240102,1\n",
       "bars.csv:2: column open: expected 3 fields as in the header, found 2"},
      {"too many fields", "date,close\n20240102,1,2\n",
       "bars.csv:2: column close: expected 2 fields as in the header, found 3"},
      {"an open quote", "date,close\n20240102,\"1\n20240103,2\n",
       "bars.csv:2: a double quote is opened and not closed"},
      {"text behind a quote", "date,close\n20240102,\"1\"2\n",
       "bars.csv:2: expected a separator behind the closing double quote"},
      {"lines count through quotes", "date,note,close\n20240102,\"a\nb\nc\",1\n20240103,x,y\n",
       "bars.csv:5: column close: expected a number, found \"y\""},
  };
  for (const auto &test : kCases) {
    SCOPED_TRACE(test.name);
    File("bars.csv", test.bars);
    const ToolResult result = Run({"eval", "--bars", "bars.csv", "--formula", "1"});
    EXPECT_EQ(result.exitCode, 1);
    EXPECT_EQ(result.err, std::string("trovenu: ") + test.line + "\n");
    EXPECT_EQ(result.out, "");
  }
}

TEST_F(BarsTest, NamesStandardInput) {
  const ToolResult result = Eval("date,close\n20240102,x\n", "c");
  EXPECT_EQ(result.exitCode, 1);
  EXPECT_EQ(result.err, "trovenu: standard input:2: column close: expected a number, found \"x\"\n");
}

TEST_F(BarsTest, ReadsNoFolderAndNoMissingFile) {
  EXPECT_EQ(Run({"eval", "--bars", "none.csv", "c"}).err,
            "trovenu: none.csv: can't be read (No such file or directory)\n");
  EXPECT_EQ(Run({"eval", "--bars", ".", "c"}).err, "trovenu: .: can't be read (Is a directory)\n");
}

}  // namespace

}  // namespace trovenu::tests
