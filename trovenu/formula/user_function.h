#pragma once

#include "trovenu/platform/export.h"
#include "trovenu/support/text.h"

namespace trovenu {

/// Parameters of a user function.
inline constexpr int kParameters = 10;

/// A named formula with up to ten named parameters; in a candle table, one pattern with its variables.
struct TROVENU_API SFunction {
  SFunction() = default;
  SFunction(const SFunction &) = default;
  SFunction &operator=(const SFunction &) = default;
  virtual ~SFunction() = default;

  /// The name by which formulas call it, whatever its case.
  SString IndexName;
  /// Names of the parameters in the order of the call; the first empty one ends the list.
  SString VarName[kParameters];
  /// Default values: a call doesn't use them, a candle pattern does.
  SString VarValue[kParameters];
  /// The body, one formula text.
  SString Expression;
};

}  // namespace trovenu
