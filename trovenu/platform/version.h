#pragma once

#include "trovenu/platform/export.h"

namespace trovenu {

/// The version of the library that is linked, as "major.minor.patch". The text lives as long as the program.
TROVENU_API const char *Version();

}  // namespace trovenu
