#pragma once

#include <string>
#include <string_view>

#include "trovenu/platform/export.h"

// Conversion between the Korean code page, the whole of it with its extension, and Unicode, by the converter
// of the platform. The library itself handles code-page text alone: these are for the boundary.
//
// `ok` may be null. It becomes true if every character could be converted, and false otherwise.

namespace trovenu {

/// The code-page text of a UTF-8 text. A character that the code page lacks, and bytes that are no character,
/// become one '?' each.
TROVENU_API std::string CodePageFromUtf8(std::string_view text, bool *ok);

/// The UTF-8 text of a code-page text. What is no character of the code page becomes U+FFFD.
TROVENU_API std::string Utf8FromCodePage(std::string_view text, bool *ok);

/// The code-page text of a wide text, as `CodePageFromUtf8`.
TROVENU_API std::string CodePageFromWide(std::wstring_view text, bool *ok);

}  // namespace trovenu
