#include <gtest/gtest.h>

#include <algorithm>
#include <iterator>
#include <random>
#include <set>
#include <string>
#include <vector>

#include "tests/indicator/index_folder.h"
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

// Fields "Name0" to "Name(count - 1)" of one loop, or one field without a number for a count of 0.
struct Loop {
  int count;
  std::vector<std::string> names;
};

std::vector<std::string> Names(const std::vector<Loop> &loops) {
  std::vector<std::string> names;
  for (const Loop &loop : loops) {
    for (int i = 0; i == 0 || i < loop.count; ++i) {
      for (const std::string &name : loop.names) {
        names.push_back(name + (loop.count > 0 ? std::to_string(i) : ""));
      }
    }
  }
  return names;
}

// The fields of a kind, and which of them are not written or not read back.
struct Record {
  int kind;
  std::vector<Loop> fields;
  std::set<std::string> notWritten;
  std::set<std::string> notRead;
};

std::set<std::string> Ranges() {
  std::set<std::string> names;
  for (const std::string &name : Names({{10, {"VarStart", "VarEnd", "VarIncrement"}}})) names.insert(name);
  return names;
}

std::vector<Record> Records() {
  const Loop variables = {10, {"VarName", "VarValue"}};
  const Loop end = {0, {"Password", "Description"}};
  std::set<std::string> values;
  for (const std::string &name : Names({{10, {"VarValue"}}})) values.insert(name);
  return {
      {kIndicatorIndex,
       {variables,
        {5, {"ShowLine"}},
        {5, {"Expression"}},
        {5, {"ExpName"}},
        {5, {"LineType"}},
        {5, {"LineColor", "LineUpColor", "LineDnColor"}},
        {5, {"LineUpValue", "LineDnValue"}},
        {5, {"LineCompMethod", "LineStyle", "LineWidth"}},
        {5, {"YValue"}},
        {0,
         {"YValueColor", "YValueStyle", "YValueWidth", "MinMaxY", "UserMin", "UserMax", "LogY", "InvertY"}},
        end},
       {},
       {}},
      {kSystemIndex,
       {{10, {"VarName", "VarValue", "VarStart", "VarEnd", "VarIncrement"}},
        {4, {"Expression", "LineColor", "LineType", "LineWidth"}},
        end},
       {},
       {}},
      {kPatternIndex,
       {variables,
        {10, {"VarStart", "VarEnd", "VarIncrement"}},
        {2, {"Expression", "LineColor", "LineType", "LineWidth"}},
        end},
       {},
       Ranges()},
      {kFunctionIndex, {variables, {1, {"Expression"}}, end}, values, values},
      {kConditionIndex,
       {variables,
        {1, {"Expression", "LineType", "LineColor", "LineWidth", "LineStyle"}},
        end,
        {0, {"Period"}}},
       {"LineStyle0"},
       {}},
  };
}

using I = SIndex;

// The members that fields keep.
struct Member {
  const char *field;
  SString (*get)(const I &index, int element);
};

constexpr Member kMembers[] = {
    {"VarName", [](const I &x, int i) { return SString(x.VarName[i]); }},
    {"VarValue", [](const I &x, int i) { return SString(x.VarValue[i]); }},
    {"VarStart", [](const I &x, int i) { return SString(x.VarStart[i]); }},
    {"VarEnd", [](const I &x, int i) { return SString(x.VarEnd[i]); }},
    {"VarIncrement", [](const I &x, int i) { return SString(x.VarIncrement[i]); }},
    {"ShowLine", [](const I &x, int i) { return SString(x.BlShowLine[i]); }},
    {"Expression", [](const I &x, int i) { return SString(x.Expression[i]); }},
    {"ExpName", [](const I &x, int i) { return SString(x.ExpName[i]); }},
    {"LineType", [](const I &x, int i) { return SString(x.DisplayType[i]); }},
    {"LineColor", [](const I &x, int i) { return SString(x.LineColor[i]); }},
    {"LineUpColor", [](const I &x, int i) { return SString(x.LineUpColor[i]); }},
    {"LineDnColor", [](const I &x, int i) { return SString(x.LineDnColor[i]); }},
    {"LineUpValue", [](const I &x, int i) { return SString(x.LineUpValue[i]); }},
    {"LineDnValue", [](const I &x, int i) { return SString(x.LineDnValue[i]); }},
    {"LineCompMethod", [](const I &x, int i) { return SString(x.LineCompMethod[i]); }},
    {"LineStyle", [](const I &x, int i) { return SString(x.LineStyle[i]); }},
    {"LineWidth", [](const I &x, int i) { return SString(x.LineWidth[i]); }},
    {"YValue", [](const I &x, int i) { return SString(x.YValue[i]); }},
    {"YValueColor", [](const I &x, int) { return SString(x.YValueColor); }},
    {"YValueStyle", [](const I &x, int) { return SString(x.YValueStyle); }},
    {"YValueWidth", [](const I &x, int) { return SString(x.YValueWidth); }},
    {"MinMaxY", [](const I &x, int) { return SString(x.MinMaxY); }},
    {"UserMin", [](const I &x, int) { return SString(x.UserMin); }},
    {"UserMax", [](const I &x, int) { return SString(x.UserMax); }},
    {"LogY", [](const I &x, int) { return SString(x.LogY); }},
    {"InvertY", [](const I &x, int) { return SString(x.InvertY); }},
    {"Password", [](const I &x, int) { return SString(x.Password); }},
    {"Description", [](const I &x, int) { return SString(x.Description); }},
    {"Period", [](const I &x, int) { return SString(x.Period); }},
};

