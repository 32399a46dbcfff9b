#pragma once

#include <stdexcept>
#include <string>

namespace trovenu::tool {

/// Ends a command with exit code 1. The text is one line of UTF-8 for standard error; it names the file, the
/// line and what was expected.
class Failure : public std::runtime_error {
 public:
  explicit Failure(const std::string &text) : std::runtime_error(text) {}
};

/// A failure at a line of a text, "FILE:LINE: what". Lines count from 1.
inline Failure FailureAt(const std::string &file, int line, const std::string &what) {
  return Failure(file + ":" + std::to_string(line) + ": " + what);
}

}  // namespace trovenu::tool
