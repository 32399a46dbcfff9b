#pragma once

#include <optional>
#include <string>

#include "tools/trovenu/bars.h"
#include "trovenu/formula/calc.h"

namespace trovenu::tool {

/// Why and where a formula is faulty. All text is UTF-8.
struct FormulaFault {
  std::string message;
  /// The line of the formula in which reading stopped, blanks for its tabs.
  std::string line;
  /// Number of that line, from 1.
  int lineNumber = 1;
  /// Columns of the terminal in front of the place, which may be the end of the line.
  std::size_t column = 0;

  /// The fault in one line: message, line number and column from 1.
  std::string OneLine() const;
};

/// Evaluates formulas in UTF-8 one after the other on one engine, so that a variable of one is known to the
/// next.
class FormulaEngine {
 public:
  /// The bars must outlive the engine.
  explicit FormulaEngine(Bars &bars);

  /// The formula's series; `fault` is set if it is faulty. Throws `Failure` for a text outside the code page,
  /// and if the formula has read a column that the bars lack.
  SVector Evaluate(const std::string &formula, std::optional<FormulaFault> &fault);

  /// The same for a caller that takes no fault: throws `Failure`.
  SVector Evaluate(const std::string &formula);

 private:
  void CheckColumns(const std::string &formula) const;

  Bars &bars_;
  SCalc calc_;
};

}  // namespace trovenu::tool
