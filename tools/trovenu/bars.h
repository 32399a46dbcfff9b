#pragma once

#include <array>
#include <string>
#include <string_view>

#include "tools/trovenu/bar_columns.h"
#include "trovenu/support/series.h"

namespace trovenu::tool {

/// The bars of one file, oldest first, dates ascending without repeats.
struct Bars {
  /// The file's name as failures give it.
  std::string name;
  /// The line of the header.
  int headerLine = 1;
  /// One series a field, all of the same size; a column that the file lacks is 0.0 throughout.
  std::array<SVector, kSeriesFields> series;
  /// Bit i is set if the file has a column for field i.
  unsigned present = 0;

  int Size() const { return series[static_cast<int>(BarField::Date)].GetSize(); }
  SVector &operator[](BarField field) { return series[static_cast<std::size_t>(field)]; }
  const SVector &operator[](BarField field) const { return series[static_cast<std::size_t>(field)]; }

  /// Gives the series to an engine, an indicator or a back-test, in the order of its `SetVariable`.
  template <class Target>
  void BindTo(Target &target) {
    Bars &bars = *this;
    target.SetVariable(bars[BarField::Close], bars[BarField::Open], bars[BarField::High], bars[BarField::Low],
                       bars[BarField::Volume], bars[BarField::Date], bars[BarField::OpenInterest],
                       bars[BarField::Amount]);
  }
};

/// Reads a bars file, or standard input for "-". A header names the columns in any order; the file is UTF-8
/// or in the Korean code page, its separator comma, semicolon or tab. Dates become date numbers: yyyymmdd,
/// with a time yyyymmddhhmmss. Throws `Failure`, which names file, line and column, on a number that is none,
/// a date that is none or does not come after the one before, a row of another length than the header, or a
/// file without bars.
Bars ReadBars(const std::string &path);

/// The same for a text in memory; `name` stands for it in failures.
Bars ReadBarsText(const std::string &name, std::string_view text);

}  // namespace trovenu::tool
