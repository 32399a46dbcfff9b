#pragma once

#include <CLI/CLI.hpp>
#include <string>

namespace trovenu::tool {

/// Checks an option for a whole number that is not below `least`. (What CLI11 has for it names the largest
/// double in its message.)
inline CLI::Validator AtLeast(long long least) {
  const auto fault = [least](const std::string &text) -> std::string {
    long long value = 0;
    if (CLI::detail::lexical_cast(text, value) && value >= least) return "";
    return "expected a whole number from " + std::to_string(least) + ", found " + text;
  };
  return {fault, ""};
}

}  // namespace trovenu::tool
