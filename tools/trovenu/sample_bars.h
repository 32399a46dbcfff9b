#pragma once

#include "tools/trovenu/bars.h"

namespace trovenu::tool {

/// A few sessions of made-up one-minute bars with all columns, for commands that have to run a formula
/// without a file.
Bars SampleBars();

}  // namespace trovenu::tool
