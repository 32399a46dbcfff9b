#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <random>
#include <sstream>
#include <string>
#include <vector>

#include "tests/indicator/index_folder.h"
#include "tests/price/stored_values.h"
#include "trovenu/formula/user_function_list.h"
#include "trovenu/indicator/formula_tables.h"
#include "trovenu/indicator/index.h"
#include "trovenu/support/korean.h"
#include "trovenu/support/table_file.h"
#include "trovenu/support/table_reader.h"
#include "trovenu/support/table_writer.h"

namespace trovenu {
namespace {

using tests::IndexFolder;

constexpr int kKinds[] = {kIndicatorIndex, kConditionIndex, kPatternIndex, kSystemIndex, kFunctionIndex};

std::string SystemPath(int kind) { return getIndexDBFileName(kind).c_str(); }
std::string UserPath(int kind) { return getUserDBFileName(kind).c_str(); }

// The fields of a kind in order; "5*A,B" stands for A0 B0 A1 B1 to B4.
struct Record {
  int kind;
  std::vector<std::string> fields;
  std::string notKept;
};

const Record kRecords[] = {
    {kIndicatorIndex,
     {"10*VarName,VarValue", "5*ShowLine", "5*Expression", "5*ExpName", "5*LineType",
      "5*LineColor,LineUpColor,LineDnColor", "5*LineUpValue,LineDnValue",
      "5*LineCompMethod,LineStyle,LineWidth", "5*YValue", "YValueColor", "YValueStyle", "YValueWidth",
      "MinMaxY", "UserMin", "UserMax", "LogY", "InvertY", "Password", "Description"},
     ""},
    {kSystemIndex,
     {"10*VarName,VarValue,VarStart,VarEnd,VarIncrement", "4*Expression,LineColor,LineType,LineWidth",
      "Password", "Description"},
     ""},
    {kPatternIndex,
     {"10*VarName,VarValue", "10*VarStart,VarEnd,VarIncrement", "2*Expression,LineColor,LineType,LineWidth",
      "Password", "Description"},
     "VarStart VarEnd VarIncrement"},
    {kFunctionIndex, {"10*VarName,VarValue", "1*Expression", "Password", "Description"}, "VarValue"},
    {kConditionIndex,
     {"10*VarName,VarValue", "1*Expression,LineType,LineColor,LineWidth,LineStyle", "Password", "Description",
      "Period"},
     "LineStyle"},
};

std::vector<std::string> Names(const Record &record) {
  std::vector<std::string> names = {"IndexName"};
  for (const std::string &group : record.fields) {
    const std::size_t star = group.find('*');
    const int count = star == std::string::npos ? 0 : std::stoi(group);
    for (int i = 0; i == 0 || i < count; ++i) {
      std::istringstream parts(count > 0 ? group.substr(star + 1) : group);
      for (std::string name; std::getline(parts, name, ',');) {
        names.push_back(name + (count > 0 ? std::to_string(i) : ""));
      }
    }
  }
  return names;
}

// An object in which all that a table may keep is another value.
SIndex Filled(int kind, int seed) {
  SIndex index("Name", kind);
  CKqArchive archive;
  index.Store(archive, 0);
  archive = tests::Renumbered(tests::ValuesOf(archive));
  index.Load(archive, 0);
  index.IndexType = kind;
  index.IndexName = "Name";
  index.MinMaxY = 3;
  index.LogY = index.InvertY = 1;
  for (SString *texts : {index.VarName, index.VarValue, index.VarStart, index.VarEnd, index.VarIncrement}) {
    for (int i = 0; i < kVariables; ++i) texts[i] = SString(++seed);
  }
  for (SString *texts : {index.Expression, index.ExpName}) {
    for (int i = 0; i < kExpressions; ++i) texts[i] = SString(++seed);
  }
  index.Password = "secret";
  index.Description = "설명 description"_kr;
  index.Period = SString(seed);
  return index;
}

TEST(FormulaStore, RecordsHaveTheFieldsOfTheirKind) {
  for (const Record &record : kRecords) {
    const IndexFolder folder;
    ASSERT_TRUE(CreateFormulaTables(record.kind));
    TableFile file;
    ASSERT_TRUE(file.Open(UserPath(record.kind)));
    std::vector<std::string> fields;
    for (const TableField &field : file.Format().Fields()) fields.push_back(field.name);
    EXPECT_EQ(fields, Names(record)) << record.kind;

    // What is read into another object and written anew is the same, apart from what is not kept.
    SIndex written = Filled(record.kind, 1001);
    ASSERT_EQ(written.WriteExpression("Name", 1, 0), 1);
    SIndex read("Name", record.kind);
    ASSERT_EQ(read.ReadExpression("Name", "", ""), 1);
    ASSERT_EQ(read.WriteExpression("Name", 1, 1), 1);
    const DB first(UserPath(record.kind).c_str());
    const DB second(SystemPath(record.kind).c_str());
    for (const std::string &name : fields) {
      const SString value = first.GetStr(name.c_str());
      const bool isKept =
          record.notKept.empty() || record.notKept.find(name.substr(0, name.size() - 1)) == std::string::npos;
      if (!isKept) continue;
      EXPECT_FALSE(value.IsEmpty()) << name;
      EXPECT_EQ(second.GetStr(name.c_str()), value) << record.kind << " " << name;
    }
    EXPECT_EQ(first.GetStr("VarName3"), written.VarName[3]);
    EXPECT_EQ(first.GetStr("Expression0"), written.Expression[0]);
    if (record.kind != kIndicatorIndex) continue;
    EXPECT_EQ(first.GetStr("LineUpColor4"), SString(static_cast<int>(written.LineUpColor[4])));
    EXPECT_EQ(first.GetStr("LineDnValue4"), written.LineDnValue[4]);
    EXPECT_EQ(first.GetStr("LineWidth1"), SString(written.LineWidth[1]));
  }
}

// Required: reading by an index's own name gives nothing.
TEST(FormulaStore, ReadIndexGivesZero) {
  const IndexFolder folder;
  ASSERT_TRUE(CreateFormulaTables(kIndicatorIndex));
  SIndex index = Filled(kIndicatorIndex, 1);
  ASSERT_EQ(index.WriteExpression("Name", 1, 0), 1);
  EXPECT_EQ(SIndex("", 0).ReadIndex("Name"), 0);
}

TEST(FormulaStore, BothTablesMustBeThereToRead) {
  const IndexFolder folder;
  SIndex index("Name", kConditionIndex);
  EXPECT_EQ(index.WriteExpression("Name", 1, 1), 0) << "no table to write to";
  EXPECT_EQ(index.WriteExpression("Name", 1, 0), 0);
  ASSERT_TRUE(CreateFormulaTable(kConditionIndex, SystemPath(kConditionIndex).c_str()));
  EXPECT_EQ(index.WriteExpression("Name", 1, 0), 0);
  ASSERT_EQ(index.WriteExpression("Name", 1, 1), 1);
  EXPECT_EQ(index.ReadExpression("Name", "", ""), 0);
  ASSERT_TRUE(CreateFormulaTables(kConditionIndex));
  EXPECT_EQ(index.ReadExpression("Name", "", ""), 1) << "the table that was there is kept";
  EXPECT_EQ(index.ReadExpression("name", "", ""), 0);
}

// Required: a condition takes its name from the record.
TEST(FormulaStore, ConditionReadsItsNameAndItsStyle) {
  const IndexFolder folder;
  ASSERT_TRUE(CreateFormulaTables(kConditionIndex));
  SIndex written("Name", kConditionIndex);
  ASSERT_EQ(written.WriteExpression("Name", 1, 0), 1);
  {
    DDB table(SystemPath(kConditionIndex).c_str(), UserPath(kConditionIndex).c_str(), 1);
    ASSERT_TRUE(table.FindFirst("IndexName", "Name"));
    table.InsField("LineStyle0", "3");
    ASSERT_TRUE(table.WriteRecord());
  }
  SIndex read("Other", kConditionIndex);
  ASSERT_EQ(read.ReadExpression("Name", "", ""), 1);
  EXPECT_STREQ(read.IndexName.c_str(), "Name");
  EXPECT_EQ(read.LineStyle[0], 3);
}

TEST(FormulaStore, UpdateFindsTheRecordByName) {
  const IndexFolder folder;
  ASSERT_TRUE(CreateFormulaTables(kFunctionIndex));
  SIndex index("old", kFunctionIndex);
  EXPECT_EQ(index.WriteExpression("old", 0, 0), 0) << "there is nothing to update";
  ASSERT_EQ(index.WriteExpression("old", 1, 0), 1);
  index.IndexName = "new";
  index.Expression[0] = "c";
  EXPECT_EQ(index.WriteExpression("absent", 0, 0), 0);
  ASSERT_EQ(index.WriteExpression("old", 0, 0), 1);
  const std::vector<SString> names = ListFormulas(UserPath(kFunctionIndex).c_str());
  ASSERT_EQ(names.size(), 1U);
  EXPECT_STREQ(names[0].c_str(), "new");
  ASSERT_EQ(index.WriteExpression("new", 1, 0), 1);
  EXPECT_EQ(ListFormulas(UserPath(kFunctionIndex).c_str()).size(), 2U) << "appending looks for no record";
  EXPECT_TRUE(ListFormulas(SystemPath(kFunctionIndex).c_str()).empty());
}

// Required: the stored scale stays when the scale of one view is updated.
TEST(FormulaStore, ScaleOfAViewIsNotStored) {
  struct Case {
    int mode;
    int scale;
    int stored;
  };
  for (const Case &c : {Case{0, 4, 2}, Case{0, 3, 3}, Case{7, 4, 4}, Case{1, 4, 4}}) {
    const IndexFolder folder;
    ASSERT_TRUE(CreateFormulaTables(kIndicatorIndex));
    SIndex index("Name", kIndicatorIndex);
    index.MinMaxY = 2;
    if (c.mode != 1) {
      ASSERT_EQ(index.WriteExpression("Name", 1, 0), 1);
    }
    index.MinMaxY = c.scale;
    ASSERT_EQ(index.WriteExpression("Name", c.mode, 0), 1);
    ASSERT_EQ(index.ReadExpression("Name", "", ""), 1);
    EXPECT_EQ(index.MinMaxY, c.stored) << c.mode << " " << c.scale;
  }
}

TEST(FormulaStore, UnreadableNumbersLeaveTheFieldAsItWas) {
  const IndexFolder folder;
  ASSERT_TRUE(CreateFormulaTables(kIndicatorIndex));
  SIndex index("Name", kIndicatorIndex);
  index.LogY = 7;
  index.LineColor[1] = 0xFFFFFFFF;
  ASSERT_EQ(index.WriteExpression("Name", 1, 1), 1);
  {
    DB table(SystemPath(kIndicatorIndex).c_str());
    EXPECT_STREQ(table.GetStr("LogY").c_str(), "1");
    EXPECT_STREQ(table.GetStr("LineColor1").c_str(), "-1");
    table.InsField("LineWidth0", "wide");
    table.InsField("LineWidth1", "");
    table.InsField("UserMax", "1.5 x");
    table.InsField("LogY", "");
    table.InsField("InvertY", "2");
    table.InsField("VarName3", "");
    ASSERT_TRUE(table.WriteRecord());
  }
  index.LineWidth[0] = 5;
  index.LineWidth[1] = 6;
  index.UserMax = 7.5;
  index.LineColor[1] = 3;
  index.LogY = index.InvertY = 1;
  index.VarName[3] = "x";
  ASSERT_EQ(index.ReadExpression("Name", "", ""), 1);
  EXPECT_EQ(index.LineWidth[0], 5);
  EXPECT_EQ(index.LineWidth[1], 6);
  EXPECT_EQ(index.UserMax, 7.5);
  EXPECT_EQ(index.LineColor[1], 0xFFFFFFFF);
  EXPECT_EQ(index.LogY, 0);
  EXPECT_EQ(index.InvertY, 0);
  EXPECT_TRUE(index.VarName[3].IsEmpty());
}

TEST(FormulaStore, DamagedTablesAreReadOrLeaveTheObjectAlone) {
  std::mt19937 random(5);
  for (const int kind : kKinds) {
    const IndexFolder folder;
    ASSERT_TRUE(CreateFormulaTables(kind));
    SIndex written = Filled(kind, 1);
    ASSERT_EQ(written.WriteExpression("Name", 1, 1), 1);
    const std::string name = "System." + std::string(getIndexDBExt(kind).c_str());
    const std::string good = folder.Content(name);
    for (int round = 0; round < 20; ++round) {
      std::string bad = good.substr(0, round % 2 == 0 ? good.size() : random() % good.size());
      for (int i = 0; i < 3 && !bad.empty(); ++i)
        bad[random() % std::min<std::size_t>(bad.size(), 4000)] = '\x7F';
      folder.Put(name, bad);
      SIndex read = Filled(kind, 5000);
      if (read.ReadExpression("Name", "", "") != 0) continue;
      EXPECT_EQ(tests::StoredBy(read, 0), tests::StoredBy(Filled(kind, 5000), 0));
      EXPECT_EQ(read.Expression[0], Filled(kind, 5000).Expression[0]);
    }
  }
}

TEST(FormulaStore, CandlePatternsKeepTheirOrder) {
  const IndexFolder folder;
  const SString path = GetCandleTablePath();
  SFunctionList list;
  SIndex pattern("망치"_kr, kCandleIndex);
  EXPECT_EQ(ReadCandlePatterns(path.c_str(), list), 0);
  EXPECT_FALSE(WriteCandlePattern(path.c_str(), pattern)) << "no table to write to";
  ASSERT_TRUE(CreateFormulaTable(kCandleIndex, path.c_str()));
  for (const char *name : {"망치"_kr, "second", "third", "second"}) {
    pattern.IndexName = name;
    pattern.Expression[0] = (std::string(pattern.Expression[0].c_str()) + "c").c_str();
    ASSERT_TRUE(WriteCandlePattern(path.c_str(), pattern));
  }
  ASSERT_EQ(ReadCandlePatterns(path.c_str(), list), 1);
  ASSERT_EQ(list.Size, 3);
  EXPECT_STREQ(list[0].IndexName.c_str(), "망치"_kr);
  EXPECT_STREQ(list[1].Expression.c_str(), "cccc");
  EXPECT_STREQ(list[2].IndexName.c_str(), "third");
}

}  // namespace
}  // namespace trovenu
