#include "trovenu/support/table_reader.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/platform/temp_folder.h"
#include "tests/support/table_maker.h"
#include "trovenu/platform/platform.h"

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

TEST_F(DDBTest, ShowsBothTablesAsOne) {
  DDB table(system_.c_str(), user_.c_str(), 1);
  table.SetExtension("sys");
  EXPECT_EQ(table.GetStr("Value"), "0");
  EXPECT_EQ(table.RecordCount, 5);
  EXPECT_EQ(Walk(table), "0 1 2 2 3 ");
  EXPECT_EQ(table.RecordNo, 5);
  EXPECT_EQ(table.GetStr("Value"), "");
  EXPECT_EQ(table.Deleted(), 0);
  table.MoveNext();
  EXPECT_NE(table.Eof(), 0);
}

TEST_F(DDBTest, EitherTableMayBeEmptyOrAbsent) {
  const std::string empty = folder_.Path("empty.ind");
  MakeTable(empty);
  const std::string none = folder_.Path("none.ind");
  const struct {
    std::string first;
    std::string second;
    const char *walk;
  } kPairs[] = {{empty, empty, ""},        {none, none, ""},        {empty, user_, "2 3 "},
                {none, user_, "2 3 "},     {system_, "", "0 1 2 "}, {system_, none, "0 1 2 "},
                {system_, empty, "0 1 2 "}};
  for (const auto &pair : kPairs) {
    DDB table(pair.first.c_str(), pair.second.c_str(), 1);
    EXPECT_EQ(table.Eof() != 0, *pair.walk == '\0');
    EXPECT_EQ(Walk(table), pair.walk);
  }
  EXPECT_NE(DDB(nullptr, nullptr, 1).Eof(), 0);
}

TEST_F(DDBTest, BareWordIsAnExtension) {
  const std::string path = folder_.Path("System");
  EXPECT_EQ(DDB(path.c_str(), "ind", 1).GetStr("Value"), "0");
  EXPECT_EQ(DDB(path.c_str(), ".ind", 1).GetStr("Value"), "0");
  EXPECT_EQ(DDB(system_.c_str(), "sys", 1).GetStr("Value"), "0");
  DDB table(path.c_str(), "ind", 1);
  EXPECT_NE(table.Append(""), 0);
}

TEST_F(DDBTest, SystemRecordIsFoundFirst) {
  DDB table(system_.c_str(), user_.c_str(), 1);
  EXPECT_NE(table.FindFirst("Name", "name 2"), 0);
  EXPECT_EQ(table.RecordNo, 2);
  EXPECT_NE(table.FindFirst("Name", "name 3"), 0);
  EXPECT_EQ(table.RecordNo, 4);
  EXPECT_EQ(table.CurrentTable, 1);
  EXPECT_EQ(table.FindFirst("Name", "name 4"), 0);
  EXPECT_EQ(table.RecordNo, 4);
  EXPECT_NE(table.FindFirst("NAME", "name 0"), 0);
  EXPECT_EQ(table.RecordNo, 0);
}

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

TEST_F(DDBTest, AppendReachesTheUserTable) {
  {
    DDB table(system_.c_str(), user_.c_str(), 1);
    EXPECT_NE(table.Append("name 9"), 0);
    EXPECT_NE(table.InsField("Value", "9"), 0);
    EXPECT_NE(table.WriteRecord(), 0);
    EXPECT_EQ(table.RecordNo, 5);
    EXPECT_EQ(table.GetStr("Name"), "");
    EXPECT_EQ(Walk(table), "0 1 2 2 3 9 ");
  }
  EXPECT_EQ(Walk(system_), "0 1 2 ");
  EXPECT_EQ(Walk(user_), "2 3 9 ");
  DDB system(system_.c_str(), "", 1);
  EXPECT_NE(system.Append(""), 0);
  EXPECT_NE(system.InsField("Value", "8"), 0);
  EXPECT_NE(system.WriteRecord(), 0);
  EXPECT_EQ(Walk(system_), "0 1 2 8 ");
}

TEST_F(DDBTest, NothingIsWrittenWithoutAUserTable) {
  DDB table(system_.c_str(), folder_.Path("none.ind").c_str(), 1);
  EXPECT_EQ(table.Append(""), 0);
  EXPECT_NE(table.FindFirst("Value", "1"), 0);
  EXPECT_EQ(table.InsField("Name", "x"), 0);
  EXPECT_EQ(table.WriteRecord(), 0);
  EXPECT_EQ(Walk(system_, "Name"), "name 0 name 1 name 2 ");
  EXPECT_FALSE(FileExist(folder_.Path("none.ind").c_str()));
}

TEST_F(DDBTest, ChangeOfAUserRecordStaysInItsPlace) {
  DDB table(system_.c_str(), user_.c_str(), 1);
  EXPECT_NE(table.FindFirst("Value", "3"), 0);
  EXPECT_NE(table.InsField("Name", "changed"), 0);
  EXPECT_NE(table.WriteRecord(), 0);
  EXPECT_EQ(table.GetStr("Name"), "changed");
  EXPECT_EQ(Walk(user_, "Name"), "name 2 changed ");
  EXPECT_EQ(Walk(user_), "2 3 ");
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

TEST_F(DDBTest, MovingDropsWhatIsNotWritten) {
  DDB table(system_.c_str(), user_.c_str(), 1);
  EXPECT_NE(table.Append(""), 0);
  EXPECT_NE(table.InsField("Value", "9"), 0);
  table.MoveFirst();
  EXPECT_EQ(table.WriteRecord(), 0);
  EXPECT_EQ(Walk(user_), "2 3 ");
}

}  // namespace

}  // namespace trovenu::tests
