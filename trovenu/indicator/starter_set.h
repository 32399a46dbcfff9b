#pragma once

/// \file
/// Formulas as text, from which a tool fills the formula tables. The notation is told at the head of
/// data/indicators.txt.

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "trovenu/indicator/index.h"

namespace trovenu {

/// Why a text can't be read.
struct StarterFault {
  /// From 1; 0 without a fault.
  int line = 0;
  /// What was expected, for the person who wrote the text.
  std::string message;
};

/// Reads the entries of a text in the code page and adds them to `entries`. A candle pattern becomes an
/// object of kind 30, whose `Expression[0]` is its formula. False at the first fault, with `entries` as they
/// were; `fault` may be null.
TROVENU_API bool ParseStarterSet(std::string_view text, std::vector<SIndex> *entries, StarterFault *fault);

/// Writes an entry to the system's table of its kind, or to the table of candle patterns: in place of the
/// record of its name, or else as a new one. A table that is not there is made, the user's too. False if that
/// can't be done.
TROVENU_API bool WriteStarterEntry(SIndex &entry);

}  // namespace trovenu
