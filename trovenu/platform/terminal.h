#pragma once

#include "trovenu/platform/export.h"

/// \file
/// What tools ask about the terminal that they run on.

namespace trovenu {

/// True if standard error is shown on a terminal.
TROVENU_API bool ErrorsGoToTerminal();

/// True if standard input is typed on a terminal.
TROVENU_API bool InputIsTerminal();

/// From here on a signal that has a handler ends a read from standard input, which then gives nothing.
TROVENU_API void LetSignalEndReading(int signal);

}  // namespace trovenu
