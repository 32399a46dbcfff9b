#include <algorithm>
#include <cmath>

#include "tools/trovenu/chart_drawings.h"
#include "tools/trovenu/picture.h"

namespace trovenu::tool {

namespace {

constexpr double kLeastPitch = 7;
constexpr double kMostPitch = 34;
constexpr double kRoomForNext = 64;

void DrawRows(const ChartResult &result, const Columns &columns, Picture &picture) {
  picture.Legend(Ink::Up, "rising");
  picture.Legend(Ink::Down, "falling");
  const double gap = std::min(3.0, columns.pitch * 0.14);
  for (const bool rising : {true, false}) {
    const Ink ink = rising ? Ink::Up : Ink::Down;
    picture.svg.Begin(ink, ink, 1, rising ? "fill-opacity=\"0.22\"" : "");
    for (int row = columns.first; row < columns.End(); ++row) {
      const double start = result.At(2, row);
      const double end = result.At(3, row);
      if ((start < end) != rising) continue;
      const double top = picture.Y(std::max(start, end)) + 0.5;
      const double bottom = picture.Y(std::min(start, end)) - 0.5;
      picture.svg.Rect(columns.Centre(row) - columns.pitch / 2 + gap / 2, top, columns.pitch - gap,
                       std::max(0.5, bottom - top), LegHint(result, row));
    }
    picture.svg.End();
  }
}

}  // namespace

void DrawBricks(const ChartResult &result, Picture &picture) {
  Columns columns = Columns::Newest(result.Rows(), picture.area, kLeastPitch);
  picture.PriceAxis(LegRange(result, columns), picture.LastClose());
  columns.Place(picture.area, kMostPitch);
  DrawColumnAxis(result, columns, picture);
  DrawRows(result, columns, picture);
}

void DrawThreeLineBreak(const ChartResult &result, Picture &picture) {
  const double reversal = result.parameters[1];
  Columns columns = Columns::Newest(result.Rows(), picture.area, kLeastPitch);
  ValueRange range = LegRange(result, columns);
  if (reversal != 0) range.Add(reversal);
  picture.PriceAxis(range, picture.LastClose());
  // Behind the newest line there is room for what comes next.
  Area past = picture.area;
  if (reversal != 0) past.right -= kRoomForNext;
  columns.Place(past, kMostPitch);
  DrawColumnAxis(result, columns, picture);
  DrawRows(result, columns, picture);
  if (reversal == 0) return;
  picture.Legend(Ink::Accent, "next reversal");
  picture.svg.Begin(Ink::None, Ink::Accent, 1.5, "stroke-dasharray=\"6 4\"");
  const double y = picture.Y(reversal);
  picture.svg.Path(SvgPath()
                       .MoveTo(columns.Centre(columns.End() - 1) + columns.pitch / 2, y)
                       .AcrossTo(picture.area.right));
  picture.svg.End();
}

}  // namespace trovenu::tool
