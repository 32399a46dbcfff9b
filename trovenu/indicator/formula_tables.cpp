#include "trovenu/indicator/formula_tables.h"

#include "trovenu/formula/user_function_list.h"
#include "trovenu/formula/user_function_table.h"
#include "trovenu/indicator/formula_fields.h"
#include "trovenu/indicator/index.h"
#include "trovenu/platform/platform.h"
#include "trovenu/support/index_paths.h"
#include "trovenu/support/table_reader.h"
#include "trovenu/support/table_writer.h"

namespace trovenu {
namespace {

constexpr int kTableMode = 1;
constexpr const char *kCandleTable = "Candle.cdl";

bool CreateIfMissing(int kind, const SString &path) {
  return FileExist(path.c_str()) != 0 || CreateFormulaTable(kind, path.c_str());
}

}  // namespace

bool CreateFormulaTable(int kind, const char *path) {
  const std::vector<FormulaField> &fields = FormulaFields(kind);
  DB table;
  if (fields.empty() || table.CreateDB(path) == 0) return false;
  table.ClearField();
  for (const FormulaField &field : fields) {
    if (table.InsertField(field.Name().c_str(), 'c', field.Width()) == 0) return false;
  }
  return table.WriteHead() != 0 && table.WriteField() != 0 && table.WriteEof() != 0;
}

bool CreateFormulaTables(int kind) {
  const SString system = getIndexDBFileName(kind);
  if (system.IsEmpty()) return false;
  return CreateIfMissing(kind, system) && CreateIfMissing(kind, getUserDBFileName(kind));
}

std::vector<SString> ListFormulas(const char *path) {
  std::vector<SString> names;
  DDB table(path, "", kTableMode);
  for (; table.Eof() == 0; table.MoveNext()) {
    const SString name = table.GetStr(kFormulaKey);
    if (table.Deleted() == 0 && !name.IsEmpty()) names.push_back(name);
  }
  return names;
}

SString GetCandleTablePath() { return getIndexDir() + kCandleTable; }

int ReadCandlePatterns(const char *path, SFunctionList &list) {
  list.Clear();
  DDB table(path, "", kTableMode);
  return AddFunctions(table, list) > 0 ? 1 : 0;
}

bool WriteCandlePattern(const char *path, const SIndex &pattern) {
  const char *const name = pattern.IndexName.c_str();
  if (*name == '\0') return false;
  DDB table(path, "", kTableMode);
  if (table.FindFirst(kFormulaKey, name) == 0 && table.Append(name) == 0) return false;
  return SetFormulaFields(table, pattern, kCandleIndex, nullptr) && table.WriteRecord() != 0;
}

}  // namespace trovenu
