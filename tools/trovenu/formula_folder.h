#pragma once

/// \file
/// The formula tables of a folder, as commands use them.

#include <string>
#include <vector>

#include "trovenu/formula/user_function_list.h"
#include "trovenu/indicator/index.h"

namespace trovenu::tool {

/// A kind of formula: its word in options, its `IndexType`, and how many formulas it has.
struct FormulaKind {
  const char *word;
  int type;
  int slots;
};

/// The kinds, in the order of lists.
const std::vector<FormulaKind> &FormulaKinds();
const FormulaKind &KindOfType(int type);
const FormulaKind &KindOfWord(const std::string &word);

/// A formula in a table.
struct FormulaEntry {
  const FormulaKind *kind;
  /// Code page.
  SString name;
  SString description;
  /// Whether it is in the user's table and not in the system's.
  bool isUsers;
};

/// The text in the code page, without the blanks around it. Throws `Failure`, which calls it `what`, for
/// another text and an empty one.
SString NameInCodePage(const std::string &text, const char *what);

/// The formula tables of a folder. There is one object at a time, since the library knows one folder. All
/// functions throw `Failure` where a table is damaged.
class FormulaFolder {
 public:
  /// An empty path stands for the library's own folder.
  explicit FormulaFolder(const std::string &path);

  /// The tables of a kind, the system's first.
  static std::vector<SString> Tables(const FormulaKind &kind);

  /// All formulas of a kind; none where there are no tables.
  std::vector<FormulaEntry> List(const FormulaKind &kind) const;

  /// The first formula of that name, code page. A candle pattern comes as an indicator of one line, which is
  /// that of its formula. Throws `Failure` if there is none.
  SIndex Read(const FormulaKind &kind, const SString &name) const;

  /// The user functions; none where there are no tables.
  SFunctionList Functions() const;

  /// Throws `Failure` if the folder has no table at all.
  void RequireAny() const;

  /// Throws `Failure` if a table of the kind is damaged. Tables that are not there are no fault.
  void CheckTables(const FormulaKind &kind) const;

 private:
  void RequireTables(const FormulaKind &kind) const;
};

}  // namespace trovenu::tool