// The value of a field as the object has it.
std::string ValueOf(const SIndex &index, std::string field) {
  const bool numbered = field.back() >= '0' && field.back() <= '9';
  const int element = numbered ? field.back() - '0' : 0;
  if (numbered) field.pop_back();
  const auto *const member =
      std::ranges::find_if(kMembers, [&](const Member &m) { return m.field == field; });
  return member == std::end(kMembers) ? "no such field" : member->get(index, element).c_str();
}

// An object in which all that a table may keep is another value.
SIndex Filled(int kind, int seed) {
  SIndex index("Name", kind);
  int number = seed;
  const auto fill = [&number](auto &values) {
    for (auto &value : values) value = static_cast<std::decay_t<decltype(value)>>(++number);
  };
  const auto fillTexts = [&number](auto &values) {
    for (SString &value : values) value = SString(("v" + std::to_string(++number)).c_str());
  };
  fillTexts(index.VarName);
  fillTexts(index.VarValue);
  fillTexts(index.VarStart);
  fillTexts(index.VarEnd);
  fillTexts(index.VarIncrement);
  fillTexts(index.Expression);
  fillTexts(index.ExpName);
  fillTexts(index.LineUpValue);
  fillTexts(index.LineDnValue);
  fillTexts(index.YValue);
  fill(index.BlShowLine);
  fill(index.DisplayType);
  fill(index.LineColor);
  fill(index.LineUpColor);
  fill(index.LineDnColor);
  fill(index.LineCompMethod);
  fill(index.LineStyle);
  fill(index.LineWidth);
  index.YValueColor = static_cast<Color>(++number);
  index.YValueStyle = ++number;
  index.YValueWidth = ++number;
  index.MinMaxY = ++number;
  index.UserMin = ++number + 0.5;
  index.UserMax = ++number + 0.5;
  index.LogY = seed % 2;
  index.InvertY = 1 - seed % 2;
  index.Password = "secret";
  index.Description = "설명 description"_kr;
  index.Period = SString(++number);
  return index;
}

std::vector<std::string> FieldsIn(const std::string &path) {
  TableFile table;
  EXPECT_TRUE(table.Open(path));
  std::vector<std::string> names;
  for (const TableField &field : table.Format().Fields()) names.push_back(field.name);
  return names;
}

TEST(FormulaStore, RecordsHaveTheFieldsOfTheirKind) {
  const IndexFolder folder;
  for (const Record &record : Records()) {
    ASSERT_TRUE(CreateFormulaTables(record.kind));
    std::vector<std::string> names = Names(record.fields);
    names.insert(names.begin(), "IndexName");
    EXPECT_EQ(FieldsIn(SystemPath(record.kind)), names) << record.kind;
    EXPECT_EQ(FieldsIn(UserPath(record.kind)), names) << record.kind;

    const SIndex written = Filled(record.kind, 1001);
    SIndex copy = written;
    ASSERT_EQ(copy.WriteExpression("any", 1, 0), 1);
    const DB table(UserPath(record.kind).c_str());
    EXPECT_EQ(table.RecordCount, 1);
    EXPECT_STREQ(table.GetStr("IndexName").c_str(), "Name");
    for (const std::string &name : Names(record.fields)) {
      EXPECT_EQ(table.GetStr(name.c_str()).c_str(),
                record.notWritten.count(name) > 0 ? std::string() : ValueOf(written, name))
          << record.kind << " " << name;
    }

    const SIndex before = Filled(record.kind, 3000);
    SIndex read = before;
    ASSERT_EQ(read.ReadExpression("Name", "", ""), 1);
    const std::vector<std::string> all = Names(record.fields);
    std::vector<std::string> members = Names(Records()[0].fields);
    for (const char *other : {"VarStart0", "VarEnd9", "VarIncrement5", "Period"}) members.emplace_back(other);
    for (const std::string &name : members) {
      const bool isRead = std::count(all.begin(), all.end(), name) > 0 && record.notRead.count(name) == 0 &&
                          record.notWritten.count(name) == 0;
      const bool isReset = record.kind == kPatternIndex && (name == "LineStyle0" || name == "LineStyle1");
      EXPECT_EQ(ValueOf(read, name), isReset ? "0" : ValueOf(isRead ? written : before, name))
          << record.kind << " " << name;
    }
  }
}

