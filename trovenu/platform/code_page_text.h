#pragma once

#include <cstddef>
#include <string_view>

#include "trovenu/platform/export.h"

// Bytes and characters of text in the Korean code page with its extension (CP949). A character is one byte,
// or a lead byte and a trail byte. Everything here is independent of the locale.

namespace trovenu {

/// True for a byte from 161 to 254, the range of both bytes of a Korean character. Looks at one byte alone.
constexpr bool isHangul(char c) {
  const auto byte = static_cast<unsigned char>(c);
  return byte >= 161 && byte <= 254;
}

/// True for A to Z and a to z, whatever the locale.
constexpr bool IsLetterAscii(char c) { return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z'); }

/// True for 0 to 9, whatever the locale.
constexpr bool IsDigitAscii(char c) { return c >= '0' && c <= '9'; }

/// The small letter of A to Z; every other byte as it is.
constexpr char ToLowerAscii(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

/// The capital letter of a to z; every other byte as it is.
constexpr char ToUpperAscii(char c) { return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c; }

/// True for the first byte of a two-byte character of the code page with its extension.
constexpr bool IsLeadByte(char c) {
  const auto byte = static_cast<unsigned char>(c);
  return byte >= 0x81 && byte <= 0xFE;
}

/// True for a byte that may stand second in a two-byte character. Letters are among them.
constexpr bool IsTrailByte(char c) { return IsLetterAscii(c) || IsLeadByte(c); }

/// Length of the character at the front of `text`: 2 for a whole two-byte character, else 1, and 0 for an
/// empty text.
constexpr std::size_t CharacterLength(std::string_view text) {
  if (text.size() < 2) return text.size();
  return IsLeadByte(text[0]) && IsTrailByte(text[1]) ? 2 : 1;
}

/// Position of the first `what` in `text` at or after the character boundary `from`, or npos. Matches whole
/// characters alone, never the second byte of one with the first byte of the next. An empty `what` is found
/// at `from` if that lies within the text.
TROVENU_API std::size_t FindText(std::string_view text, std::string_view what, std::size_t from = 0);

/// Compares two texts byte by byte as unsigned values: below, equal to or above 0. Null counts as empty.
/// Letters A to Z count as small ones, except where they are the second byte of a two-byte character.
TROVENU_API int CompareNoCase(const char *left, const char *right);

/// True if `CompareNoCase` finds no difference.
TROVENU_API bool EqualNoCase(const char *left, const char *right);

/// The largest length of at most `bytes` that ends before the final zero and splits no two-byte character.
/// Null gives 0.
TROVENU_API std::size_t CutAtCharacter(const char *text, std::size_t bytes);

}  // namespace trovenu
