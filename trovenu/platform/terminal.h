#pragma once

#include "trovenu/platform/export.h"

/// \file
/// What tools need of the terminal that they run on.

namespace trovenu {

/// Standard input, output and error carry bytes as they are, and a console shows UTF-8. To be called first of
/// all; without it, Windows changes line ends.
TROVENU_API void PrepareStandardStreams();

/// True if standard error is shown on a terminal.
TROVENU_API bool ErrorsGoToTerminal();

/// True if standard input is typed on a terminal.
TROVENU_API bool InputIsTerminal();

/// From here on a signal that has a handler ends a read from standard input, which then gives nothing.
TROVENU_API void LetSignalEndReading(int signal);

}  // namespace trovenu
