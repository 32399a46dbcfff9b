#pragma once

/// \file
/// One condition on the bars of many symbols.

#include <string>
#include <vector>

#include "tools/trovenu/symbol_files.h"
#include "trovenu/formula/user_function_list.h"
#include "trovenu/indicator/index.h"

namespace trovenu::tool {

/// What became of one symbol.
struct ScreenResult {
  enum class Outcome { NotTrue, True, TooFewBars, Faulty };
  Outcome outcome = Outcome::NotTrue;
  /// The newest bar on which the condition is true: its date number and its close, NaN if the file has none.
  double date = 0.0;
  double close = 0.0;
  /// The fault in one line.
  std::string fault;
};

/// A condition, made ready for all symbols. Texts are UTF-8.
struct Screen {
  /// Its formula stands in slot 0, with the values of its variables filled in.
  SIndex condition;
  /// The formula in UTF-8.
  std::string formula;
  SFunctionList functions;
  /// Bars that the formula needs; a symbol with fewer is left out.
  int leastBars = 0;
  /// Why the formula runs on the direct path; empty if it runs compiled.
  std::string directReason;
  /// The condition is looked at on this many of the newest bars.
  int within = 1;
};

/// Fills in `formula`, `leastBars` and `directReason`. Throws `Failure` if the formula is faulty.
void Prepare(Screen &screen);

/// Runs the condition over the files, on `jobs` threads, and gives what became of each.
std::vector<ScreenResult> RunScreen(const Screen &screen, const std::vector<SymbolFile> &files, int jobs);

}  // namespace trovenu::tool
