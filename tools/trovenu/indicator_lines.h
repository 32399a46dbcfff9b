#pragma once

/// \file
/// The lines of an indicator: made from an option's formulas or a table's, with values for the variables, and
/// judged by evaluating them.

#include <string>
#include <vector>

#include "tools/trovenu/bars.h"
#include "trovenu/formula/user_function_list.h"
#include "trovenu/indicator/index.h"

namespace trovenu::tool {

/// An indicator whose lines are these formulas in UTF-8. Throws `Failure` for a text outside the code page.
SIndex IndicatorOf(const std::vector<std::string> &formulas);

/// Gives variables other values: each setting is "VAR=VALUE" in UTF-8. Throws `Failure` for a variable that
/// the indicator does not have, with those that it has.
void SetVariables(SIndex &indicator, const std::vector<std::string> &settings);

/// Throws `Failure` if a formula of the indicator is faulty on these bars, or reads a column that they lack.
/// Fills in the variables on the way.
void RequireSound(SIndex &indicator, Bars &bars, SFunctionList &functions);

/// The name of a line in UTF-8, with values in place of variables; the formula for a line without a name.
std::string LineName(const SIndex &indicator, int line);

/// The indicator's name and kind for a message, as `indicator "RSI"`.
std::string ShownIndicator(const SIndex &indicator);

}  // namespace trovenu::tool
