#pragma once

#include <cstddef>
#include <string>
#include <vector>

namespace trovenu::tool {

/// A part of a formula, with its place in the text in bytes: `text.substr(begin, end - begin)`.
struct Expression {
  enum class Kind {
    /// An operator, a sign, parentheses or a number.
    Plain,
    /// A name; with parentheses behind it, a call or a shift, whose arguments are the parts.
    Name,
    /// A name, "=" and the part.
    Assignment,
  };

  Kind kind = Kind::Plain;
  std::size_t begin = 0;
  std::size_t end = 0;
  /// The name, code page; empty for a plain one.
  std::string word;
  std::vector<Expression> parts;
};

/// The statements of a formula in code-page text, each as a tree, cut by the engine's own lexer. Of a faulty
/// formula it gives what it can read.
std::vector<Expression> ReadStatements(const std::string &formula);

}  // namespace trovenu::tool
