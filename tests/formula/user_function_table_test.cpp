#include <gtest/gtest.h>

#include <string>

#include "tests/indicator/index_folder.h"
#include "trovenu/formula/user_function_list.h"
#include "trovenu/indicator/formula_tables.h"
#include "trovenu/indicator/index.h"
#include "trovenu/support/table_writer.h"

namespace trovenu {
namespace {

using tests::IndexFolder;

void WriteFunction(const char *name, const char *body, int toSystem) {
  SIndex function(name, kFunctionIndex);
  function.VarName[0] = "x";
  function.VarName[9] = "last";
  function.Expression[0] = body;
  ASSERT_EQ(function.WriteExpression(name, 1, toSystem), 1);
}

TEST(UserFunctionTable, ReadsBothTablesTheSystemsFirst) {
  const IndexFolder folder;
  ASSERT_TRUE(CreateFormulaTables(kFunctionIndex));
  WriteFunction("user", "x+1", 0);
  WriteFunction("  first ", "x", 1);
  WriteFunction("", "nameless", 1);
  WriteFunction("deleted", "x", 1);
  WriteFunction("last", "x*2", 1);
  {
    DB table(getIndexDBFileName(kFunctionIndex).c_str());
    table.InsField("VarValue0", "14");
    ASSERT_TRUE(table.WriteRecord());
    std::string bytes = folder.Content("System.fnc");
    bytes[static_cast<std::size_t>(table.HeadSize) + 2 * static_cast<std::size_t>(table.RecordSize)] = '*';
    folder.Put("System.fnc", bytes);
  }
  SFunctionList list;
  for (int i = 0; i < 30; ++i) list.Add(SFunction());
  ASSERT_EQ(list.ReadFunction(), 1);
  ASSERT_EQ(list.Size, 3);
  EXPECT_EQ(list.MaxSize, 20);
  EXPECT_STREQ(list[0].IndexName.c_str(), "first");
  EXPECT_STREQ(list[0].VarName[0].c_str(), "x");
  EXPECT_STREQ(list[0].VarName[9].c_str(), "last");
  EXPECT_STREQ(list[0].VarValue[0].c_str(), "14");
  EXPECT_STREQ(list[0].Expression.c_str(), "x");
  EXPECT_STREQ(list[1].IndexName.c_str(), "last");
  EXPECT_STREQ(list[2].IndexName.c_str(), "user");
  EXPECT_STREQ(list[2].Expression.c_str(), "x+1");
}

}  // namespace
}  // namespace trovenu
