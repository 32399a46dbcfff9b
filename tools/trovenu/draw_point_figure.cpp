#include <algorithm>
#include <cmath>
#include <limits>

#include "tools/trovenu/chart_drawings.h"
#include "tools/trovenu/picture.h"

namespace trovenu::tool {

namespace {

constexpr double kLeastPitch = 9;
constexpr double kMostPitch = 48;
// Few columns fill at least that share of the width.
constexpr double kSpreadShare = 0.6;

// How many times as wide as high a mark is: low boxes have wide marks, which are easier to tell apart.
double ShapeOf(double boxHeight) { return std::clamp(2.2 - 0.05 * boxHeight, 1.3, 2.0); }
// Pixels of a box below which a chart with fewer columns is easier to read, and below which no mark can be
// told from another.
constexpr double kReadableBox = 5.5;
constexpr double kLeastBox = 3;

// Leaves out old columns while the boxes would be too low.
void KeepReadable(const ChartResult &result, double box, double height, Columns &columns) {
  ValueRange range;
  const double most = height / kReadableBox * box;
  for (int row = columns.End() - 1; row >= columns.first; --row) {
    range.Add(result.At(2, row));
    range.Add(result.At(3, row));
    if (range.high - range.low <= most || row == columns.End() - 1) continue;
    columns.first = row + 1;
    columns.shown = result.Rows() - columns.first;
    return;
  }
}

struct Cell {
  double x;
  double halfWidth;
  double halfHeight;
};

void AddMark(bool rising, const Cell &cell, double y, SvgPath &path) {
  if (!rising) {
    path.Ellipse(cell.x, y, cell.halfWidth, cell.halfHeight);
    return;
  }
  path.MoveTo(cell.x - cell.halfWidth, y - cell.halfHeight);
  path.LineTo(cell.x + cell.halfWidth, y + cell.halfHeight);
  path.MoveTo(cell.x - cell.halfWidth, y + cell.halfHeight);
  path.LineTo(cell.x + cell.halfWidth, y - cell.halfHeight);
}

}  // namespace

void DrawPointFigure(const ChartResult &result, Picture &picture) {
  const double box = result.parameters[1];
  Columns columns = Columns::Newest(result.Rows(), picture.area, kLeastPitch);
  KeepReadable(result, box, picture.area.Height(), columns);
  picture.PriceAxis(LegRange(result, columns), picture.LastClose());
  const double boxHeight = std::abs(picture.Y(0) - picture.Y(box));
  const double spread = picture.area.Width() * kSpreadShare / columns.shown;
  const double widest = std::max({kLeastPitch, 1.3 * ShapeOf(boxHeight) * boxHeight, spread});
  columns.Place(picture.area, std::min(kMostPitch, widest));
  DrawColumnAxis(result, columns, picture);
  picture.Legend(Ink::Up, "X rising");
  picture.Legend(Ink::Down, "O falling");

  const double inset = std::min(1.6, boxHeight * 0.16);
  const double halfHeight = boxHeight / 2 - inset;
  const double halfWidth = std::min(columns.pitch * 0.42, halfHeight * ShapeOf(boxHeight));
  const double stroke = std::clamp(boxHeight / 7, 1.1, 2.0);
  for (const bool rising : {true, false}) {
    picture.svg.Begin(Ink::None, rising ? Ink::Up : Ink::Down, stroke, "stroke-linecap=\"round\"");
    for (int row = columns.first; row < columns.End(); ++row) {
      const double start = result.At(2, row);
      const double end = result.At(3, row);
      if ((start < end) != rising) continue;
      const double low = std::min(start, end);
      const Cell cell{columns.Centre(row), halfWidth, halfHeight};
      SvgPath path;
      if (boxHeight < kLeastBox) {
        path.MoveTo(cell.x, picture.Y(start)).UpOrDownTo(picture.Y(end));
      } else {
        const int boxes = std::max(1, static_cast<int>(std::lround(std::abs(end - start) / box)));
        for (int i = 0; i < boxes; ++i) AddMark(rising, cell, picture.Y(low + (i + 0.5) * box), path);
      }
      picture.svg.Path(path, LegHint(result, row));
    }
    picture.svg.End();
  }
}

}  // namespace trovenu::tool
