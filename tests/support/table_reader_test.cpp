#include "trovenu/support/table_reader.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/platform/temp_folder.h"
#include "tests/support/table_maker.h"

namespace trovenu::tests {

namespace {

/// A pair of tables, the system's with records 0 to 2 and the user's with 2 and 3.
class DDBTest : public testing::Test {
 protected:
  void SetUp() override {
    MakeTable(system_, 3);
    MakeTable(user_);
    DB table(user_.c_str());
    AddRecord(&table, 2);
    AddRecord(&table, 3);
  }

  /// The values of a field in walking order, deleted records in brackets.
  static std::string Walk(DDB &table, const char *field = "Value") {
    std::string shown;
    for (table.MoveFirst(); table.Eof() == 0; table.MoveNext()) {
      const std::string value = table.GetStr(field).c_str();
      shown += table.Deleted() != 0 ? '(' + value + ')' : value;
      shown += ' ';
    }
    return shown;
  }
  static std::string Walk(const std::string &path, const char *field = "Value") {
    DDB table(path.c_str(), "", 1);
    return Walk(table, field);
  }
  void MarkDeleted(const std::string &name, std::size_t record) {
    std::string bytes = folder_.Content(name);
    bytes[kMadeHeadSize + record * kMadeRecordSize] = '*';
    folder_.Put(name, bytes);
  }

  TempFolder folder_;
  std::string system_ = folder_.Path("System.ind");
  std::string user_ = folder_.Path("User.ind");
};

TEST_F(DDBTest, WalkShowsDeletedRecordsButFindFirstDoesNot) {
  MarkDeleted("System.ind", 2);
  MarkDeleted("User.ind", 1);
  DDB table(system_.c_str(), user_.c_str(), 1);
  EXPECT_EQ(Walk(table), "0 1 (2) 2 (3) ");
  EXPECT_NE(table.FindFirst("Value", "2"), 0);
  EXPECT_EQ(table.RecordNo, 3);
  EXPECT_EQ(table.Deleted(), 0);
  EXPECT_EQ(table.FindFirst("Value", "3"), 0);
}

TEST_F(DDBTest, ChangeOfASystemRecordReachesTheUserTable) {
  DDB table(system_.c_str(), user_.c_str(), 1);
  // The user has a record of the same name: that one changes.
  EXPECT_NE(table.FindFirst("Name", "name 2"), 0);
  EXPECT_NE(table.InsField("Value", "22"), 0);
  EXPECT_NE(table.WriteRecord(), 0);
  EXPECT_EQ(Walk(user_), "22 3 ");
  // The user has none: it gets a copy with the change.
  EXPECT_NE(table.FindFirst("Name", "name 0"), 0);
  EXPECT_NE(table.InsField("Value", "00"), 0);
  EXPECT_NE(table.WriteRecord(), 0);
  EXPECT_EQ(Walk(user_), "22 3 00 ");
  EXPECT_EQ(Walk(user_, "Name"), "name 2 name 3 name 0 ");
  EXPECT_EQ(Walk(system_), "0 1 2 ");
}

}  // namespace

}  // namespace trovenu::tests
