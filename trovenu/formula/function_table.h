#pragma once

#include "trovenu/formula/function.h"
#include "trovenu/platform/export.h"

namespace trovenu {

/// The row of a function, or null for an id without one (`None`, and what the lexer itself handles).
TROVENU_API const Function *FindFunction(FunctionId id);

}  // namespace trovenu
