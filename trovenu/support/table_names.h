#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <unordered_set>

namespace trovenu {

/// The names of columns in a table head, which have up to 10 bytes and differ: short forms of longer names.
class TableNames {
 public:
  static constexpr std::size_t kLongest = 10;
  /// What a name may have behind the bytes that it shares with its short form.
  static constexpr std::size_t kLongestRest = 13;

  /// Takes a name that fits. False if it is too long or taken.
  bool Take(std::string_view name);

  /// Takes a short form of `name`: its begin, with its digits or else some number at the end. Empty if all
  /// are taken.
  std::string TakeShort(std::string_view name);

  /// Takes a name for the column that goes on with the column `shortName` as its `number`-th, from 1. Empty
  /// if all are taken.
  std::string TakeContinuation(std::string_view shortName, std::size_t number);

 private:
  std::unordered_set<std::string> taken_;
};

}  // namespace trovenu
