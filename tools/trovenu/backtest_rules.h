#pragma once

#include <string>
#include <vector>

#include "tools/trovenu/bars.h"
#include "tools/trovenu/formula_folder.h"

namespace trovenu::tool {

/// Where the rules of a back-test come from: a trading system by name, or the four formulas.
struct RuleOptions {
  std::string system;
  std::string formulas[4];
  std::vector<std::string> settings;
};

/// Long entry, long exit, short entry and short exit as a trading system, ready to be calculated on the bars.
/// A formula that is left out is "0", and the settings of formulas declare their variables. A system is
/// looked for in the tables of the folder, or in the starter set where it has none. Throws `Failure` for a
/// system that is not there and for a faulty rule.
SIndex RulesOf(const RuleOptions &options, const FormulaFolder &folder, Bars &bars, SFunctionList &functions);

}  // namespace trovenu::tool
