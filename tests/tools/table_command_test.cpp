#include "tests/tools/tool_runner.h"

namespace trovenu::tests {

namespace {

/// In a folder with the shipped table of three trades, whole and damaged.
class TableCommandTest : public ToolTest {
 protected:
  void SetUp() override {
    ToolTest::SetUp();
    if (IsSkipped()) return;
    std::filesystem::copy_file(TROVENU_DATA_DIR "/trades.dbf", Path("trades.dbf"));
    whole_ = Content("trades.dbf");
    File("cut.dbf", whole_.substr(0, whole_.size() - 50));
    std::string marked = whole_;
    marked[kHeadSize + kRecordSize] = '*';
    File("marked.dbf", marked);
  }

  static constexpr std::size_t kHeadSize = 289;
  static constexpr std::size_t kRecordSize = 112;
  std::string whole_;
};

constexpr const char *kHeadings =
    "TradeNo,EntryType,ExitType,EntryDate,ExitDate,EntryPrice,ExitPrice,CumProfitLossRatio\n";
constexpr const char *kFirst = "1,매수진입,매수청산,20240103,20240108,100.50,104.00,3.48\n";
constexpr const char *kSecond = "2,매도진입,매도청산,20240108,20240110,104.00,105.25,2.24\n";
constexpr const char *kThird = "3,매수진입,매수유지,20240110,00000000,105.25,107.00,3.94\n";

TEST_F(TableCommandTest, ShowPrintsRecordsInUtf8) {
  EXPECT_EQ(Run({"table", "show", "trades.dbf", "--format", "csv"}).out,
            std::string(kHeadings) + kFirst + kSecond + kThird);
  const std::string json = Run({"table", "show", "trades.dbf", "--format", "json"}).out;
  EXPECT_TRUE(json.starts_with("[\n{\"TradeNo\":\"1\",\"EntryType\":\"매수진입\"")) << json;
}

TEST_F(TableCommandTest, ShowLeavesDeletedRecordsOutUnlessAsked) {
  EXPECT_EQ(Run({"table", "show", "marked.dbf", "--format", "csv"}).out,
            std::string(kHeadings) + kFirst + kThird);
  EXPECT_EQ(Run({"table", "show", "marked.dbf", "--format", "csv", "--deleted"}).out,
            "deleted," + std::string(kHeadings) + "," + kFirst + "*," + kSecond + "," + kThird);
}

TEST_F(TableCommandTest, ShowKeepsALineForARecord) {
  std::string breaks = whole_;
  breaks.replace(kHeadSize + 1, 5, "1\n\r\tx");
  File("breaks.dbf", breaks);
  const std::string table = Run({"table", "show", "breaks.dbf"}).out;
  EXPECT_NE(table.find("\n1   x"), table.npos) << table;
  const std::string csv = Run({"table", "show", "breaks.dbf", "--format", "csv"}).out;
  EXPECT_NE(csv.find("\n\"1\n\r\tx\",매수진입"), csv.npos) << csv;
}

TEST_F(TableCommandTest, ShowPrintsWhatCanBeReadOfADamagedTable) {
  EXPECT_EQ(Run({"table", "show", "cut.dbf", "--format", "csv"}).out,
            std::string(kHeadings) + kFirst + kSecond);
}

TEST_F(TableCommandTest, CheckTellsWhatIsWrong) {
  const ToolResult whole = Run({"table", "check", "marked.dbf"});
  EXPECT_EQ(whole.exitCode, 0);
  EXPECT_EQ(whole.out, "marked.dbf: whole, 3 records (1 deleted), 8 fields\n");
  const ToolResult cut = Run({"table", "check", "cut.dbf"});
  EXPECT_EQ(cut.exitCode, 1);
  EXPECT_EQ(cut.out,
            "cut.dbf: damaged\n"
            "  the head counts 3 records, the file holds 2\n"
            "  63 bytes of an unfinished record behind the last one\n"
            "  no end mark behind the last record\n"
            "  can be saved: 2 records\n");
}

TEST_F(TableCommandTest, RepairSavesToANewFileAlone) {
  const std::string cut = Content("cut.dbf");
  const ToolResult saved = Run({"table", "check", "cut.dbf", "--repair", "saved.dbf"});
  EXPECT_EQ(saved.exitCode, 0) << saved.err;
  EXPECT_TRUE(saved.out.ends_with("saved.dbf: 2 records saved\n")) << saved.out;
  EXPECT_EQ(Content("cut.dbf"), cut);
  EXPECT_EQ(Run({"table", "check", "saved.dbf"}).out, "saved.dbf: whole, 2 records, 8 fields\n");
  const ToolResult again = Run({"table", "check", "cut.dbf", "--repair", "cut.dbf"});
  EXPECT_EQ(again.exitCode, 1);
  EXPECT_EQ(again.err, "trovenu: cut.dbf: is there already; expected the name of a new file\n");
  EXPECT_EQ(Content("cut.dbf"), cut);
  EXPECT_EQ(Run({"table", "check", "cut.dbf", "--repair", "none/saved.dbf"}).err,
            "trovenu: none/saved.dbf: can't be written\n");
  EXPECT_EQ(Run({"table", "check", "trades.dbf", "--repair", "copy.dbf"}).exitCode, 0);
  EXPECT_FALSE(std::filesystem::exists(Path("copy.dbf")));
}

TEST_F(TableCommandTest, SaysThatAFileIsNoTable) {
  File("text.dbf", "date,close\n");
  for (const char *command : {"show", "check"}) {
    const ToolResult text = Run({"table", command, "text.dbf"});
    EXPECT_EQ(text.exitCode, 1);
    EXPECT_EQ(text.err, "trovenu: text.dbf: expected a table, which begins with a head of fields\n");
    EXPECT_EQ(Run({"table", command, "none.dbf"}).err, "trovenu: none.dbf: can't be read (no such file)\n");
    EXPECT_EQ(Run({"table", command}).exitCode, 2);
  }
  EXPECT_EQ(Run({"table"}).exitCode, 2);
}

}  // namespace

}  // namespace trovenu::tests