TEST(FormulaStore, KindsWithoutTables) {
  const IndexFolder folder;
  for (const int kind : {kPriceIndex, kFedIndex, kEquityIndex, kFedIndicatorIndex, kCandleIndex}) {
    SIndex index = Filled(kind, 1);
    EXPECT_EQ(index.WriteExpression("Name", 1, 1), 0);
    EXPECT_EQ(index.ReadExpression("Name", "", ""), 0);
    EXPECT_FALSE(CreateFormulaTables(kind));
  }
  EXPECT_FALSE(CreateFormulaTable(5, folder.Path("x").c_str()));
  ASSERT_TRUE(CreateFormulaTables(kIndicatorIndex));
  SIndex index = Filled(kCandleIndex, 1);
  EXPECT_EQ(index.ReadExpression("Name", getIndexDBFileName(0), getUserDBFileName(0)), 0);
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

  // Other tables than those of the folder.
  const SString other = folder.Path("other").c_str();
  const SString empty = folder.Path("empty").c_str();
  ASSERT_TRUE(CreateFormulaTable(kConditionIndex, empty.c_str()));
  EXPECT_EQ(index.ReadExpression("Name", other, ""), 0);
  EXPECT_EQ(index.ReadExpression("Name", "", other), 0);
  EXPECT_EQ(index.ReadExpression("Name", empty, ""), 0);
  EXPECT_EQ(index.ReadExpression("Name", empty, getIndexDBFileName(kConditionIndex)), 1);
}

TEST(FormulaStore, SystemTableGoesBeforeTheUsersTable) {
  const IndexFolder folder;
  ASSERT_TRUE(CreateFormulaTables(kIndicatorIndex));
  SIndex user("Name", kIndicatorIndex);
  user.Expression[0] = "user";
  ASSERT_EQ(user.WriteExpression("Name", 1, 0), 1);
  SIndex index("", kIndicatorIndex);
  ASSERT_EQ(index.ReadExpression("Name", "", ""), 1);
  EXPECT_STREQ(index.Expression[0].c_str(), "user");
  EXPECT_STREQ(index.IndexName.c_str(), "") << "the name is not read back";

  SIndex system("Name", kIndicatorIndex);
  system.Expression[0] = "system";
  ASSERT_EQ(system.WriteExpression("Name", 1, 1), 1);
  ASSERT_EQ(index.ReadExpression("Name", "", ""), 1);
  EXPECT_STREQ(index.Expression[0].c_str(), "system");
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

TEST(FormulaStore, ReadingForConversionShowsNamedLines) {
  const IndexFolder folder;
  ASSERT_TRUE(CreateFormulaTables(kIndicatorIndex));
  SIndex index("Name", kIndicatorIndex);
  for (int &shown : index.BlShowLine) shown = 0;
  index.Expression[0] = index.ExpName[0] = index.Expression[1] = index.ExpName[2] = "x";
  ASSERT_EQ(index.WriteExpression("Name", 1, 0), 1);
  SIndex read("", kIndicatorIndex);
  ASSERT_EQ(read.ReadExpression("Name", "", ""), 1);
  EXPECT_EQ(read.BlShowLine[0], 0);
  ASSERT_EQ(read.ReadExpForConv("Name", "", ""), 1);
  EXPECT_EQ(read.BlShowLine[0], 1);
  EXPECT_EQ(read.BlShowLine[1], 0);
  EXPECT_EQ(read.BlShowLine[2], 0);
}

TEST(FormulaStore, LongestFormulaComesBackAndALongerTextIsRefused) {
  const IndexFolder folder;
  ASSERT_TRUE(CreateFormulaTables(kSystemIndex));
  SIndex index("Name", kSystemIndex);
  index.Expression[3] = SString('c', kExpressionBytes - 1);
  ASSERT_EQ(index.WriteExpression("Name", 1, 0), 1);
  SIndex read("", kSystemIndex);
  ASSERT_EQ(read.ReadExpression("Name", "", ""), 1);
  EXPECT_EQ(read.Expression[3], index.Expression[3]);

  const std::string before = folder.Content("User.sys");
  index.VarValue[0] = SString('x', 300);
  EXPECT_EQ(index.WriteExpression("Name", 0, 0), 0);
  EXPECT_EQ(index.WriteExpression("Name", 1, 0), 0);
  EXPECT_EQ(folder.Content("User.sys"), before);
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
      const SIndex before = Filled(kind, 5000);
      SIndex read = before;
      if (read.ReadExpression("Name", "", "") != 0) continue;
      for (const std::string &field : Names(Records()[0].fields)) {
        EXPECT_EQ(ValueOf(read, field), ValueOf(before, field)) << field;
      }
    }
  }
}

