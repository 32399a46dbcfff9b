#ifndef NOMINMAX
#define NOMINMAX
#endif
#ifndef WIN32_LEAN_AND_MEAN
#define WIN32_LEAN_AND_MEAN
#endif
#include <windows.h>

#include <fcntl.h>
#include <io.h>

#include <cstdio>
#include <initializer_list>

#include "trovenu/platform/terminal.h"

namespace trovenu {

void PrepareStandardStreams() {
  for (std::FILE *stream : {stdin, stdout, stderr}) _setmode(_fileno(stream), _O_BINARY);
  SetConsoleOutputCP(CP_UTF8);
  // Escape sequences, of which the line of progress has some.
  constexpr DWORD kSequences = 4;
  DWORD mode = 0;
  const HANDLE errors = GetStdHandle(STD_ERROR_HANDLE);
  if (GetConsoleMode(errors, &mode) != FALSE) SetConsoleMode(errors, mode | kSequences);
}

bool ErrorsGoToTerminal() { return GetFileType(GetStdHandle(STD_ERROR_HANDLE)) == FILE_TYPE_CHAR; }

bool InputIsTerminal() { return GetFileType(GetStdHandle(STD_INPUT_HANDLE)) == FILE_TYPE_CHAR; }

// A read of the console ends by itself.
void LetSignalEndReading(int /*signal*/) {}

}  // namespace trovenu
