#include "trovenu/support/table_delete.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/platform/temp_folder.h"
#include "trovenu/support/table_check.h"
#include "trovenu/support/table_writer.h"

namespace trovenu::tests {
namespace {

TEST(TableDelete, MarksEveryRecordOfTheValue) {
  const TempFolder folder;
  const std::string path = folder.Path() + "/t.dbf";
  {
    DB table;
    table.CreateDB(path.c_str());
    table.ClearField();
    table.InsertField("Name", 'c', 8);
    table.WriteHead();
    table.WriteField();
    table.WriteEof();
    for (const char *name : {"a", "b", "a", "A", "ab"}) {
      table.Append("");
      table.InsField("Name", name);
      table.WriteRecord();
    }
  }
  EXPECT_EQ(DeleteRecords(path, "Name", "a"), 2);
  EXPECT_EQ(DeleteRecords(path, "Name", "a"), 0);
  EXPECT_EQ(DeleteRecords(path, "Other", "b"), 0);
  EXPECT_EQ(DeleteRecords(folder.Path() + "/none.dbf", "Name", "b"), 0);
  const TableReport report = CheckTable(path);
  EXPECT_TRUE(report.IsWhole());
  EXPECT_EQ(report.records, 5U);
  EXPECT_EQ(report.deleted, 2U);
  std::string names;
  for (DB table(path.c_str()); table.Eof() == 0; table.MoveNext())
    names += table.GetStr("Name").c_str() + std::string(" ");
  EXPECT_EQ(names, "b A ab ");
}

}  // namespace
}  // namespace trovenu::tests
