#include <algorithm>
#include <cmath>
#include <cstddef>
#include <map>
#include <set>
#include <string>
#include <vector>

#include "tools/trovenu/chart_drawings.h"
#include "tools/trovenu/date_text.h"
#include "tools/trovenu/picture.h"
#include "trovenu/support/date_number.h"

namespace trovenu::tool {

namespace {

constexpr double kLeastRow = 11.5;
constexpr double kLeastFont = 10;
constexpr double kMostFont = 15;
constexpr double kLetterShare = 0.64;
constexpr double kLeastGap = 9;
constexpr double kMostGap = 150;

// The rows of the result that belong to one day, from `first` up to `end`.
struct Day {
  int first;
  int end;
};

std::vector<Day> FindDays(const ChartResult &result) {
  std::vector<Day> days;
  for (int row = 0; row < result.Rows(); ++row) {
    const bool opens = row == 0 || GetCompDate(result.DateOf(row)) != GetCompDate(result.DateOf(row - 1));
    if (opens) days.push_back({row, row});
    days.back().end = row + 1;
  }
  return days;
}

double PriceOf(const ChartResult &result, int row) { return result.bars[BarField::Close][result.BarOf(row)]; }

// The letters of one price line of a day; rows of the result with the same letter are one mark.
using PriceLine = std::map<double, std::vector<int>>;
using DayProfile = std::map<long long, PriceLine>;

DayProfile ProfileOf(const ChartResult &result, const Day &day, double step) {
  DayProfile profile;
  for (int row = day.first; row < day.end; ++row) {
    profile[std::llround(PriceOf(result, row) / step)][result.At(1, row)].push_back(row);
  }
  return profile;
}

std::size_t WidestLine(const DayProfile &profile) {
  std::size_t widest = 0;
  for (const auto &[price, line] : profile) widest = std::max(widest, line.size());
  return widest;
}

// Prices that share a line of letters: as many as it takes for the lines to be high enough.
double PriceStep(const ChartResult &result, int firstRow, double height, ValueRange &range) {
  std::set<double> prices;
  for (int row = firstRow; row < result.Rows(); ++row) prices.insert(PriceOf(result, row));
  range.Add(*prices.begin());
  range.Add(*prices.rbegin());
  double least = 0;
  for (auto price = prices.begin(); std::next(price) != prices.end(); ++price) {
    const double distance = *std::next(price) - *price;
    if (least == 0 || distance < least) least = distance;
  }
  if (least == 0) return std::abs(range.low) > 0 ? std::abs(range.low) / 100 : 1.0;
  // The axis takes some room at both ends.
  const double lines = height / kLeastRow * 0.92 - 1;
  const double needed = range.high - range.low > lines * least ? (range.high - range.low) / lines : 0;
  return needed > 0 ? RoundStep(needed) : least;
}

// The newest days with what each of them shows.
struct Layout {
  std::size_t firstDay = 0;
  double step = 1;
  ValueRange range;
  std::vector<DayProfile> days;
  std::size_t columns = 0;
};

Layout LayOut(const ChartResult &result, const std::vector<Day> &days, std::size_t firstDay, double height) {
  Layout layout;
  layout.firstDay = firstDay;
  layout.step = PriceStep(result, days[firstDay].first, height, layout.range);
  for (std::size_t i = firstDay; i < days.size(); ++i) {
    layout.days.push_back(ProfileOf(result, days[i], layout.step));
    layout.columns += WidestLine(layout.days.back());
  }
  return layout;
}

// As many days as fit; the newest one in any case.
Layout ChooseDays(const ChartResult &result, const std::vector<Day> &days, const Area &area) {
  Layout layout = LayOut(result, days, days.size() - 1, area.Height());
  while (layout.firstDay > 0) {
    Layout longer = LayOut(result, days, layout.firstDay - 1, area.Height());
    const double width = static_cast<double>(longer.columns) * kLeastFont * kLetterShare +
                         static_cast<double>(longer.days.size()) * kLeastGap;
    if (width > area.Width()) break;
    layout = std::move(longer);
  }
  return layout;
}

std::string HintOf(const ChartResult &result, double code, const std::vector<int> &rows) {
  double volume = 0;
  double bars = 0;
  for (const int row : rows) {
    volume += result.At(3, row);
    bars += result.At(4, row);
  }
  std::string text = ProfileLetter(code) + ", " + DateText(result.DateOf(rows.front())) + ": " +
                     ShortNumber(PriceOf(result, rows.front()));
  if (rows.size() > 1) text += " and " + std::to_string(rows.size() - 1) + " more prices";
  return text + ", volume " + ShortNumber(volume) + ", bars " + ShortNumber(bars);
}

}  // namespace

void DrawMarketProfile(const ChartResult &result, Picture &picture) {
  const std::vector<Day> days = FindDays(result);
  const Layout layout = ChooseDays(result, days, picture.area);
  picture.PriceAxis(layout.range, picture.LastClose());
  const Area &area = picture.area;
  std::string rest = Picture::Span(GetCompDate(result.DateOf(days[layout.firstDay].first)),
                                   GetCompDate(result.DateOf(result.Rows() - 1)));
  rest += ", price lines of " + ShortNumber(layout.step);
  picture.Caption(static_cast<int>(layout.days.size()), static_cast<int>(days.size()), "days", rest);
  picture.Legend(Ink::Accent, "first letter of the day");
  if (layout.columns > layout.days.size()) picture.Legend(Ink::Band, "longest line");

  const double lineHeight = std::abs(picture.Y(0) - picture.Y(layout.step));
  const double count = static_cast<double>(layout.days.size());
  const double columns = static_cast<double>(layout.columns);
  double font = std::clamp(lineHeight * 0.9, kLeastFont, kMostFont);
  if (columns * font * kLetterShare + count * kLeastGap > area.Width()) font = kLeastFont;
  const double letterWidth = font * kLetterShare;
  const double gap = std::clamp((area.Width() - columns * letterWidth) / count, kLeastGap, kMostGap);
  std::vector<double> lefts;
  std::vector<DatePlace> places;
  double left = area.left + gap / 2;
  for (std::size_t i = 0; i < layout.days.size(); ++i) {
    const double width = static_cast<double>(WidestLine(layout.days[i])) * letterWidth;
    lefts.push_back(left);
    places.push_back({left + width / 2, GetCompDate(result.DateOf(days[layout.firstDay + i].first))});
    left += width + gap;
  }
  picture.DateAxis(places);

  // The longest line of a day, the lowest of several, stands out; the others keep the grid off the letters.
  for (const Ink ink : {Ink::Paper, Ink::Band}) {
    picture.svg.Begin(ink, Ink::None);
    for (std::size_t i = 0; i < layout.days.size(); ++i) {
      const std::size_t widest = WidestLine(layout.days[i]);
      bool found = widest < 2;
      for (const auto &[price, line] : layout.days[i]) {
        const bool longest = !found && line.size() == widest;
        found = found || longest;
        if (longest != (ink == Ink::Band)) continue;
        const double y = picture.Y(static_cast<double>(price) * layout.step);
        const double height = std::min(lineHeight, font * 1.25);
        picture.svg.Rect(lefts[i] - 2, y - height / 2, static_cast<double>(line.size()) * letterWidth + 4,
                         height);
      }
    }
    picture.svg.End();
  }
  for (const bool opening : {false, true}) {
    const std::string look =
        std::string("font-family=\"ui-monospace, Consolas, 'DejaVu Sans Mono', monospace\"") +
        " font-size=\"" + ShortNumber(font) + '"' + (opening ? " font-weight=\"700\"" : "");
    picture.svg.Begin(opening ? Ink::Accent : Ink::Text, Ink::None, 0, look);
    for (std::size_t i = 0; i < layout.days.size(); ++i) {
      const int firstRow = days[layout.firstDay + i].first;
      for (const auto &[price, line] : layout.days[i]) {
        double x = lefts[i] - letterWidth / 2;
        for (const auto &[code, rows] : line) {
          x += letterWidth;
          if ((rows.front() == firstRow) != opening) continue;
          const double y = picture.Y(static_cast<double>(price) * layout.step) + font * 0.35;
          picture.svg.Text(x, y, ProfileLetter(code), Anchor::Middle, HintOf(result, code, rows));
        }
      }
    }
    picture.svg.End();
  }
}

}  // namespace trovenu::tool
