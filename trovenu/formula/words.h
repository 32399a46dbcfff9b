#pragma once

/// \file
/// The words of the formula language: the one list of all spellings, Korean and English.

#include <span>

#include "trovenu/formula/function_id.h"
#include "trovenu/platform/export.h"

namespace trovenu {

/// The families in which a word has its meaning. A name in a formula is looked up in the order Vector, Data,
/// Math, user functions, Time, Method; a Unit means something only as the argument of a time function.
enum class WordFamily : unsigned char {
  Vector,
  Data,
  Math,
  Time,
  Method,
  Unit,
  Operator,
  /// Known to `SCalc::ProcessVectorFunction`, but not to `SCalc::IsVectorFunction`.
  UnlistedVector,
};

/// One spelling.
struct Word {
  /// Code-page text; case of ASCII letters has no meaning.
  const char *text;
  WordFamily family;
  /// What it stands for; `FunctionId::None` for a word without a rule.
  FunctionId function;
};

/// All words, family by family.
TROVENU_API std::span<const Word> Words();

/// The word of that spelling in one family, without regard to ASCII case; null if there is none.
TROVENU_API const Word *FindWord(const char *text, WordFamily family);

/// The word of that spelling that a name in a formula stands for: of the families Vector, Data, Math, Time
/// and Method; null if there is none.
TROVENU_API const Word *FindName(const char *text);

}  // namespace trovenu
