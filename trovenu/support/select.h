#pragma once

/// \file
/// A choice between two numbers that takes the same time whichever way it falls.

#include <bit>
#include <cstdint>

namespace trovenu {

/// `whenTrue` or `whenFalse`, bit for bit. For loops whose choices follow the market: a branch there is
/// guessed wrongly every few bars, which costs more than working out both sides.
inline double Select(bool condition, double whenTrue, double whenFalse) {
  const std::uint64_t mask = 0 - static_cast<std::uint64_t>(condition);
  return std::bit_cast<double>((std::bit_cast<std::uint64_t>(whenTrue) & mask) |
                               (std::bit_cast<std::uint64_t>(whenFalse) & ~mask));
}

}  // namespace trovenu
