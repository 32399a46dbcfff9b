#include "tools/trovenu/formula_folder.h"

#include <algorithm>

#include "tools/trovenu/failure.h"
#include "tools/trovenu/formula.h"
#include "tools/trovenu/terminal_text.h"
#include "trovenu/indicator/formula_tables.h"
#include "trovenu/platform/code_page.h"
#include "trovenu/platform/platform.h"
#include "trovenu/support/index_paths.h"
#include "trovenu/support/table_check.h"
#include "trovenu/support/table_file.h"
#include "trovenu/support/table_reader.h"

namespace trovenu::tool {

namespace {

constexpr const char *kKey = "IndexName";
constexpr const char *kDescription = "Description";
// `DDB` ignores its mode; this is the one that callers pass.
constexpr int kTableMode = 1;

std::string InUtf8(const SString &text) { return Utf8FromCodePage(text.c_str(), nullptr); }

// Says what keeps a table from being read as it was written. What a stopped writer leaves is no damage: the
// records before it are all there.
std::string DamageOf(const TableReport &report) {
  if (!report.isTable) return "expected a formula table";
  if (report.sizesDiffer) return "damaged table: its head and its fields tell other sizes";
  if (report.markFaults > 0) {
    return "damaged table: " + std::to_string(report.markFaults) + " of its records can't be read";
  }
  if (report.counted > report.records) {
    return "damaged table: " + std::to_string(report.counted - report.records) + " of its " +
           std::to_string(report.counted) + " records are missing";
  }
  return "";
}

void CheckTableFile(const SString &path) {
  if (FileExist(path.c_str()) == 0) return;
  const std::string damage = DamageOf(CheckTable(path.c_str()));
  if (!damage.empty()) throw Failure(ToUtf8(path.c_str()) + ": " + damage);
  TableFile table;
  if (!table.Open(path.c_str()) || table.Format().FindField(kKey) < 0) {
    throw Failure(ToUtf8(path.c_str()) + ": expected a formula table, found one without a field " + kKey);
  }
}

}  // namespace

const std::vector<FormulaKind> &FormulaKinds() {
  static const std::vector<FormulaKind> kinds = {
      {"indicator", kIndicatorIndex, kExpressions},
      {"condition", kConditionIndex, 1},
      {"pattern", kPatternIndex, 2},
      {"system", kSystemIndex, 4},
      {"function", kFunctionIndex, 1},
      {"candle", kCandleIndex, 1},
  };
  return kinds;
}

const FormulaKind &KindOfType(int type) {
  return *std::ranges::find(FormulaKinds(), type, &FormulaKind::type);
}

const FormulaKind &KindOfWord(const std::string &word) {
  return *std::ranges::find_if(FormulaKinds(), [&](const FormulaKind &kind) { return word == kind.word; });
}

SString NameInCodePage(const std::string &text, const char *what) {
  bool ok = true;
  const std::string codePage = CodePageFromUtf8(text, &ok);
  if (!ok) {
    throw Failure(std::string(what) + " " + Quoted(text) +
                  ": has a character that is not in the Korean code page");
  }
  const std::string_view trimmed = TrimBlanks(codePage);
  if (trimmed.empty()) throw Failure(std::string(what) + ": expected a text, found nothing");
  return SString(trimmed);
}

FormulaFolder::FormulaFolder(const std::string &path) { setIndexDir(path.c_str()); }

std::vector<SString> FormulaFolder::Tables(const FormulaKind &kind) {
  if (kind.type == kCandleIndex) return {GetCandleTablePath()};
  return {getIndexDBFileName(kind.type), getUserDBFileName(kind.type)};
}

void FormulaFolder::CheckTables(const FormulaKind &kind) const {
  for (const SString &path : Tables(kind)) CheckTableFile(path);
}

void FormulaFolder::RequireAny() const {
  for (const FormulaKind &kind : FormulaKinds()) {
    for (const SString &path : Tables(kind)) {
      if (FileExist(path.c_str()) != 0) return;
    }
  }
  throw Failure(ToUtf8(getIndexDir().c_str()) + ": no formula tables (trovenu indicator install makes them)");
}

void FormulaFolder::RequireTables(const FormulaKind &kind) const {
  for (const SString &path : Tables(kind)) {
    if (FileExist(path.c_str()) != 0) continue;
    throw Failure(ToUtf8(path.c_str()) + ": no such table (trovenu indicator install makes it)");
  }
  CheckTables(kind);
}

std::vector<FormulaEntry> FormulaFolder::List(const FormulaKind &kind) const {
  CheckTables(kind);
  std::vector<FormulaEntry> entries;
  const std::vector<SString> tables = Tables(kind);
  for (std::size_t i = 0; i < tables.size(); ++i) {
    DDB table(tables[i].c_str(), "", kTableMode);
    for (; table.Eof() == 0; table.MoveNext()) {
      const SString name = table.GetStr(kKey);
      if (table.Deleted() != 0 || name.IsEmpty()) continue;
      entries.push_back({&kind, name, table.GetStr(kDescription), i > 0});
    }
  }
  return entries;
}

SIndex FormulaFolder::Read(const FormulaKind &kind, const SString &name) const {
  RequireTables(kind);
  const Failure none(std::string("no ") + kind.word + " " + Quoted(InUtf8(name)) + " in " +
                     ToUtf8(getIndexDir().c_str()));
  if (kind.type != kCandleIndex) {
    SIndex index(name.c_str(), kind.type);
    if (index.ReadExpression(name.c_str(), "", "") == 0) throw none;
    return index;
  }
  const SString path = GetCandleTablePath();
  DDB table(path.c_str(), "", kTableMode);
  if (table.FindFirst(kKey, name.c_str()) == 0) throw none;
  SFunctionList patterns;
  ReadCandlePatterns(path.c_str(), patterns);
  const SFunction &pattern = patterns[patterns.Find(name.c_str())];
  SIndex index(name.c_str(), kIndicatorIndex);
  index.ExpName[0] = name;
  index.Expression[0] = pattern.Expression;
  std::ranges::copy(pattern.VarName, index.VarName);
  std::ranges::copy(pattern.VarValue, index.VarValue);
  index.Description = table.GetStr(kDescription);
  index.Password = table.GetStr("Password");
  return index;
}

SFunctionList FormulaFolder::Functions() const {
  CheckTables(KindOfType(kFunctionIndex));
  SFunctionList functions;
  functions.ReadFunction();
  return functions;
}

}  // namespace trovenu::tool
