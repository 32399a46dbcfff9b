#pragma once

#include <optional>
#include <string>

#include "tools/trovenu/bars.h"
#include "trovenu/formula/calc.h"

namespace trovenu::tool {

/// A place in a formula. All text is UTF-8.
struct FormulaPlace {
  /// The line of the formula, blanks for its tabs.
  std::string line;
  /// Number of that line, from 1.
  int lineNumber = 1;
  /// Columns of the terminal in front of the place, which may be the end of the line.
  std::size_t column = 0;

  /// "(line 1, column 1)", from 1.
  std::string InWords() const;
  /// The line and, below it, a caret under the place.
  std::string Shown() const;
};

/// Where byte `position` of the formula's code-page text stands in it. `formula` is the same in UTF-8.
FormulaPlace PlaceIn(const std::string &formula, const std::string &codePage, std::size_t position);

/// The formula in the code page. Throws `Failure` for a text outside it.
std::string FormulaInCodePage(const std::string &formula);

/// Why and where a formula is faulty.
struct FormulaFault {
  std::string message;
  /// Where reading stopped.
  FormulaPlace place;

  /// The fault in one line: message and place.
  std::string OneLine() const;
};

/// Throws `Failure` if the bars lack one of the columns that the formula has read, which are bits in the
/// order of `SCalc::SetVariable`.
void RequireColumns(const Bars &bars, unsigned columnsRead, const std::string &formula);

/// Evaluates formulas in UTF-8 one after the other on one engine, so that a variable of one is known to the
/// next.
class FormulaEngine {
 public:
  /// The bars must outlive the engine, and so must the user functions, null for none.
  explicit FormulaEngine(Bars &bars, SFunctionList *functions = nullptr);

  /// The formula's series; `fault` is set if it is faulty. Throws `Failure` for a text outside the code page,
  /// and if the formula has read a column that the bars lack.
  SVector Evaluate(const std::string &formula, std::optional<FormulaFault> &fault);

  /// The same for a caller that takes no fault: throws `Failure`.
  SVector Evaluate(const std::string &formula);

 private:
  Bars &bars_;
  SCalc calc_;
};

}  // namespace trovenu::tool
