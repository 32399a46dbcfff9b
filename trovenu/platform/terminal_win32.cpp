#ifndef NOMINMAX
#define NOMINMAX
#endif
#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#include <windows.h>

#include "trovenu/platform/terminal.h"

namespace trovenu {

bool ErrorsGoToTerminal() { return GetFileType(GetStdHandle(STD_ERROR_HANDLE)) == FILE_TYPE_CHAR; }

bool InputIsTerminal() { return GetFileType(GetStdHandle(STD_INPUT_HANDLE)) == FILE_TYPE_CHAR; }

// A read of the console ends by itself.
void LetSignalEndReading(int /*signal*/) {}

}  // namespace trovenu
