#pragma once

#include <string>
#include <vector>

namespace trovenu::tool {

/// The round values (1, 2 or 5 times a power of ten apart) of a value axis.
struct RoundMarks {
  std::vector<double> values;
  double step = 1.0;

  /// A value of the axis with the decimals that the step needs and separators of thousands.
  std::string TextOf(double value) const;
};

/// At most `most` marks from `low` to `high`, both included.
RoundMarks RoundMarksBetween(double low, double high, int most);

/// The smallest round step that is not below `size`, which is above 0.
double RoundStep(double size);

/// A number as it is, with separators of thousands, rounded to ten digits that count, so that no noise of the
/// arithmetic shows.
std::string ShortNumber(double value);

/// A place on a date axis: its pixel and its date number.
struct DatePlace {
  double x;
  double date;
};

/// A label of a date axis, centred on `x` and at a tick at `tick`.
struct DateLabel {
  double tick;
  double x;
  std::string text;
};

/// Labels for as many of the places as fit between `left` and `right` without touching each other. The first
/// place has one; then those that open a year, a month, a day or an hour go before the rest. A place within
/// a day shows its time, the first one that is labelled of a day the date.
std::vector<DateLabel> DateLabels(const std::vector<DatePlace> &places, double left, double right,
                                  double fontSize);

}  // namespace trovenu::tool
