#pragma once

#include <cstddef>

#include "trovenu/platform/export.h"

// Edits of texts in the caller's buffer. Searching goes by whole characters of the code page. A null text
// counts as empty, and a null buffer stays unwritten and comes back as it is.

namespace trovenu {

/// Remove every blank (character 32), every `what`, every control character from 9 to 13, and return the
/// buffer. An empty `what` removes nothing; what a removal brings together is not searched again.
TROVENU_API char *DeleteAllSpace(char *s);
TROVENU_API char *DeleteString(char *s, const char *what);
TROVENU_API char *DeleteEscapeCharacter(char *s);

/// The first `what` in `s`, or null. An empty `what` is found at once.
TROVENU_API char *FindString(char *s, const char *what);

/// Moves the text before the first `key` from `s` to `out` and drops the key. Nonzero if there was one;
/// otherwise the whole text moves, `s` becomes empty and the result is 0. An empty key is never found. `out`
/// needs room for the whole text and its final zero, and may not overlap `s`.
TROVENU_API int CutStringUntilKey(char *s, char *out, const char *key);

/// Length of the name at the front of `s`: a letter or a byte of a Korean character, then those, digits and
/// "_". 0 if none begins there.
TROVENU_API std::size_t NameLength(const char *s);

/// Copies the name at the front of `s` to `out`, with a final zero, and returns `out`. `out` needs room for
/// `NameLength(s)` bytes and the zero.
TROVENU_API char *GetName(const char *s, char *out);

}  // namespace trovenu
