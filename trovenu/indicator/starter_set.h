#pragma once

/// \file
/// Formulas as text, from which a tool fills the formula tables. The notation is told at the head of
/// data/indicators.txt.

#include <cstddef>
#include <span>
#include <string>
#include <string_view>
#include <vector>

#include "trovenu/indicator/index.h"

namespace trovenu {

class FormulaField;

/// A word of the notation that gives a field of the record by itself.
struct StarterField {
  const char *word;
  /// Its name in the table; the number of the line or formula comes behind it where it belongs to one.
  const char *field;
  bool isOfFormula;
};

/// All such words.
TROVENU_API std::span<const StarterField> StarterFields();

/// The field that a word gives to formula `slot` of a kind; null if records of that kind do not keep it.
TROVENU_API const FormulaField *FindStarterField(const StarterField &word, int kind, int slot);

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
