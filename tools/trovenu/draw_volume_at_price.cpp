#include <algorithm>
#include <cmath>
#include <cstdio>
#include <string>
#include <vector>

#include "tools/trovenu/chart_drawings.h"
#include "tools/trovenu/picture.h"

namespace trovenu::tool {

namespace {

constexpr double kLeastBand = 4;
constexpr double kBarsShare = 0.32;

// The bands that fit, around that of the newest close.
struct ShownBands {
  int first;
  int end;
};

ShownBands ChooseBands(const ChartResult &result, double close, double height) {
  const int rows = result.Rows();
  const int shown = std::clamp(static_cast<int>(height / kLeastBand), 1, rows);
  int middle = 0;
  while (middle + 1 < rows && result.At(1, middle) < close) ++middle;
  const int first = std::clamp(middle - shown / 2, 0, rows - shown);
  return {first, first + shown};
}

std::string PercentText(double share) {
  char text[32];
  std::snprintf(text, sizeof text, "%.1f %%", share * 100);
  return text;
}

}  // namespace

void DrawVolumeAtPrice(const ChartResult &result, Picture &picture) {
  constexpr double kLabelHeight = 13;
  const Bars &bars = result.bars;
  const int last = bars.Size() - 1;
  const ShownBands bands = ChooseBands(result, picture.LastClose(), picture.area.Height());
  const int shown = bands.end - bands.first;
  ValueRange range;
  range.Add(result.At(0, bands.first));
  range.Add(result.At(1, bands.end - 1));
  const bool noExtent = range.low == range.high;
  if (noExtent) range = {picture.LastClose(), picture.LastClose()};
  picture.PriceAxis(range, picture.LastClose());
  const std::string span = Picture::Span(bars[BarField::Date][0], bars[BarField::Date][last]);
  if (shown == result.Rows()) {
    picture.Caption(shown, shown, result.type.rows, span);
  } else {
    picture.Caption(result.Rows(), result.Rows(), result.type.rows,
                    "the " + std::to_string(shown) + " around the last close, " + span);
  }
  picture.Legend(Ink::Down, "volume by price");
  picture.Legend(Ink::Accent, "largest");
  picture.Legend(Ink::Text, "close");

  const Area area = picture.area;
  const double split = area.left + area.Width() * kBarsShare;
  const double longest = area.Width() * kBarsShare - TextWidth("100.0 %", Picture::kFontSize) - 16;
  int largest = bands.first;
  for (int row = bands.first; row < bands.end; ++row) {
    if (result.At(2, row) > result.At(2, largest)) largest = row;
  }
  const auto top = [&](int row) { return picture.Y(result.At(1, row)); };
  const auto height = [&](int row) { return picture.Y(result.At(0, row)) - top(row); };
  if (!noExtent) {
    picture.svg.Begin(Ink::Band, Ink::None, 0, "fill-opacity=\"0.6\"");
    picture.svg.Rect(split, top(largest), area.right - split, height(largest));
    picture.svg.End();
    for (const bool isLargest : {false, true}) {
      picture.svg.Begin(isLargest ? Ink::Accent : Ink::Down, Ink::None, 0, "fill-opacity=\"0.85\"");
      for (int row = bands.first; row < bands.end; ++row) {
        if ((row == largest) != isLargest) continue;
        const std::string hint = ShortNumber(result.At(0, row)) + " to " + ShortNumber(result.At(1, row)) +
                                 ": volume " + ShortNumber(result.At(2, row)) + ", " +
                                 PercentText(result.At(4, row));
        const double gap = std::min(2.0, height(row) * 0.15);
        const double length = std::clamp(result.At(3, row), 0.0, 1.0) * longest;
        picture.svg.Rect(area.left + 1, top(row) + gap / 2, length, height(row) - gap, hint);
      }
      picture.svg.End();
    }
  }
  if (!noExtent && height(bands.first) >= kLabelHeight) {
    picture.svg.Begin(Ink::Text, Ink::None);
    for (int row = bands.first; row < bands.end; ++row) {
      const double length = std::clamp(result.At(3, row), 0.0, 1.0) * longest;
      picture.svg.Text(area.left + length + 8, top(row) + height(row) / 2 + 4,
                       PercentText(result.At(4, row)));
    }
    picture.svg.End();
  }
  picture.svg.Begin(Ink::None, Ink::Axis);
  picture.svg.Path(SvgPath().MoveTo(split, area.top).UpOrDownTo(area.bottom));
  picture.svg.End();

  std::vector<DatePlace> places;
  for (int bar = 0; bar <= last; ++bar) {
    places.push_back({BarX(bar, 0, last, split, area.right), bars[BarField::Date][bar]});
  }
  picture.DateAxis(places, split, area.right);
  picture.svg.BeginClip(split, area.top, area.right - split, area.Height());
  picture.svg.Begin(Ink::None, Ink::Text, 1.3, "stroke-linejoin=\"round\"");
  picture.CloseLine(0, last, split, area.right);
  picture.svg.End();
  picture.svg.End();
}

}  // namespace trovenu::tool
