#pragma once

#include <string>

namespace trovenu::tool {

/// The name that stands for standard input.
inline constexpr const char *kStandardInput = "-";

/// The file's name as messages give it; "standard input" for `kStandardInput`.
std::string ShownName(const std::string &path);

/// The whole file byte for byte; standard input for `kStandardInput`. Throws `Failure` if it can't be read.
std::string ReadWholeFile(const std::string &path);

}  // namespace trovenu::tool
