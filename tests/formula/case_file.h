#pragma once

/// \file
/// Case files: formulas with their bars and the values that they must give, worked out by hand.
///
///     # a touch counts as the state before the crossing
///     formula  crossup(c, o)
///     bars     touch_then_cross
///     start    1
///     values   - 0 1 0
///
/// A case ends with an empty line; comments before it carry its derivation. Keys:
///
///   formula    the text; each further line is another spelling that must give the same
///   bars       a set of bars.txt
///   close, open, high, low, volume, date, openinterest, amount
///              the elements of that series, in place of those of the set; a series without any is empty
///   from       the start index of all series, 0 without it
///   start      the start index of the result, or none for a result without a valid bar
///   values     the elements of the result from the start index on, with a "-" for each bar before it; a
///              number, or two with a "/" between them for their quotient
///   size       the number of elements; without it, the number of values
///   full       1 if the call needs all bars; without it, 0
///   tolerance  largest relative difference; without it, every number must agree exactly
///   message    the first error; the result then has no valid bar, and neither start nor values are given

#include <istream>
#include <map>
#include <string>
#include <vector>

#include "tests/formula/bars.h"

namespace trovenu::tests {

using BarSets = std::map<std::string, Bars>;

struct Case {
  int line = 0;
  std::vector<std::string> formulas;
  Bars bars;
  int start = kNoValidBar;
  int size = -1;
  bool full = false;
  double tolerance = 0.0;
  std::string message;
  /// From the start index on.
  std::vector<double> values;
};

struct CaseFile {
  std::vector<Case> cases;
  /// What could not be understood, as "line: text".
  std::vector<std::string> problems;
};

/// The sets of a file like bars.txt: "bars NAME" and its series, then an empty line. Problems are test
/// failures.
BarSets ReadBarSets(std::istream &in);

/// Reads a case file. Its texts are UTF-8.
CaseFile ReadCases(std::istream &in, const BarSets &sets);

}  // namespace trovenu::tests
