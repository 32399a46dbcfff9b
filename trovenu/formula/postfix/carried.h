#pragma once

#include "trovenu/platform/export.h"
#include "trovenu/support/text.h"

namespace trovenu {

class SFunctionList;

/// Why the compiled path can't carry a formula: why its program could give other values than
/// `SCalc::Calculate`.
struct TROVENU_API NotCarried {
  /// An English clause to stand behind the word, or alone; null if the formula can be left to a program.
  const char *reason = nullptr;
  /// The word that it is about as the text writes it, code page; may be empty.
  SString word;
};

/// Reads a formula as the direct path does and follows what its program will do, by the tables of both paths.
/// It is on the safe side: some formulas are refused that would give the same values. A faulty formula is
/// refused, too. The functions are those that the formula may call, null for none.
TROVENU_API NotCarried FindNotCarried(const char *text, SFunctionList *functions);

}  // namespace trovenu
