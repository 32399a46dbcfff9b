#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

// How names and values are written in INI text. What would not come back as it is stands between double
// quotes, with "%" and two hexadecimal digits for a control character or a "%".

namespace trovenu {

/// What an editor may put before a text.
inline constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

/// The parts of a line "key = value".
struct IniKeyLine {
  std::string key;
  std::size_t valueAt;  // where the value stands in the line, its quotes included
  std::size_t valueSize;
};

/// The key line that `line`, without its line end, is; nothing if it is none.
std::optional<IniKeyLine> ReadIniKey(std::string_view line);

/// The value that stands in a key line as `written`.
std::string ReadIniValue(std::string_view written);

/// The name in a line "[name]"; nothing if it is none. A missing bracket at the end is overlooked.
std::optional<std::string> ReadIniSection(std::string_view line);

/// \name Writing, without a line end
/// @{
std::string IniSectionHead(std::string_view name);
std::string IniKey(std::string_view key);
std::string IniValue(std::string_view value);
/// @}

}  // namespace trovenu
