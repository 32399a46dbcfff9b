#pragma once

#include <filesystem>
#include <string>

#include "tools/trovenu/terminal_text.h"

namespace trovenu::tool {

/// The path that a text names, in UTF-8; the standard library alone would not take it for that on Windows. A
/// text that is no UTF-8 is left to it.
inline std::filesystem::path PathOf(const std::string &text) {
  if (!IsUtf8(text)) return text;
  return std::u8string(text.begin(), text.end());
}

/// The path as text, in UTF-8.
inline std::string TextOf(const std::filesystem::path &path) {
  const std::u8string text = path.u8string();
  return {text.begin(), text.end()};
}

}  // namespace trovenu::tool
