#pragma once

/// \file
/// What a finished back-test shows.

#include <string>

#include "tools/trovenu/bars.h"
#include "tools/trovenu/table.h"
#include "trovenu/backtest/simulation.h"

namespace trovenu::tool {

/// One figure a row, one column for each group of trades.
Table SummaryTable(const SSimulation &simulation);

/// What was tested, for a person: a few lines above the figures.
std::string RunText(const SSimulation &simulation);

/// The same as members of a JSON object, without its brackets.
std::string RunJson(const SSimulation &simulation);

/// One trade a row, in the order of their entries.
Table TradeTable(const SSimulation &simulation);

/// The equity of the long side, the short side and both on all bars.
Table EquityTable(SSimulation &simulation, const Bars &bars);

}  // namespace trovenu::tool
