#pragma once

#include "fuzz/input.h"
#include "trovenu/formula/user_function_list.h"

namespace trovenu::fuzz {

/// The user functions that formulas of the targets may call, with the parameters a and b.
inline constexpr const char *kFunctionNames[] = {"f0", "f1", "f2"};

/// The functions with the next texts of the input, each of at most `most` bytes, as their bodies.
SFunctionList ReadFunctions(Input &input, std::size_t most);

/// Whether a text of the language may become a series that is much longer than the bars.
bool MayLengthen(std::string_view formula);

}  // namespace trovenu::fuzz
