#pragma once

#include "trovenu/platform/export.h"
#include "trovenu/support/text.h"

/// \file
/// Where the formula tables are. Kinds are those of indicators: 0 indicator, 1 condition, 2 pattern, 3
/// trading system, 4 user function. The names of another kind are empty.

namespace trovenu {

/// The folder of the indicator tables, with a separator at its end. That of a fresh program is "Index" in the
/// working folder.
TROVENU_API SString getIndexDir();

/// Sets the folder of the indicator tables, with or without a separator at its end; null or an empty path
/// sets that of a fresh program. To be called while no other thread uses the library.
TROVENU_API void setIndexDir(const char *path);

/// Whole path of the table that is shipped with the system.
TROVENU_API SString getIndexDBFileName(int kind);

/// Whole path of the table of what the user made.
TROVENU_API SString getUserDBFileName(int kind);

/// Extension, without a point, that both tables of a kind have.
TROVENU_API SString getIndexDBExt(int kind);

}  // namespace trovenu
