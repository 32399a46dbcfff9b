#include <utility>

#include "trovenu/indicator/formula_fields.h"
#include "trovenu/indicator/index.h"
#include "trovenu/platform/platform.h"
#include "trovenu/support/index_paths.h"
#include "trovenu/support/table_reader.h"

namespace trovenu {
namespace {

// `DDB` ignores its mode; this is the one that callers pass.
constexpr int kTableMode = 1;

enum WriteMode : int { kUpdate = 0, kAppend = 1 };

// The scale that belongs to one view of the indicator, so that an update leaves the stored one alone.
constexpr int kViewScale = 4;
constexpr const char *kScaleField = "MinMaxY";

bool HasTable(int kind) { return kind >= kIndicatorIndex && kind <= kFunctionIndex; }

}  // namespace

int SIndex::ReadRecord(const char *name, SString indexFile, SString userFile, bool showNamedLines) {
  if (!HasTable(IndexType)) return 0;
  if (indexFile.IsEmpty()) indexFile = getIndexDBFileName(IndexType);
  if (userFile.IsEmpty()) userFile = getUserDBFileName(IndexType);
  if (FileExist(indexFile.c_str()) == 0 || FileExist(userFile.c_str()) == 0) return 0;
  DDB table(indexFile.c_str(), userFile.c_str(), kTableMode);
  table.SetExtension(getIndexDBExt(IndexType));
  if (table.FindFirst(kFormulaKey, name) == 0) return 0;
  for (const FormulaField &field : FormulaFields(IndexType)) {
    if (field.IsRead()) field.Set(*this, table.GetStr(field.Name().c_str()));
  }
  if (IndexType == kPatternIndex) LineStyle[0] = LineStyle[1] = 0;
  if (IndexType == kIndicatorIndex && showNamedLines) {
    for (int i = 0; i < kExpressions; ++i) {
      if (!Expression[i].IsEmpty() && !ExpName[i].IsEmpty()) BlShowLine[i] = 1;
    }
  }
  return 1;
}

int SIndex::ReadExpression(const char *name, SString indexFile, SString userFile) {
  return ReadRecord(name, std::move(indexFile), std::move(userFile), false);
}

int SIndex::ReadExpForConv(const char *name, SString indexFile, SString userFile) {
  return ReadRecord(name, std::move(indexFile), std::move(userFile), true);
}

int SIndex::WriteExpression(const char *name, int mode, int toSystem) {
  if (!HasTable(IndexType)) return 0;
  const SString userFile = toSystem != 0 ? SString() : getUserDBFileName(IndexType);
  DDB table(getIndexDBFileName(IndexType).c_str(), userFile.c_str(), kTableMode);
  table.SetExtension(getIndexDBExt(IndexType));
  const char *const kept = mode == kUpdate && MinMaxY == kViewScale ? kScaleField : nullptr;
  const bool found =
      mode == kAppend ? table.Append(IndexName.c_str()) != 0 : table.FindFirst(kFormulaKey, name) != 0;
  if (!found || !SetFormulaFields(table, *this, IndexType, kept)) return 0;
  return table.WriteRecord() != 0 ? 1 : 0;
}

int SIndex::ReadIndex(const char *) { return 0; }

}  // namespace trovenu
