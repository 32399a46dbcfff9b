#include "trovenu/support/table_writer.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/platform/temp_folder.h"
#include "tests/platform/write_faults.h"
#include "tests/support/awkward_texts.h"
#include "tests/support/table_maker.h"
#include "trovenu/support/table_file.h"

namespace trovenu::tests {

namespace {

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

TEST(DBTest, RecordsOfOneWriteAreThereWholeOrNotAtAll) {
  const TempFolder folder;
  const std::string path = folder.Path("a.rpt");
  const auto add = [&path](int first, int count) {
    TableFile table;
    if (!table.Open(path)) return false;
    std::string records;
    for (int i = first; i < first + count; ++i) {
      std::string record = table.Format().BlankRecord();
      const std::string number = std::to_string(i);
      const std::string values[] = {"name " + number, std::string(200, 'x') + number, number};
      const auto *field = table.Format().Fields().data();
      for (const std::string &value : values) PutFieldValue(record.data(), *field++, value);
      records += record;
    }
    return table.Append(records);
  };
  EXPECT_FALSE(add(0, 1));
  MakeTable(path, 2);
  EXPECT_FALSE(add(2, 0));
  EXPECT_TRUE(add(2, 3));
  EXPECT_EQ(CountRecords(path), 5);
  if (!CanStopWrites()) GTEST_SKIP() << "writes can't be stopped here";
  bool finished = false;
  for (std::size_t stopAt = 0; !finished; ++stopAt) {
    ASSERT_LT(stopAt, 100u);
    MakeTable(path, 1);
    finished = StopAtWrite(stopAt, 50, [&] { add(1, 3); }).finished;
    const int records = CountRecords(path);
    EXPECT_TRUE(records >= 1 && records <= 4 && (records == 4 || !finished)) << stopAt << ' ' << records;
  }
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
