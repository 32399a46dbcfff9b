#pragma once

#include <cstdint>

/// \file
/// What holds for every formula, tried on many; differences are test failures. The slow tests try more.

namespace trovenu::tests {

/// The tail of a formula agrees with the whole, bit for bit, from every bar on that a live update may redo.
void ExpectTailsAgree(std::uint32_t seed, int formulas, int bars, int firstBar);

/// An evaluation changes none of the bound series, and a second one gives the same bits.
void ExpectRepeatable(std::uint32_t seed, int formulas, int bars);

/// Any text comes to its end, whatever its bytes: token by token, in both forms of `Calculate`, compiled and
/// run.
void ExpectAnyTextEnds(std::uint32_t seed, int texts);

}  // namespace trovenu::tests
