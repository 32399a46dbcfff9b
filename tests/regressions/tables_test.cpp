// Faults that were fixed once.

#include <gtest/gtest.h>

#include <string>

#include "tests/platform/temp_folder.h"
#include "tests/support/table_maker.h"
#include "trovenu/support/table_check.h"
#include "trovenu/support/table_format.h"

namespace trovenu::tests {
namespace {

// The descriptors were read on into the records, and the table counted as sound and was written.
TEST(TableRegression, AHeadWhoseEndIsDamagedEndsWhereItsLengthSays) {
  const TempFolder folder(TempFolder::Place::InMemory);
  const std::string path = folder.Path("a.rpt");
  MakeTable(path, 3);
  std::string bytes = folder.Content("a.rpt");
  bytes[kMadeHeadSize - 1] = 'x';
  folder.Put("a.rpt", bytes);
  EXPECT_EQ(CheckTable(path).fields, 3U);
  EXPECT_FALSE(CheckTable(path).IsWhole());
  EXPECT_EQ(CountRecords(path), 3);
  ASSERT_TRUE(SaveReadableTable(path, folder.Path("saved")));
  EXPECT_TRUE(CheckTable(folder.Path("saved")).IsWhole());
  EXPECT_EQ(CountRecords(folder.Path("saved")), 3);
}

// Such a name stands where the fields end.
TEST(TableRegression, ANameThatBeginsWithACarriageReturnIsRefused) {
  TableFormat format;
  EXPECT_FALSE(format.AddField("\rName", 'C', 5));
  EXPECT_TRUE(format.AddField("Na\rme", 'C', 5));
  TableFormat again;
  ASSERT_TRUE(again.ReadHead(format.Head()));
  EXPECT_EQ(again.Fields().size(), 1U);
}

// The rest of the name did not fit behind the short form, and there was no table at all.
TEST(TableRegression, LongNamesWithManyDigitsAtTheEndComeBack) {
  for (const std::string name : {"AbcdefghijklmnOp2024", "a1234567890123456789", "12345678901234567890",
                                 "12345678901", "\xC3\xBB\xBB\xEA     \xD8\xDF\xDF\xDF   2024"}) {
    TableFormat format;
    format.AddField(name, 'C', 300);
    format.AddField("x" + name.substr(1), 'C', 5);
    TableFormat again;
    ASSERT_TRUE(again.ReadHead(format.Head())) << name;
    EXPECT_EQ(again.Fields().at(0).name, name);
    EXPECT_EQ(again.Fields().at(1).name, "x" + name.substr(1));
  }
}

}  // namespace
}  // namespace trovenu::tests
