#include <algorithm>
#include <optional>
#include <vector>

#include "tools/trovenu/chart_drawings.h"
#include "tools/trovenu/picture.h"

namespace trovenu::tool {

namespace {

constexpr double kLeastPitch = 7;
constexpr double kMostPitch = 38;

// A line of the chart: thick (yang) or thin (yin) at its start and, from a price on, the other way.
struct KagiLine {
  bool yangAtStart;
  bool yangAtEnd;
  double changeAt;
};

// Line by line: it turns thick above the top where it last turned down, thin below the bottom where it last
// turned up.
std::vector<KagiLine> FindYang(const ChartResult &result) {
  std::vector<KagiLine> lines;
  std::optional<double> shoulder;
  std::optional<double> waist;
  std::optional<bool> yang;
  for (int row = 0; row < result.Rows(); ++row) {
    const double start = result.At(2, row);
    const double end = result.At(3, row);
    const bool rising = start < end;
    KagiLine line{yang.value_or(rising), yang.value_or(rising), start};
    if (rising && !line.yangAtStart && shoulder && end > *shoulder) {
      line = {false, true, std::max(start, *shoulder)};
    } else if (!rising && line.yangAtStart && waist && end < *waist) {
      line = {true, false, std::min(start, *waist)};
    }
    (rising ? shoulder : waist) = end;
    yang = line.yangAtEnd;
    lines.push_back(line);
  }
  return lines;
}

}  // namespace

void DrawKagi(const ChartResult &result, Picture &picture) {
  constexpr double kThick = 3.6;
  constexpr double kThin = 1.4;
  Columns columns = Columns::Newest(result.Rows(), picture.area, kLeastPitch);
  picture.PriceAxis(LegRange(result, columns), picture.LastClose());
  columns.Place(picture.area, kMostPitch);
  DrawColumnAxis(result, columns, picture);
  picture.Legend(Ink::Up, "yang (thick)");
  picture.Legend(Ink::Down, "yin (thin)");

  const std::vector<KagiLine> lines = FindYang(result);
  for (const bool yang : {false, true}) {
    picture.svg.Begin(Ink::None, yang ? Ink::Up : Ink::Down, yang ? kThick : kThin,
                      "stroke-linecap=\"square\"");
    for (int row = columns.first; row < columns.End(); ++row) {
      const KagiLine &line = lines[static_cast<std::size_t>(row)];
      const double x = columns.Centre(row);
      const bool changes = line.yangAtStart != line.yangAtEnd;
      SvgPath path;
      if (line.yangAtStart == yang) {
        path.MoveTo(x, picture.Y(result.At(2, row)));
        path.UpOrDownTo(picture.Y(changes ? line.changeAt : result.At(3, row)));
      }
      if (line.yangAtEnd == yang) {
        if (changes) path.MoveTo(x, picture.Y(line.changeAt)).UpOrDownTo(picture.Y(result.At(3, row)));
        if (row + 1 < columns.End()) path.AcrossTo(columns.Centre(row + 1));
      }
      // The part at the end carries the hint.
      if (!path.IsEmpty()) picture.svg.Path(path, line.yangAtEnd == yang ? LegHint(result, row) : "");
    }
    picture.svg.End();
  }
}

void DrawSwing(const ChartResult &result, Picture &picture) {
  Columns columns = Columns::Newest(result.Rows(), picture.area, kLeastPitch);
  picture.PriceAxis(LegRange(result, columns), picture.LastClose());
  columns.Place(picture.area, kMostPitch);
  DrawColumnAxis(result, columns, picture);
  picture.Legend(Ink::Up, "rising");
  picture.Legend(Ink::Down, "falling");
  for (const bool rising : {false, true}) {
    picture.svg.Begin(Ink::None, rising ? Ink::Up : Ink::Down, 2.2, "stroke-linecap=\"square\"");
    for (int row = columns.first; row < columns.End(); ++row) {
      if ((result.At(2, row) < result.At(3, row)) != rising) continue;
      SvgPath path;
      path.MoveTo(columns.Centre(row), picture.Y(result.At(2, row)));
      path.UpOrDownTo(picture.Y(result.At(3, row)));
      if (row + 1 < columns.End()) path.AcrossTo(columns.Centre(row + 1));
      picture.svg.Path(path, LegHint(result, row));
    }
    picture.svg.End();
  }
}

}  // namespace trovenu::tool
