#pragma once

#include <array>
#include <span>
#include <string>
#include <vector>

#include "tools/trovenu/bars.h"
#include "tools/trovenu/table.h"
#include "trovenu/indicator/index.h"

namespace trovenu::tool {

class Picture;
struct ChartResult;

/// A variable of a calculator, in its order.
struct ChartParameter {
  enum class Kind { Whole, Real, Result };

  /// Its name in headings and pictures. A `Result` is only written by the calculator.
  const char *name;
  Kind kind = Kind::Real;
  double least = 0.0;
};

/// A column of the result, from the series of that number.
struct ChartColumn {
  enum class Kind { Number, NumberUnlessZero, Letter };

  const char *heading;
  int series;
  Kind kind = Kind::Number;
};

/// A chart without a time axis: what the command knows of it.
struct ChartType {
  /// Where the rows stand among the bars.
  enum class Place { OwnIndex, PositionSeries, None };

  /// What the command line calls it.
  const char *name;
  const char *title;
  /// What a row is, in the plural.
  const char *rows;
  /// The price chart type whose options are the parameters.
  int priceType;
  std::span<const ChartParameter> parameters;
  /// Bit i is set if the chart reads field i of a bar.
  unsigned fields;
  Place place;
  /// The series that is 0 where its index holds no row, or `kEveryIndex`.
  int rowSeries;
  std::span<const ChartColumn> columns;
  void (*calculate)(SIndex &chart, int automatic, int bars);
  /// Draws the rows, of which there is at least one.
  void (*draw)(const ChartResult &result, Picture &picture);

  static constexpr int kEveryIndex = -1;

  /// How many parameters the user may give.
  std::size_t GivenParameters() const;
};

/// All types, in the order of the help text.
std::span<const ChartType> ChartTypes();

/// The letter of a code of the market profile: A to Z, a to z, then A2 and so on.
std::string ProfileLetter(double code);

struct ChartSettings {
  bool automatic = false;
  /// The first parameters; the others are the defaults of the chart's settings.
  std::vector<std::string> parameters;
  double tickSize = 0.0;
};

/// What a calculator has made of the bars.
struct ChartResult {
  const ChartType &type;
  const Bars &bars;
  std::array<SVector, kExpressions> series;
  /// The variables after the run.
  std::vector<double> parameters;
  /// The index of each row in the series.
  std::vector<int> rows;

  int Rows() const { return static_cast<int>(rows.size()); }
  double At(int slot, int row) const;
  /// Position of the row's bar.
  int BarOf(int row) const;
  double DateOf(int row) const;
  /// "reversal 3, box 2"; empty without parameters.
  std::string ParametersText() const;
};

/// Calculates the chart. Throws `Failure` if the bars lack a column that it reads.
ChartResult CalculateChart(const ChartType &type, const Bars &bars, const ChartSettings &settings);

/// The rows with their dates, and the parameters in each.
Table ChartTable(const ChartResult &result);

}  // namespace trovenu::tool
