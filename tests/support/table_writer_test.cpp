#include "trovenu/support/table_writer.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/platform/temp_folder.h"
#include "tests/platform/write_faults.h"
#include "tests/support/awkward_texts.h"
#include "tests/support/table_maker.h"

namespace trovenu::tests {

namespace {

TEST(DBTest, EmptyTableIsAtItsEndAtOnce) {
  const TempFolder folder;
  const std::string path = folder.Path("a.rpt");
  MakeTable(path);
  DB table(path.c_str(), 1);
  EXPECT_NE(table.Eof(), 0);
  table.MoveFirst(1);
  EXPECT_NE(table.Eof(), 0);
  table.MoveNext(1);
  EXPECT_NE(table.Eof(), 0);
  EXPECT_EQ(table.GetStr("Name"), "");
  EXPECT_EQ(table.FindFirst("Name", ""), 0);
  EXPECT_EQ(table.State, DB::Open);
  EXPECT_EQ(table.FieldCount, 3);
  EXPECT_EQ(table.HeadSize, static_cast<int>(kMadeHeadSize));
  EXPECT_EQ(table.RecordSize, static_cast<int>(kMadeRecordSize));
  EXPECT_EQ(table.Extension, "rpt");
}

TEST(DBTest, TableAppearsWithItsEndAndReplacesAnother) {
  const TempFolder folder;
  const std::string path = folder.Put("a.rpt", "something else");
  DB table;
  EXPECT_NE(table.CreateDB(path.c_str()), 0);
  EXPECT_EQ(table.State, DB::Creating);
  EXPECT_NE(table.InsertField("Old", 'c', 5), 0);
  table.ClearField();
  EXPECT_EQ(table.WriteHead(), 0);
  EXPECT_NE(table.InsertField("Name", 'c', 5), 0);
  EXPECT_EQ(table.InsertField("NAME", 'c', 5), 0);
  EXPECT_EQ(table.InsertField(nullptr, 'c', 5), 0);
  EXPECT_EQ(table.WriteField(), 0);
  EXPECT_EQ(table.WriteEof(), 0);
  EXPECT_NE(table.WriteHead(), 0);
  EXPECT_EQ(table.InsertField("Late", 'c', 5), 0);
  EXPECT_EQ(table.WriteEof(), 0);
  EXPECT_NE(table.WriteField(), 0);
  EXPECT_EQ(folder.Content("a.rpt"), "something else");
  EXPECT_NE(table.WriteEof(), 0);
  EXPECT_EQ(table.WriteEof(), 0);
  EXPECT_EQ(table.FieldCount, 1);
  EXPECT_NE(table.Append(""), 0);
  EXPECT_NE(table.InsField("Name", "x"), 0);
  EXPECT_NE(table.WriteRecord(), 0);
  EXPECT_EQ(DB(path.c_str(), 1).GetStr("Name"), "x");
}

TEST(DBTest, UnfinishedTableLeavesTheOldOne) {
  const TempFolder folder;
  const std::string path = folder.Path("a.rpt");
  MakeTable(path, 2);
  {
    DB table;
    table.CreateDB(path.c_str());
    table.InsertField("Name", 'c', 5);
    table.WriteHead();
    table.WriteField();
  }
  EXPECT_EQ(CountRecords(path), 2);
}

TEST(DBTest, PathThatCannotBeOpenedYieldsNoFile) {
  const TempFolder folder;
  folder.Put("file", "no table");
  for (const std::string &path : {folder.Path("file/a.rpt"), folder.Path(), std::string()}) {
    MakeTable(path);
    DB table(path.c_str());
    EXPECT_EQ(AddRecord(&table, 1), 0) << path;
    EXPECT_EQ(table.State, DB::Closed);
    EXPECT_NE(table.Eof(), 0);
  }
  EXPECT_EQ(DB(nullptr).State, DB::Closed);
  EXPECT_EQ(DB().Append(""), 0);
  EXPECT_EQ(DB().WriteRecord(), 0);
  EXPECT_EQ(DB(folder.Path("file").c_str()).State, DB::Closed);
}

TEST(DBTest, RecordsAreThereAsSoonAsTheyAreWritten) {
  const TempFolder folder;
  const std::string path = folder.Path("a.rpt");
  MakeTable(path);
  DB table(path.c_str(), 1);
  table.MoveFirst(1);
  for (int i = 0; i < 3; ++i) {
    EXPECT_NE(AddRecord(&table, i), 0);
    EXPECT_EQ(table.RecordCount, i + 1);
    EXPECT_EQ(table.RecordNo, i);
    EXPECT_TRUE(IsRecord(table, i));
    EXPECT_EQ(CountRecords(path), i + 1);
  }
}

TEST(DBTest, AnyTextComesBackAndIsFound) {
  const TempFolder folder;
  const std::string path = folder.Path("a.rpt");
  DB table;
  table.CreateDB(path.c_str());
  table.InsertField("Key", 'c', 5);
  table.InsertField("Text", 'c', 2000);
  table.WriteHead();
  table.WriteField();
  table.WriteEof();
  const std::vector<std::string> texts = AwkwardTexts();
  for (std::size_t i = 0; i < texts.size(); ++i) {
    table.Append("ignored");
    table.InsField("Key", std::to_string(i).c_str());
    EXPECT_NE(table.InsField("Text", texts[i].c_str()), 0);
    EXPECT_EQ(table.InsField("None", "x"), 0);
    EXPECT_NE(table.WriteRecord(), 0);
  }
  DB reader(path.c_str(), 1);
  for (std::size_t i = 0; i < texts.size(); ++i, reader.MoveNext())
    EXPECT_EQ(reader.GetStr("Text"), texts[i].c_str());
  EXPECT_NE(reader.Eof(), 0);
  for (std::size_t i = 0; i < texts.size(); ++i) {
    EXPECT_NE(reader.FindFirst("Text", texts[i].c_str()), 0);
    EXPECT_EQ(reader.GetStr("Key"), std::to_string(i).c_str());
  }
}

TEST(DBTest, FindFirstStaysWhereItWasIfThereIsNone) {
  const TempFolder folder;
  const std::string path = folder.Path("a.rpt");
  MakeTable(path, 5);
  DB table(path.c_str(), 1);
  EXPECT_NE(table.FindFirst("Value", "3"), 0);
  EXPECT_TRUE(IsRecord(table, 3));
  for (const char *absent : {"5", "3 ", " 3", "33", ""}) EXPECT_EQ(table.FindFirst("Value", absent), 0);
  EXPECT_EQ(table.FindFirst("None", "3"), 0);
  EXPECT_EQ(table.FindFirst(nullptr, nullptr), 0);
  EXPECT_TRUE(IsRecord(table, 3));
  table.MoveNext(1);
  EXPECT_TRUE(IsRecord(table, 4));
}

TEST(DBTest, ChangesTheRecordAtThePlace) {
  const TempFolder folder;
  const std::string path = folder.Path("a.rpt");
  MakeTable(path, 3);
  DB table(path.c_str(), 1);
  EXPECT_NE(table.FindFirst("Value", "1"), 0);
  EXPECT_NE(table.InsField("Name", "other"), 0);
  EXPECT_EQ(table.WriteState, DB::ChangedRecord);
  table.MoveFirst(1);
  EXPECT_EQ(table.WriteRecord(), 0);
  EXPECT_EQ(CountRecords(path), 3);
  EXPECT_NE(table.FindFirst("Value", "1"), 0);
  EXPECT_NE(table.InsField("Name", "other"), 0);
  EXPECT_NE(table.WriteRecord(), 0);
  EXPECT_EQ(table.GetStr("Name"), "other");
  EXPECT_EQ(table.GetStr("Value"), "1");
  DB reader(path.c_str(), 1);
  EXPECT_TRUE(IsRecord(reader, 0));
  reader.MoveNext(1);
  EXPECT_EQ(reader.GetStr("Name"), "other");
  reader.MoveNext(1);
  EXPECT_TRUE(IsRecord(reader, 2));
  // Behind the last record there is nothing to change.
  reader.MoveNext(1);
  EXPECT_EQ(reader.InsField("Name", "x"), 0);
  EXPECT_EQ(reader.WriteRecord(), 0);
}

TEST(DBTest, StepsOverDeletedRecords) {
  const TempFolder folder;
  const std::string path = folder.Path("a.rpt");
  MakeTable(path, 3);
  std::string bytes = folder.Content("a.rpt");
  bytes[kMadeHeadSize] = '*';
  bytes[kMadeHeadSize + 2 * kMadeRecordSize] = '*';
  folder.Put("a.rpt", bytes);
  DB table(path.c_str(), 1);
  EXPECT_TRUE(IsRecord(table, 1));
  table.MoveNext(1);
  EXPECT_NE(table.Eof(), 0);
  EXPECT_EQ(table.FindFirst("Value", "2"), 0);
}

TEST(DBTest, RecordBufferIsNoLimit) {
  const TempFolder folder;
  const std::string path = folder.Path("a.rpt");
  DB table;
  table.CreateDB(path.c_str());
  for (int i = 0; i < 5; ++i) table.InsertField(("Expression" + std::to_string(i)).c_str(), 'c', 4096);
  table.WriteHead();
  table.WriteField();
  EXPECT_NE(table.WriteEof(), 0);
  table.Append("");
  for (int i = 0; i < 5; ++i) {
    const std::string formula(4096, static_cast<char>('a' + i));
    EXPECT_NE(table.InsField(("Expression" + std::to_string(i)).c_str(), formula.c_str()), 0);
  }
  EXPECT_NE(table.WriteRecord(), 0);
  DB reader(path.c_str());
  EXPECT_EQ(reader.GetStr("Expression4"), std::string(4096, 'e').c_str());
  EXPECT_EQ(std::string_view(reader.Record, 4096), " " + std::string(4095, 'a'));
}

TEST(DBTest, SkippedFlushWritesTheSameTable) {
  if (!CanStopWrites()) GTEST_SKIP() << "writes can't be counted here";
  const TempFolder folder;
  std::size_t writes[2] = {};
  for (const bool skip : {false, true}) {
    const std::string path = folder.Path(skip ? "skip" : "flush");
    const auto make = [&] {
      DB table;
      if (skip) table.SkipFlush();
      table.CreateDB(path.c_str());
      table.InsertField("Name", 'c', 20);
      table.WriteHead();
      table.WriteField();
      table.WriteEof();
      AddRecord(&table, 1);
    };
    writes[skip ? 1 : 0] = StopAtWrite(1000, 0, make).writes;
  }
  EXPECT_EQ(folder.Content("skip"), folder.Content("flush"));
  // The new file and its folder, and the record.
  EXPECT_EQ(writes[0], writes[1] + 3);
}

TEST(DBTest, StoppedCreationLeavesTheOldTableOrTheNewOne) {
  if (!CanStopWrites()) GTEST_SKIP() << "writes can't be stopped here";
  const TempFolder folder;
  const std::string path = folder.Path("a.rpt");
  bool finished = false;
  for (std::size_t stopAt = 0; !finished; ++stopAt) {
    ASSERT_LT(stopAt, 100u);
    MakeTable(path, 2);
    finished = StopAtWrite(stopAt, 50, [&] { MakeTable(path); }).finished;
    const int records = CountRecords(path);
    EXPECT_TRUE(records == 0 || (records == 2 && !finished)) << stopAt;
  }
}

}  // namespace

}  // namespace trovenu::tests
