#include "trovenu/support/table_check.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/platform/temp_folder.h"
#include "tests/support/table_maker.h"
#include "trovenu/support/table_reader.h"

namespace trovenu::tests {

namespace {

class TableCheckTest : public testing::Test {
 protected:
  void SetUp() override {
    MakeTable(folder_.Path("a"), 4);
    bytes_ = folder_.Content("a");
  }
  TableReport Check() const { return CheckTable(folder_.Put("a", bytes_)); }

  /// The values of what can be saved, deleted ones in brackets.
  std::string Saved() const {
    if (!SaveReadableTable(folder_.Put("a", bytes_), folder_.Path("saved"))) return "nothing";
    EXPECT_TRUE(CheckTable(folder_.Path("saved")).IsWhole());
    std::string shown;
    for (DDB table(folder_.Path("saved").c_str(), "", 1); table.Eof() == 0; table.MoveNext()) {
      const std::string value = table.GetStr("Value").c_str();
      shown += table.Deleted() != 0 ? '(' + value + ')' : value;
      shown += ' ';
    }
    return shown;
  }
  char &Mark(std::size_t record) { return bytes_[kMadeHeadSize + record * kMadeRecordSize]; }

  TempFolder folder_;
  std::string bytes_;
};

TEST_F(TableCheckTest, WholeTable) {
  Mark(1) = '*';
  const TableReport report = Check();
  EXPECT_TRUE(report.IsWhole());
  EXPECT_EQ(report.fields, 3u);
  EXPECT_EQ(report.recordSize, kMadeRecordSize);
  EXPECT_EQ(report.records, 4u);
  EXPECT_EQ(report.deleted, 1u);
  EXPECT_EQ(Saved(), "0 (1) 2 3 ");
  EXPECT_EQ(folder_.Content("saved"), bytes_);
}

TEST_F(TableCheckTest, NoTable) {
  for (const std::string &bytes : {std::string(), std::string("text"), bytes_.substr(0, kMadeHeadSize - 1)}) {
    bytes_ = bytes;
    EXPECT_FALSE(Check().isTable);
    EXPECT_FALSE(Check().IsWhole());
    EXPECT_EQ(Saved(), "nothing");
  }
  EXPECT_FALSE(CheckTable(folder_.Path("none")).isTable);
}

TEST_F(TableCheckTest, CutInARecord) {
  bytes_.resize(kMadeHeadSize + 2 * kMadeRecordSize + 30);
  const TableReport report = Check();
  EXPECT_EQ(report.records, 2u);
  EXPECT_EQ(report.unfinishedBytes, 30u);
  EXPECT_TRUE(report.countDiffers);
  EXPECT_EQ(report.counted, 4u);
  EXPECT_TRUE(report.noEndMark);
  EXPECT_EQ(Saved(), "0 1 ");
}

TEST_F(TableCheckTest, WrongCount) {
  bytes_[4] = 2;
  EXPECT_TRUE(Check().countDiffers);
  EXPECT_FALSE(Check().noEndMark);
  EXPECT_EQ(Check().counted, 2u);
  EXPECT_EQ(Saved(), "0 1 2 3 ");
}

TEST_F(TableCheckTest, BytesBehindTheEnd) {
  bytes_ += "abc";
  EXPECT_EQ(Check().bytesBehindEnd, 3u);
  EXPECT_FALSE(Check().IsWhole());
  EXPECT_EQ(Saved(), "0 1 2 3 ");
}

TEST_F(TableCheckTest, RecordWithADamagedMarkIsSavedAsDeleted) {
  Mark(2) = 'x';
  EXPECT_EQ(Check().markFaults, 1u);
  EXPECT_EQ(Check().records, 3u);
  EXPECT_EQ(Saved(), "0 1 (2) 3 ");
}

TEST_F(TableCheckTest, RoomThatWasNeverFilledIsNoRecord) {
  bytes_.pop_back();
  bytes_.resize(bytes_.size() + 2 * kMadeRecordSize, '\0');
  EXPECT_EQ(Check().records, 4u);
  EXPECT_EQ(Check().bytesBehindEnd, 2 * kMadeRecordSize);
  EXPECT_EQ(Saved(), "0 1 2 3 ");
}

TEST_F(TableCheckTest, DamagedWidth) {
  // 20 becomes 21: the fields no longer fill the record.
  bytes_[32 + 16] = 21;
  const TableReport report = Check();
  EXPECT_TRUE(report.sizesDiffer);
  EXPECT_EQ(report.records, 4u);
  EXPECT_TRUE(SaveReadableTable(folder_.Path("a"), folder_.Path("saved")));
  EXPECT_TRUE(
      std::string(DDB(folder_.Path("saved").c_str(), "", 1).GetStr("Name").c_str()).starts_with("name 0"));
  EXPECT_TRUE(CheckTable(folder_.Path("saved")).IsWhole());
}

TEST_F(TableCheckTest, SavingCanFail) {
  EXPECT_FALSE(SaveReadableTable(folder_.Path("a"), folder_.Path("none/saved")));
}

}  // namespace

}  // namespace trovenu::tests
