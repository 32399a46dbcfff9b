#include "trovenu/formula/user_function_table.h"

#include <string>

#include "trovenu/formula/user_function_list.h"
#include "trovenu/support/index_paths.h"
#include "trovenu/support/table_reader.h"

namespace trovenu {
namespace {

// Kind of the tables that hold user functions.
constexpr int kFunctionTable = 4;
constexpr int kTableMode = 1;

SFunction ReadRecord(const DDB &table, const SString &name) {
  SFunction function;
  function.IndexName = name;
  function.Expression = table.GetStr("Expression0");
  for (int i = 0; i < kParameters; ++i) {
    const std::string number = std::to_string(i);
    function.VarName[i] = table.GetStr(("VarName" + number).c_str());
    function.VarValue[i] = table.GetStr(("VarValue" + number).c_str());
  }
  return function;
}

}  // namespace

int AddFunctions(DDB &table, SFunctionList &list) {
  int added = 0;
  for (table.MoveFirst(); table.Eof() == 0; table.MoveNext()) {
    const SString name = table.GetStr("IndexName").Trim();
    if (name.IsEmpty() || table.Deleted() != 0) continue;
    list.Add(ReadRecord(table, name));
    ++added;
  }
  return added;
}

int SFunctionList::ReadFunction() {
  Clear();
  DDB table(getIndexDBFileName(kFunctionTable).c_str(), getUserDBFileName(kFunctionTable).c_str(),
            kTableMode);
  table.SetExtension(getIndexDBExt(kFunctionTable));
  return AddFunctions(table, *this) > 0 ? 1 : 0;
}

}  // namespace trovenu
