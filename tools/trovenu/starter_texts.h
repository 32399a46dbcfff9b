#pragma once

#include <span>
#include <string_view>

namespace trovenu::tool {

/// A text of the starter set, as it stands in data/. The build puts them into the tool.
struct StarterText {
  std::string_view name;
  /// UTF-8.
  std::string_view text;
};

std::span<const StarterText> StarterTexts();

}  // namespace trovenu::tool
