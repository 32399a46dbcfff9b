#pragma once

#include <string>

#include "trovenu/platform/export.h"

namespace trovenu {

/// Gives the deletion mark to all records of a table whose field has exactly this value. They stay in the
/// file with all their values. Returns how many have been marked: fewer than there are, or none, if the table
/// can't be written.
TROVENU_API int DeleteRecords(const std::string &path, const char *field, const char *value);

}  // namespace trovenu
