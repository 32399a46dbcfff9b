#pragma once

#include <string>

#include "trovenu/indicator/index.h"

namespace trovenu::tool {

/// A formula of the tables in the notation of data/indicators.txt, UTF-8. A candle pattern is given with its
/// `IndexType` as kind 30.
std::string FormulaText(const SIndex &entry);

}  // namespace trovenu::tool
