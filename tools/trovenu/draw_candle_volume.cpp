#include <algorithm>
#include <cstddef>
#include <string>
#include <vector>

#include "tools/trovenu/chart_drawings.h"
#include "tools/trovenu/date_text.h"
#include "tools/trovenu/picture.h"

namespace trovenu::tool {

namespace {

constexpr double kLeastPitch = 5.5;
constexpr double kMostPitch = 60;
constexpr double kLeastWidth = 1.6;

struct Candle {
  double left;
  double width;

  double Centre() const { return left + width / 2; }
};

// Candles side by side: each has the least width, and the rest of the room is shared as the result says.
std::vector<Candle> PlaceCandles(const ChartResult &result, const Columns &columns) {
  double sum = 0;
  const auto share = [&](int row) { return std::max(0.0, result.At(0, row)); };
  for (int row = columns.first; row < columns.End(); ++row) sum += share(row);
  const double room = columns.shown * (columns.pitch - kLeastWidth);
  std::vector<Candle> candles;
  double left = columns.left;
  for (int row = columns.first; row < columns.End(); ++row) {
    const double width = kLeastWidth + (sum > 0 ? share(row) / sum * room : room / columns.shown);
    candles.push_back({left, width});
    left += width;
  }
  return candles;
}

}  // namespace

void DrawCandleVolume(const ChartResult &result, Picture &picture) {
  const Bars &bars = result.bars;
  Columns columns = Columns::Newest(result.Rows(), picture.area, kLeastPitch);
  ValueRange range;
  for (int row = columns.first; row < columns.End(); ++row) {
    range.Add(bars[BarField::High][result.BarOf(row)]);
    range.Add(bars[BarField::Low][result.BarOf(row)]);
  }
  picture.PriceAxis(range, picture.LastClose());
  columns.Place(picture.area, kMostPitch);
  picture.Caption(
      columns.shown, result.Rows(), result.type.rows,
      Picture::Span(result.DateOf(columns.first), result.DateOf(columns.End() - 1)) + ", width by volume");
  picture.Legend(Ink::Up, "rising");
  picture.Legend(Ink::Down, "falling");

  const std::vector<Candle> candles = PlaceCandles(result, columns);
  std::vector<DatePlace> places;
  for (int row = columns.first; row < columns.End(); ++row) {
    places.push_back({candles[static_cast<std::size_t>(row - columns.first)].Centre(), result.DateOf(row)});
  }
  picture.DateAxis(places);
  for (const bool rising : {true, false}) {
    const Ink ink = rising ? Ink::Up : Ink::Down;
    SvgPath wicks;
    picture.svg.Begin(ink, Ink::None);
    for (int row = columns.first; row < columns.End(); ++row) {
      const int bar = result.BarOf(row);
      const double open = bars[BarField::Open][bar];
      const double close = bars[BarField::Close][bar];
      if ((open <= close) != rising) continue;
      const Candle &candle = candles[static_cast<std::size_t>(row - columns.first)];
      wicks.MoveTo(candle.Centre(), picture.Y(bars[BarField::High][bar]));
      wicks.UpOrDownTo(picture.Y(bars[BarField::Low][bar]));
      const double gap = std::min(1.5, candle.width * 0.2);
      const double top = picture.Y(std::max(open, close));
      const double height = std::max(1.0, picture.Y(std::min(open, close)) - top);
      const std::string hint = DateText(result.DateOf(row)) + ": open " + ShortNumber(open) + ", high " +
                               ShortNumber(bars[BarField::High][bar]) + ", low " +
                               ShortNumber(bars[BarField::Low][bar]) + ", close " + ShortNumber(close) +
                               ", volume " + ShortNumber(bars[BarField::Volume][bar]);
      picture.svg.Rect(candle.left + gap / 2, top, candle.width - gap, height, hint);
    }
    picture.svg.End();
    if (wicks.IsEmpty()) continue;
    picture.svg.Begin(Ink::None, ink);
    picture.svg.Path(wicks);
    picture.svg.End();
  }
}

}  // namespace trovenu::tool
