#pragma once

/// \file
/// Cases of the non-time charts, one word of meaning and its values a line:
///
///     # how the result comes about
///     chart     CalcPnF
///     closes    100 103 104
///     variables 3 1
///     reads     3 1
///     series 1  2
///
/// Also `start` (start index of close), `volumes` (1 each), `dates` (20240101 and on), `tick` (1), `range`
/// (all bars), `automatic 1`, `runs`, and of the result `reads` (the variables afterwards), `starts N` (start
/// index of series N). `-` is an empty series or text. Series that are not named must be empty, but the first
/// one, which holds the date of each position.

#include <istream>
#include <string>
#include <vector>

#include "tests/support/series_tools.h"
#include "trovenu/indicator/index.h"
#include "trovenu/price/price_data_list.h"

namespace trovenu::tests {

/// An indicator bound to bars made of a list of closes.
struct Chart {
  explicit Chart(const std::vector<double> &closes, int start = 0, double tick = 1.0);
  SPriceData &Data() { return list[0]; }
  /// Runs the calculator of that name, over the bars from `first` to `last` if it takes a range.
  void Run(const std::string &calculator, int automatic = 0, int first = 0, int last = 0x7fffffff);

  SPriceDataList list;
  SIndex index;
};

/// The calculators by name.
const std::vector<std::string> &Calculators();

/// Runs the cases of a text; reports each difference as a failure at its line of `file`.
int RunChartCases(std::istream &in, const std::string &file);

}  // namespace trovenu::tests
