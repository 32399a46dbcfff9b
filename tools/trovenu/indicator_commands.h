#pragma once

#include "tools/trovenu/command.h"

namespace trovenu::tool {

/// \name Commands of `trovenu indicator`
/// @{
Command AddIndicatorRun(CLI::App &group);
Command AddIndicatorList(CLI::App &group);
Command AddIndicatorShow(CLI::App &group);
Command AddIndicatorAdd(CLI::App &group);
Command AddIndicatorRemove(CLI::App &group);
Command AddIndicatorInstall(CLI::App &group);
/// @}

}  // namespace trovenu::tool
