#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "tools/trovenu/axis_marks.h"
#include "tools/trovenu/bars.h"
#include "tools/trovenu/chart_type.h"
#include "tools/trovenu/svg.h"

namespace trovenu::tool {

/// Where a chart draws, in pixels.
struct Area {
  double left;
  double top;
  double right;
  double bottom;

  double Width() const { return right - left; }
  double Height() const { return bottom - top; }
};

/// The values that the drawing covers.
struct ValueRange {
  double low = 1e300;
  double high = -1e300;

  void Add(double value);
  /// Room at both ends; a range without extent gets some.
  ValueRange Padded() const;
};

/// The picture of a chart: heading, caption, legend and axes, between which a drawing puts its marks with
/// `svg`.
class Picture {
 public:
  static constexpr int kWidth = 1200;
  static constexpr int kHeight = 600;
  static constexpr double kFontSize = 12;

  explicit Picture(const ChartResult &result);

  /// The line below the heading: "last 120 of 431 columns", and behind it the `rest`. `what` ends in the s of
  /// the plural.
  void Caption(int shown, int all, const char *what, const std::string &rest);
  /// "1999-01-04 to 1999-12-21".
  static std::string Span(double firstDate, double lastDate);

  /// Adds to the legend in the upper right corner.
  void Legend(Ink ink, std::string_view text);

  /// The axis of prices on the right, with grid lines, and from then on `Y`. `marked` is shown in a tag of
  /// its own if it lies in the range.
  void PriceAxis(const ValueRange &range);
  void PriceAxis(const ValueRange &range, double marked);
  double Y(double price) const;

  /// The axis of dates below the area from `left` to `right`.
  void DateAxis(const std::vector<DatePlace> &places, double left, double right);
  void DateAxis(const std::vector<DatePlace> &places) { DateAxis(places, area.left, area.right); }
  /// An axis of other values below.
  void ValueAxis(const ValueRange &range, const char *name);
  double X(double value) const;

  /// A line through the closes of bars `first` to `last`, from `left` to `right`.
  void CloseLine(int first, int last, double left, double right);

  /// The newest close, for the price axis.
  double LastClose() const { return bars_[BarField::Close][bars_.Size() - 1]; }

  /// The document, with the legend.
  std::string Take();

  Svg svg;
  Area area;

 private:
  void Heading(const ChartResult &result);
  double LegendWidth() const;

  struct LegendItem {
    Ink ink;
    std::string text;
  };

  const Bars &bars_;
  ValueRange prices_;
  ValueRange values_;
  std::vector<LegendItem> legend_;
};

/// The x of bar `bar` of bars `first` to `last`, spread evenly from `left` to `right`.
inline double BarX(int bar, int first, int last, double left, double right) {
  return left + (bar - first + 0.5) / (last - first + 1) * (right - left);
}

/// The newest rows of a result in columns of equal width.
struct Columns {
  /// The first row that is shown.
  int first = 0;
  int shown = 0;
  double left = 0;
  double pitch = 0;

  /// As many of the `rows` as fit with a pitch of about `least` pixels or more.
  static Columns Newest(int rows, const Area &area, double least);
  /// Gives the columns their places once the axes are there; none is wider than `most`.
  void Place(const Area &area, double most);

  double Centre(int row) const { return left + (row - first + 0.5) * pitch; }
  int End() const { return first + shown; }
};

/// Caption and date axis of the rows in those columns.
void DrawColumnAxis(const ChartResult &result, const Columns &columns, Picture &picture);

/// The prices between which the rows of a result with starts and ends go.
ValueRange LegRange(const ChartResult &result, const Columns &columns);

/// "1999-01-04: 91.5 to 96".
std::string LegHint(const ChartResult &result, int row);

/// Draws the result. One without rows, or with values that no axis can hold, gives a picture that says so.
std::string DrawChart(const ChartResult &result);

}  // namespace trovenu::tool
