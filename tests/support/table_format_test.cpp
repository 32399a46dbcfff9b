#include "trovenu/support/table_format.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

#include "tests/support/awkward_texts.h"
#include "tests/support/damage.h"

namespace trovenu::tests {

namespace {

TableFormat Read(const std::string &head) {
  TableFormat format;
  EXPECT_TRUE(format.ReadHead(head));
  return format;
}

/// The short names in a head, as other programs see them.
std::vector<std::string> ShortNames(const std::string &head) {
  std::vector<std::string> names;
  for (std::size_t at = 32; head[at] != '\r'; at += 32) names.emplace_back(head.c_str() + at);
  return names;
}

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

TEST(TableFormatTest, NamesAndWidthsComeBack) {
  TableFormat format;
  const struct {
    const char *name;
    int width;
  } kFields[] = {
      {"IndexName", 50},           {"ProfitLossRatio", 50}, {"CumProfitLossRatio", 50},
      {"ProfitLoss", 50},          {"CumProfitLoss", 50},   {"LineCompMethod0", 1},
      {"LineCompMethod1", 254},    {"Expression0", 4096},   {"Expression1", 255},
      {"TwentyCharactersLong", 3}, {"Expressio0", 9},       {"\xC0\xCC\xB8\xA7\xC0\xCC \xB1\xE6\xB4\xD9", 8}};
  for (const auto &field : kFields) EXPECT_TRUE(format.AddField(field.name, 'c', field.width)) << field.name;
  const std::string head = format.Head();
  ASSERT_EQ(head.size(), format.HeadSize());
  const TableFormat read = Read(head);
  ASSERT_EQ(read.Fields().size(), std::size(kFields));
  std::size_t offset = 1;
  for (std::size_t i = 0; i < std::size(kFields); ++i) {
    EXPECT_EQ(read.Fields()[i].name, kFields[i].name);
    EXPECT_EQ(read.Fields()[i].type, 'C');
    EXPECT_EQ(read.Fields()[i].offset, offset);
    EXPECT_EQ(read.Fields()[i].width, static_cast<std::size_t>(kFields[i].width));
    EXPECT_EQ(read.FindField(kFields[i].name), static_cast<int>(i));
    offset += read.Fields()[i].width;
  }
  EXPECT_EQ(read.RecordSize(), offset);
  const std::vector<std::string> names = ShortNames(head);
  EXPECT_EQ(std::set<std::string>(names.begin(), names.end()).size(), names.size());
  for (const char *name :
       {"ProfitLoss", "ProfitLos1", "CumProfitL", "LineCompM0", "LineCompM1", "Expressio0"}) {
    EXPECT_NE(std::find(names.begin(), names.end(), name), names.end()) << name;
  }
}

TEST(TableFormatTest, NamesAreCutAndComparedWithoutCase) {
  TableFormat format;
  EXPECT_TRUE(format.AddField("ThisNameIsTooLongForIt", 'c', 1));
  EXPECT_EQ(format.FindField("thisnameistoolongforit"), 0);
  EXPECT_EQ(format.FindField("ThisNameIsTooLongFor"), 0);
  EXPECT_EQ(format.FindField("ThisNameIsTooLongFo"), -1);
  EXPECT_FALSE(format.AddField("ThisNameIsTooLongForMe", 'c', 1));
  EXPECT_FALSE(format.AddField("", 'c', 1));
  EXPECT_FALSE(format.AddField("a", 'c', 0));
  EXPECT_FALSE(format.AddField("a", 'c', -5));
  EXPECT_EQ(format.FindField(nullptr), -1);
}

TEST(TableFormatTest, RefusesRecordsAndHeadsThatGetTooLong) {
  TableFormat format;
  EXPECT_FALSE(format.AddField("a", 'c', 65535));
  EXPECT_TRUE(format.AddField("a", 'c', 65534));
  EXPECT_FALSE(format.AddField("b", 'c', 1));
  EXPECT_EQ(Read(format.Head()).RecordSize(), 65535u);
  TableFormat many;
  int fields = 0;
  while (many.AddField("f" + std::to_string(fields), 'c', 1)) ++fields;
  EXPECT_EQ(fields, 2046);
  EXPECT_EQ(Read(many.Head()).Fields().size(), 2046u);
  EXPECT_EQ(TableFormat().Head(), "");
}

TEST(TableFormatTest, ReadsTablesOfOtherPrograms) {
  TableFormat format;
  format.AddField("NAME", 'c', 10);
  format.AddField("AMOUNT", 'n', 5);
  std::string head = format.Head();
  head.replace(20, 7, 7, '\0');
  head[0] = '\x30';
  // A wide text with the high byte of its width where numbers have their decimals.
  head[32 + 16] = '\x2C';
  head[32 + 17] = '\x01';
  head.replace(10, 2, "\x32\x01");
  // What means a note in our own tables.
  head[32 + 18] = '\x02';
  head[64 + 17] = '\x02';
  head[64 + 18] = '\xFF';
  const TableFormat read = Read(head);
  ASSERT_EQ(read.Fields().size(), 2u);
  EXPECT_EQ(read.Fields()[0].name, "NAME");
  EXPECT_EQ(read.FieldsSize(), 1u + 300 + 5);
  EXPECT_EQ(read.Fields()[1].name, "AMOUNT");
  EXPECT_EQ(read.Fields()[1].type, 'N');
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

TEST(FieldValueTest, AnyTextThatFitsComesBack) {
  TableFormat format;
  format.AddField("before", 'c', 3);
  format.AddField("text", 'c', 4000);
  format.AddField("after", 'c', 3);
  for (const std::string &text : AwkwardTexts()) {
    std::string record = format.BlankRecord();
    for (const TableField &field : format.Fields()) PutFieldValue(record.data(), field, "xyz");
    PutFieldValue(record.data(), format.Fields()[1], text.c_str());
    EXPECT_EQ(FieldValue(record.data(), format.Fields()[1]), text);
    EXPECT_EQ(FieldValue(record.data(), format.Fields()[0]), "xyz");
    EXPECT_EQ(FieldValue(record.data(), format.Fields()[2]), "xyz");
  }
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
      {nullptr, 3, ""},
  };
  for (const auto &row : kRows) {
    const TableField field = {"f", 'C', 1, static_cast<std::size_t>(row.width)};
    std::string record(field.width + 2, '#');
    PutFieldValue(record.data(), field, row.value);
    EXPECT_EQ(FieldValue(record.data(), field), row.cut) << row.width;
    EXPECT_EQ(record.back(), '#');
  }
}

TEST(FieldValueTest, NumbersOfOtherProgramsStandAtTheRight) {
  const std::string record = "   12.50 ";
  EXPECT_EQ(FieldValue(record.data(), {"n", 'N', 1, 8}), "12.50");
  EXPECT_EQ(FieldValue(record.data(), {"n", 'N', 1, 2}), "");
  EXPECT_EQ(FieldValue(record.data(), {"c", 'C', 1, 8}), "  12.50");
}

}  // namespace

}  // namespace trovenu::tests
