#include <algorithm>
#include <cstddef>
#include <string>
#include <utility>
#include <vector>

#include "tools/trovenu/chart_drawings.h"
#include "tools/trovenu/date_text.h"
#include "tools/trovenu/label_room.h"
#include "tools/trovenu/picture.h"

namespace trovenu::tool {

namespace {

// More points than that are a tangle.
constexpr int kMostPoints = 250;
constexpr double kFontSize = 12;

struct PointLabel {
  int row;
  std::string text;
};

// Labels of the points that open a year, a month, a day or an hour, the finest of these that are few enough.
std::vector<PointLabel> FindLabels(const ChartResult &result, int first) {
  constexpr std::size_t kMostLabels = 14;
  // Of a text such as 2024-01-02 09:30: how much of it tells the unit, and where the label begins and ends.
  struct Unit {
    std::size_t length;
    std::size_t begin;
    std::size_t end;
  };
  std::vector<PointLabel> labels;
  for (const Unit &unit : {Unit{13, 11, 16}, Unit{10, 5, 10}, Unit{7, 0, 7}, Unit{4, 0, 4}}) {
    labels.clear();
    for (int row = first + 1; row + 1 < result.Rows(); ++row) {
      const std::string text = DateText(result.DateOf(row));
      if (text.size() < unit.length) break;
      if (text.compare(0, unit.length, DateText(result.DateOf(row - 1)), 0, unit.length) == 0) continue;
      labels.push_back({row, text.substr(unit.begin, unit.end - unit.begin)});
    }
    if (!labels.empty() && labels.size() <= kMostLabels) break;
  }
  if (labels.size() > kMostLabels) labels.clear();
  return labels;
}

}  // namespace

void DrawCounterClock(const ChartResult &result, Picture &picture) {
  constexpr int kAges = 5;
  constexpr double kDot = 2.2;
  const int rows = result.Rows();
  const int first = std::max(0, rows - kMostPoints);
  const int shown = rows - first;
  ValueRange prices;
  ValueRange volumes;
  for (int row = first; row < rows; ++row) {
    prices.Add(result.At(2, row));
    volumes.Add(result.At(3, row));
  }
  picture.PriceAxis(prices);
  picture.ValueAxis(volumes, "volume average");
  picture.Caption(shown, rows, result.type.rows,
                  Picture::Span(result.DateOf(first), result.DateOf(rows - 1)));
  picture.Legend(Ink::Down, "price average against volume average, paler where older");

  const auto x = [&](int row) { return picture.X(result.At(3, row)); };
  const auto y = [&](int row) { return picture.Y(result.At(2, row)); };
  LabelRoom room(picture.area, kFontSize);
  for (int row = first; row < rows; ++row) {
    room.Block({x(row) - kDot, y(row) - kDot, x(row) + kDot, y(row) + kDot});
  }
  for (int age = 0; age < kAges; ++age) {
    const int begin = first + shown * age / kAges;
    const int end = first + shown * (age + 1) / kAges;
    if (begin == end) continue;
    const std::string opacity = "opacity=\"" + ShortNumber(0.36 + 0.16 * age) + '"';
    picture.svg.Begin(Ink::None, Ink::Down, 1.6, opacity + " stroke-linejoin=\"round\"");
    SvgPath path;
    path.MoveTo(x(begin), y(begin));
    for (int row = begin + 1; row < std::min(end + 1, rows); ++row) path.LineTo(x(row), y(row));
    picture.svg.Path(path);
    picture.svg.End();
    picture.svg.Begin(Ink::Down, Ink::None, 0, opacity);
    for (int row = begin; row < end; ++row) {
      const std::string hint = DateText(result.DateOf(row)) + ": price " + ShortNumber(result.At(2, row)) +
                               ", volume " + ShortNumber(result.At(3, row));
      picture.svg.Circle(x(row), y(row), row + 1 == rows ? 2.5 * kDot : kDot, hint);
    }
    picture.svg.End();
  }

  std::vector<PointLabel> labels = FindLabels(result, first);
  labels.insert(labels.begin(), {rows - 1, DateText(result.DateOf(rows - 1))});
  if (shown > 1) labels.insert(labels.begin() + 1, {first, DateText(result.DateOf(first))});
  picture.svg.Begin(Ink::Text, Ink::Paper, 4, "paint-order=\"stroke\" stroke-linejoin=\"round\"");
  for (const PointLabel &label : labels) {
    const double half = TextWidth(label.text, kFontSize) / 2;
    using Step = std::pair<double, double>;
    for (const auto &[right, down] :
         {Step{0, -11}, Step{0, 21}, Step{half + 10, 4}, Step{-half - 10, 4}, Step{half, -16},
          Step{-half, -16}, Step{half, 26}, Step{-half, 26}, Step{0, -30}, Step{0, 40}}) {
      const double px = x(label.row) + right;
      const double py = y(label.row) + down;
      if (!room.Take(px, py, label.text)) continue;
      picture.svg.Text(px, py, label.text, Anchor::Middle);
      break;
    }
  }
  picture.svg.End();
}

}  // namespace trovenu::tool
