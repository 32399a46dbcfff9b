#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace trovenu::tool {

/// True for well-formed UTF-8.
bool IsUtf8(std::string_view text);

/// The text as UTF-8: as it is if it is well-formed, else read as the Korean code page. Bytes that are
/// neither become "?".
std::string ToUtf8(std::string_view text);

/// Columns that a UTF-8 text takes on a terminal: two for Korean and other wide characters, none for marks
/// that join the character before.
std::size_t DisplayWidth(std::string_view utf8);

/// The text in double quotes for a message: UTF-8, control characters as "?", cut after 40 columns.
std::string Quoted(std::string_view text);

/// The text with every run of blanks and line breaks as one blank, and none at the ends.
std::string OneLine(std::string_view text);

/// The text without blanks, tabs and line breaks at its ends.
std::string_view TrimBlanks(std::string_view text);

}  // namespace trovenu::tool
