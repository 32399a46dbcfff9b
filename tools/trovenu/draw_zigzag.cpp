#include <algorithm>
#include <string>
#include <vector>

#include "tools/trovenu/chart_drawings.h"
#include "tools/trovenu/date_text.h"
#include "tools/trovenu/label_room.h"
#include "tools/trovenu/picture.h"

namespace trovenu::tool {

namespace {

// Room for the labels beyond the extremes, as a share of the range.
constexpr double kLabelRoom = 0.035;

// Text that stays readable over lines.
constexpr const char *kHalo = "paint-order=\"stroke\" stroke-linejoin=\"round\" font-weight=\"600\"";
constexpr double kHaloWidth = 4;

std::string TurnHint(const ChartResult &result, int row, double price) {
  return DateText(result.DateOf(row)) + ": " + ShortNumber(price);
}

// A turning point and the price beside it.
struct Turn {
  double x;
  double y;
  bool peak;
  std::string price;
  std::string hint;
};

// The points with a circle each, and as many prices as have room.
void DrawTurns(const std::vector<Turn> &turns, Picture &picture) {
  constexpr double kRadius = 3.5;
  constexpr double kAbove = 9;
  constexpr double kBelow = 19;
  LabelRoom room(picture.area, Picture::kFontSize);
  picture.svg.Begin(Ink::Paper, Ink::Accent, 2);
  for (const Turn &turn : turns) {
    room.Block({turn.x - 2, turn.y - 2, turn.x + 2, turn.y + 2});
    picture.svg.Circle(turn.x, turn.y, kRadius, turn.hint);
  }
  picture.svg.End();
  picture.svg.Begin(Ink::Text, Ink::Paper, kHaloWidth, kHalo);
  for (const Turn &turn : turns) {
    const double half = TextWidth(turn.price, Picture::kFontSize) / 2;
    const double x = std::clamp(turn.x, picture.area.left + half,
                                std::max(picture.area.left + half, picture.area.right - half));
    const double y = turn.peak ? turn.y - kAbove : turn.y + kBelow;
    if (room.Take(x, y, turn.price)) picture.svg.Text(x, y, turn.price, Anchor::Middle);
  }
  picture.svg.End();
}

ValueRange WithLabelRoom(const ValueRange &range) {
  const double room = (range.high - range.low) * kLabelRoom;
  return {range.low - room, range.high + room};
}

}  // namespace

void DrawZigZag(const ChartResult &result, Picture &picture) {
  constexpr double kLeastDistance = 12;
  const int rows = result.Rows();
  const int shown = std::clamp(static_cast<int>(picture.area.Width() / kLeastDistance), 1, rows);
  const int firstRow = rows - shown;
  const int first = shown == rows ? 0 : result.BarOf(firstRow);
  const int last = result.bars.Size() - 1;
  const SVector &close = result.bars[BarField::Close];
  ValueRange range;
  for (int bar = first; bar <= last; ++bar) range.Add(close[bar]);
  picture.PriceAxis(WithLabelRoom(range), picture.LastClose());
  const Area &area = picture.area;
  const auto x = [&](int bar) { return BarX(bar, first, last, area.left, area.right); };
  picture.Caption(shown, rows, result.type.rows,
                  Picture::Span(result.bars[BarField::Date][first], result.bars[BarField::Date][last]));
  std::vector<DatePlace> places;
  for (int bar = first; bar <= last; ++bar) places.push_back({x(bar), result.bars[BarField::Date][bar]});
  picture.DateAxis(places);
  picture.Legend(Ink::Muted, "close");
  picture.Legend(Ink::Accent, "ZigZag");

  picture.svg.Begin(Ink::None, Ink::Muted, 1.2, "stroke-linejoin=\"round\"");
  picture.CloseLine(first, last, area.left, area.right);
  picture.svg.End();
  SvgPath path;
  for (int row = firstRow; row < rows; ++row) {
    const double px = x(result.BarOf(row));
    const double py = picture.Y(result.At(1, row));
    path.IsEmpty() ? path.MoveTo(px, py) : path.LineTo(px, py);
  }
  picture.svg.Begin(Ink::None, Ink::Accent, 2, "stroke-linejoin=\"round\"");
  picture.svg.Path(path);
  picture.svg.End();

  std::vector<Turn> turns;
  for (int row = firstRow; row < rows; ++row) {
    const double price = result.At(1, row);
    const int neighbour = row > firstRow ? row - 1 : std::min(row + 1, rows - 1);
    const bool peak = price >= result.At(1, neighbour);
    turns.push_back(
        {x(result.BarOf(row)), picture.Y(price), peak, ShortNumber(price), TurnHint(result, row, price)});
  }
  DrawTurns(turns, picture);
}

void DrawZigZagSteps(const ChartResult &result, Picture &picture) {
  constexpr double kLeastPitch = 4;
  constexpr double kMostPitch = 24;
  Columns columns = Columns::Newest(result.Rows(), picture.area, kLeastPitch);
  ValueRange range;
  for (int row = columns.first; row < columns.End(); ++row) range.Add(result.At(2, row));
  picture.PriceAxis(WithLabelRoom(range), picture.LastClose());
  columns.Place(picture.area, kMostPitch);
  DrawColumnAxis(result, columns, picture);
  picture.Legend(Ink::Up, "rising");
  picture.Legend(Ink::Down, "falling");
  picture.Legend(Ink::Accent, "new leg");

  const auto level = [&](int row) { return result.At(2, row); };
  const auto rises = [&](int row) {
    if (row == 0) return result.Rows() < 2 || level(1) >= level(0);
    return level(row) >= level(row - 1);
  };
  for (const bool rising : {false, true}) {
    picture.svg.Begin(Ink::None, rising ? Ink::Up : Ink::Down, 1.8, "stroke-linecap=\"square\"");
    for (int row = columns.first; row < columns.End(); ++row) {
      if (rises(row) != rising) continue;
      const double left = columns.Centre(row) - columns.pitch / 2;
      SvgPath path;
      path.MoveTo(left, picture.Y(level(row > columns.first ? row - 1 : row)));
      path.UpOrDownTo(picture.Y(level(row))).AcrossTo(left + columns.pitch);
      picture.svg.Path(path, TurnHint(result, row, level(row)));
    }
    picture.svg.End();
  }
  std::vector<Turn> turns;
  for (int row = columns.first; row < columns.End(); ++row) {
    if (result.At(3, row) == 0.0) continue;
    const bool peak = row + 1 < result.Rows() ? level(row + 1) < level(row) : !rises(row);
    turns.push_back({columns.Centre(row), picture.Y(level(row)), peak, ShortNumber(level(row)), ""});
  }
  DrawTurns(turns, picture);
}

}  // namespace trovenu::tool
