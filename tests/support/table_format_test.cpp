#include "trovenu/support/table_format.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/support/damage.h"

namespace trovenu::tests {

namespace {

TEST(TableFormatTest, HeadIsAnOrdinaryOne) {
  TableFormat format;
  EXPECT_TRUE(format.AddField("TradeNo", 'c', 50));
  EXPECT_TRUE(format.AddField("ProfitLoss", 'N', 15));
  EXPECT_EQ(format.RecordSize(), 66u);
  const std::string head = format.Head();
  using namespace std::string_literals;
  const std::string base = "\x03\x64\x01\x01"s + "\0\0\0\0"s + "\x61\0"s + "\x42\0"s + std::string(8, '\0') +
                           "Trovenu"s + "\0\0"s + "\x79"s + "\0\0"s;
  const std::string first = "TradeNo\0\0\0\0C\0\0\0\0\x32"s + std::string(15, '\0');
  const std::string second = "ProfitLoss\0N\0\0\0\0\x0F"s + std::string(15, '\0');
  EXPECT_EQ(head, base + first + second + "\r");
}

TEST(TableFormatTest, DamagedHeadsStayInsideTheRecord) {
  TableFormat format;
  format.AddField("IndexName", 'c', 50);
  format.AddField("Expression0", 'c', 4096);
  format.AddField("LineCompMethod0", 'c', 20);
  const std::string good = format.Head();
  Damage damage;
  int read = 0;
  for (int i = 0; i < 20000; ++i) {
    const std::string head = damage.Of(good);
    TableFormat damaged;
    if (!damaged.ReadHead(head)) continue;
    ++read;
    std::string record = damaged.BlankRecord();
    for (const TableField &field : damaged.Fields()) {
      ASSERT_LE(field.offset + field.width, damaged.RecordSize());
      PutFieldValue(record.data(), field, "value");
      FieldValue(record.data(), field);
      damaged.FindField(field.name.c_str());
    }
    ASSERT_LE(damaged.HeadSize(), head.size());
  }
  EXPECT_GT(read, 1000);
}

TEST(FieldValueTest, WiderValuesAreCutAtACharacter) {
  const struct {
    const char *value;
    int width;
    const char *cut;
  } kRows[] = {
      {"abcdef", 3, "abc"},
      {"abc", 3, "abc"},
      {"a\xB0\xA1", 2, "a"},
      {"a\xB0\xA1", 3, "a\xB0\xA1"},
      {"\xB0\xA1\xB3\xAA", 3, "\xB0\xA1"},
      {"\x81\x41\x81\x61", 1, ""},
      {"ab ", 2, "ab"},
      // Only blanks that fill the last bytes of a field can't be told from filling.
      {"ab ", 3, "ab"},
      {"ab ", 4, "ab "},
      {"", 3, ""},
  };
  for (const auto &row : kRows) {
    const TableField field = {"f", 'C', 1, static_cast<std::size_t>(row.width)};
    std::string record(field.width + 2, '#');
    PutFieldValue(record.data(), field, row.value);
    EXPECT_EQ(FieldValue(record.data(), field), row.cut) << row.width;
    EXPECT_EQ(record.back(), '#');
  }
}

}  // namespace

}  // namespace trovenu::tests
