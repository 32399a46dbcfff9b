#pragma once

#include "trovenu/platform/export.h"

/// \file
/// What the library needs of the operating system. The calls themselves stand in platform_posix.cpp and
/// platform_win32.cpp alone. Paths are in the encoding of the system's 8-bit calls and go there as they are.

namespace trovenu {

/// Nonzero if there is a file of this name, 0 if there is none or a folder bears it. Null counts as no name.
TROVENU_API int FileExist(const char *path);

}  // namespace trovenu