// Marks record `number` of a table as deleted.
void DeleteRecord(const IndexFolder &folder, const std::string &name, std::size_t number) {
  const DB table(folder.Path(name).c_str());
  std::string bytes = folder.Content(name);
  bytes[static_cast<std::size_t>(table.HeadSize) + number * static_cast<std::size_t>(table.RecordSize)] = '*';
  folder.Put(name, bytes);
}

TEST(FormulaStore, ListStepsOverDeletedAndNamelessRecords) {
  const IndexFolder folder;
  ASSERT_TRUE(CreateFormulaTables(kConditionIndex));
  for (const char *name : {"a", "b", "", "d"}) {
    SIndex index(name, kConditionIndex);
    ASSERT_EQ(index.WriteExpression(name, 1, 1), 1);
  }
  DeleteRecord(folder, "System.cnd", 1);
  const std::vector<SString> names = ListFormulas(SystemPath(kConditionIndex).c_str());
  ASSERT_EQ(names.size(), 2U);
  EXPECT_STREQ(names[0].c_str(), "a");
  EXPECT_STREQ(names[1].c_str(), "d");
  SIndex index("", kConditionIndex);
  EXPECT_EQ(index.ReadExpression("b", "", ""), 0);
  EXPECT_TRUE(ListFormulas(folder.Path("absent").c_str()).empty());
}

TEST(FormulaStore, CandlePatternsKeepTheirOrder) {
  const IndexFolder folder;
  const SString path = GetCandleTablePath();
  SFunctionList list;
  EXPECT_EQ(ReadCandlePatterns(path.c_str(), list), 0);
  SIndex pattern("망치"_kr, kCandleIndex);
  pattern.VarName[0] = "n";
  pattern.VarValue[0] = "3";
  pattern.Expression[0] = "c > o";
  EXPECT_FALSE(WriteCandlePattern(path.c_str(), pattern)) << "no table to write to";
  ASSERT_TRUE(CreateFormulaTable(kCandleIndex, path.c_str()));
  EXPECT_EQ(ReadCandlePatterns(path.c_str(), list), 0);
  for (const char *name : {"망치"_kr, "second", "third"}) {
    pattern.IndexName = name;
    ASSERT_TRUE(WriteCandlePattern(path.c_str(), pattern));
  }
  pattern.IndexName = "second";
  pattern.Expression[0] = "c < o";
  ASSERT_TRUE(WriteCandlePattern(path.c_str(), pattern));
  pattern.IndexName = "";
  EXPECT_FALSE(WriteCandlePattern(path.c_str(), pattern));

  ASSERT_EQ(ReadCandlePatterns(path.c_str(), list), 1);
  ASSERT_EQ(list.Size, 3);
  EXPECT_STREQ(list[0].IndexName.c_str(), "망치"_kr);
  EXPECT_STREQ(list[0].VarName[0].c_str(), "n");
  EXPECT_STREQ(list[0].VarValue[0].c_str(), "3");
  EXPECT_STREQ(list[0].Expression.c_str(), "c > o");
  EXPECT_STREQ(list[1].Expression.c_str(), "c < o");
  EXPECT_STREQ(list[2].IndexName.c_str(), "third");
}

}  // namespace
}  // namespace trovenu
