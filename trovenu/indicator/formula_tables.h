#pragma once

/// \file
/// Formula tables as a whole, for hosts and tools: making them, listing them, and the tables of candle
/// patterns, which `SIndex` does not read itself.

#include <vector>

#include "trovenu/platform/export.h"
#include "trovenu/support/text.h"

namespace trovenu {

class SFunctionList;
class SIndex;

/// Makes an empty table with the fields of a kind, 0 to 4 or 30 for candle patterns, in place of a file that
/// may be there. The folder must be there. False for another kind and if the file can't be written.
TROVENU_API bool CreateFormulaTable(int kind, const char *path);

/// Makes those tables of a kind, 0 to 4, that are not there yet: the system's and the user's, at the places
/// of `getIndexDBFileName` and `getUserDBFileName`. True if both are there afterwards.
TROVENU_API bool CreateFormulaTables(int kind);

/// The names of the formulas in a table, in its order; empty if there is no such table.
TROVENU_API std::vector<SString> ListFormulas(const char *path);

/// \name Candle patterns
/// They live in a table of their own, which has no kind: the fields of a user function with values of the
/// variables. The order of the table is the order of the scan, in which a later pattern goes before an
/// earlier one.
/// @{

/// The table of candle patterns in the folder of the indicator tables.
TROVENU_API SString GetCandleTablePath();
/// Replaces the list by the patterns of a table. 1 when at least one was read, else 0.
TROVENU_API int ReadCandlePatterns(const char *path, SFunctionList &list);
/// Writes the name, the variables, the first formula and the texts of `pattern` to the record of its name, or
/// to a new one at the end. False, with the table as it was, if that can't be done.
TROVENU_API bool WriteCandlePattern(const char *path, const SIndex &pattern);
/// @}

}  // namespace trovenu
