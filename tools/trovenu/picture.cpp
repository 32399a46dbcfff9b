#include "tools/trovenu/picture.h"

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <filesystem>

#include "tools/trovenu/date_text.h"
#include "tools/trovenu/terminal_text.h"

namespace trovenu::tool {

namespace {

constexpr double kLeft = 18;
constexpr double kTop = 72;
constexpr double kBottom = Picture::kHeight - 36.0;
constexpr double kLeastAxis = 66;
constexpr double kTickLength = 5;
constexpr double kMarkPitch = 46;
constexpr double kCaptionY = 52;

// The file's name without its folder, cut to what the heading has room for.
std::string ShownName(const std::string &name) {
  constexpr std::size_t kMost = 48;
  std::string shown = name.substr(name.find_last_of("/\\") + 1);
  if (DisplayWidth(shown) <= kMost) return shown;
  while (DisplayWidth(shown) > kMost) {
    // A whole character at a time.
    do shown.pop_back();
    while (!IsUtf8(shown));
  }
  return shown + "…";
}

bool FitsAnAxis(const ChartResult &result) {
  constexpr double kLargest = 1e300;
  for (int row = 0; row < result.Rows(); ++row) {
    for (const ChartColumn &column : result.type.columns) {
      if (!(std::abs(result.At(column.series, row)) < kLargest)) return false;
    }
  }
  return true;
}

}  // namespace

void ValueRange::Add(double value) {
  low = std::min(low, value);
  high = std::max(high, value);
}

ValueRange ValueRange::Padded() const {
  constexpr double kShare = 0.04;
  double room = (high - low) * kShare;
  if (!(room > std::abs(high) * 1e-12)) room = high != 0 ? std::abs(high) * kShare : 1.0;
  return {low - room, high + room};
}

Picture::Picture(const ChartResult &result)
    : svg(kWidth, kHeight, std::string(result.type.title) + ", " + ShownName(ToUtf8(result.bars.name))),
      area{kLeft, kTop, kWidth - kLeastAxis, kBottom},
      bars_(result.bars) {
  Heading(result);
}

void Picture::Heading(const ChartResult &result) {
  constexpr double kGap = 14;
  svg.Begin(Ink::Text, Ink::None, 0, "font-size=\"15\"");
  svg.BeginText(kLeft, 30);
  svg.Span(0, Ink::Text, result.type.title, "font-size=\"19\" font-weight=\"600\"");
  svg.Span(kGap, Ink::Text, ShownName(ToUtf8(result.bars.name)));
  const std::string parameters = result.ParametersText();
  if (!parameters.empty()) svg.Span(kGap, Ink::Muted, parameters);
  svg.EndText();
  svg.End();
}

std::string Picture::Span(double firstDate, double lastDate) {
  return DateText(firstDate) + " to " + DateText(lastDate);
}

void Picture::Caption(int shown, int all, const char *what, const std::string &rest) {
  std::string text = shown < all ? "last " + std::to_string(shown) + " of " : "";
  text += std::to_string(all) + ' ' + what;
  if (all == 1) text.pop_back();
  if (!rest.empty()) text += ", " + rest;
  svg.Begin(Ink::Muted, Ink::None, 0, "font-size=\"13\"");
  svg.Text(kLeft, kCaptionY, text);
  svg.End();
}

void Picture::Legend(Ink ink, std::string_view text) { legend_.push_back({ink, std::string(text)}); }

void Picture::PriceAxis(const ValueRange &range) { PriceAxis(range, range.low - 1 - std::abs(range.low)); }

void Picture::PriceAxis(const ValueRange &range, double marked) {
  constexpr double kTagHeight = 18;
  constexpr double kTextDrop = 4;
  constexpr double kBeside = 8;
  prices_ = range.Padded();
  const int most = static_cast<int>(area.Height() / kMarkPitch);
  const RoundMarks marks = RoundMarksBetween(prices_.low, prices_.high, most);
  const bool tagged = marked >= prices_.low && marked <= prices_.high;
  const std::string tag = ShortNumber(marked);
  double width = tagged ? TextWidth(tag, kFontSize) : 0;
  for (const double value : marks.values) width = std::max(width, TextWidth(marks.TextOf(value), kFontSize));
  area.right = kWidth - std::max(kLeastAxis, width + 3 * kBeside);

  svg.Begin(Ink::None, Ink::Grid);
  for (const double value : marks.values) {
    const double y = Y(value);
    svg.Path(SvgPath().MoveTo(area.left, y).AcrossTo(area.right));
  }
  svg.End();
  svg.Begin(Ink::None, Ink::Axis);
  svg.Path(SvgPath().MoveTo(area.right, area.top).UpOrDownTo(area.bottom).AcrossTo(area.left));
  svg.End();
  svg.Begin(Ink::Muted, Ink::None);
  for (const double value : marks.values) {
    const double y = Y(value);
    if (tagged && std::abs(y - Y(marked)) < kTagHeight - 2) continue;
    svg.Text(area.right + kBeside, y + kTextDrop, marks.TextOf(value));
  }
  svg.End();
  if (!tagged) return;
  const double y = Y(marked);
  svg.Begin(Ink::Text, Ink::None);
  svg.Rect(area.right + 1, y - kTagHeight / 2, TextWidth(tag, kFontSize) + 2 * kBeside - 2, kTagHeight);
  svg.End();
  svg.Begin(Ink::Paper, Ink::None, 0, "font-weight=\"600\"");
  svg.Text(area.right + kBeside, y + kTextDrop, tag);
  svg.End();
}

double Picture::Y(double price) const {
  return area.bottom - (price - prices_.low) / (prices_.high - prices_.low) * area.Height();
}

void Picture::DateAxis(const std::vector<DatePlace> &places, double left, double right) {
  const std::vector<DateLabel> labels = DateLabels(places, left, right, kFontSize);
  svg.Begin(Ink::None, Ink::Axis);
  for (const DateLabel &label : labels) {
    svg.Path(SvgPath().MoveTo(label.tick, area.bottom).UpOrDownTo(area.bottom + kTickLength));
  }
  svg.End();
  svg.Begin(Ink::Muted, Ink::None);
  for (const DateLabel &label : labels) svg.Text(label.x, area.bottom + 20, label.text, Anchor::Middle);
  svg.End();
}

void Picture::ValueAxis(const ValueRange &range, const char *name) {
  constexpr double kPitch = 130;
  values_ = range.Padded();
  const RoundMarks marks =
      RoundMarksBetween(values_.low, values_.high, static_cast<int>(area.Width() / kPitch));
  svg.Begin(Ink::None, Ink::Grid);
  for (const double value : marks.values) {
    svg.Path(SvgPath().MoveTo(X(value), area.top).UpOrDownTo(area.bottom));
  }
  svg.End();
  svg.Begin(Ink::Muted, Ink::None);
  const double nameLeft = area.right - TextWidth(name, kFontSize);
  for (const double value : marks.values) {
    const std::string text = marks.TextOf(value);
    const double half = TextWidth(text, kFontSize) / 2;
    if (X(value) + half > nameLeft - 10 || X(value) - half < 0) continue;
    svg.Text(X(value), area.bottom + 20, text, Anchor::Middle);
  }
  svg.Text(area.right, area.bottom + 20, name, Anchor::End);
  svg.End();
}

double Picture::X(double value) const {
  return area.left + (value - values_.low) / (values_.high - values_.low) * area.Width();
}

void Picture::CloseLine(int first, int last, double left, double right) {
  const SVector &close = bars_[BarField::Close];
  SvgPath path;
  const auto add = [&](int bar) {
    const double x = BarX(bar, first, last, left, right);
    path.IsEmpty() ? path.MoveTo(x, Y(close[bar])) : path.LineTo(x, Y(close[bar]));
  };
  // Of the bars that share half a pixel the lowest and the highest close tell everything.
  const int pieces = std::max(1, static_cast<int>(2 * (right - left)));
  const int bars = last - first + 1;
  if (bars <= 2 * pieces) {
    for (int bar = first; bar <= last; ++bar) add(bar);
  } else {
    for (int piece = 0; piece < pieces; ++piece) {
      const auto edge = [&](int i) {
        return first + static_cast<int>(static_cast<long long>(bars) * i / pieces);
      };
      int low = edge(piece);
      int high = low;
      for (int bar = low; bar < edge(piece + 1); ++bar) {
        if (close[bar] < close[low]) low = bar;
        if (close[bar] > close[high]) high = bar;
      }
      add(std::min(low, high));
      if (low != high) add(std::max(low, high));
    }
  }
  svg.Path(path);
}

double Picture::LegendWidth() const {
  double width = 0;
  for (const LegendItem &item : legend_) width += 34 + TextWidth(item.text, kFontSize);
  return width;
}

std::string Picture::Take() {
  constexpr double kSwatch = 10;
  double x = kWidth - kLeft - LegendWidth();
  for (const LegendItem &item : legend_) {
    x += 18;
    svg.Begin(item.ink, Ink::None);
    svg.Rect(x, kCaptionY - kSwatch, kSwatch, kSwatch);
    svg.End();
    svg.Begin(Ink::Muted, Ink::None);
    svg.Text(x + 16, kCaptionY, item.text);
    svg.End();
    x += 16 + TextWidth(item.text, kFontSize);
  }
  return svg.Take();
}

Columns Columns::Newest(int rows, const Area &area, double least) {
  Columns columns;
  columns.shown = std::clamp(static_cast<int>(area.Width() / least), 1, std::max(1, rows));
  columns.first = rows - columns.shown;
  return columns;
}

void Columns::Place(const Area &area, double most) {
  left = area.left;
  pitch = std::min(area.Width() / shown, most);
}

ValueRange LegRange(const ChartResult &result, const Columns &columns) {
  ValueRange range;
  for (int row = columns.first; row < columns.End(); ++row) {
    range.Add(result.At(2, row));
    range.Add(result.At(3, row));
  }
  return range;
}

void DrawColumnAxis(const ChartResult &result, const Columns &columns, Picture &picture) {
  picture.Caption(columns.shown, result.Rows(), result.type.rows,
                  Picture::Span(result.DateOf(columns.first), result.DateOf(columns.End() - 1)));
  std::vector<DatePlace> places;
  for (int row = columns.first; row < columns.End(); ++row) {
    places.push_back({columns.Centre(row), result.DateOf(row)});
  }
  picture.DateAxis(places);
}

std::string LegHint(const ChartResult &result, int row) {
  return DateText(result.DateOf(row)) + ": " + ShortNumber(result.At(2, row)) + " to " +
         ShortNumber(result.At(3, row));
}

std::string DrawChart(const ChartResult &result) {
  Picture picture(result);
  if (result.Rows() > 0 && FitsAnAxis(result)) {
    result.type.draw(result, picture);
    return picture.Take();
  }
  const Bars &bars = result.bars;
  picture.Caption(result.Rows(), result.Rows(), result.type.rows,
                  Picture::Span(bars[BarField::Date][0], bars[BarField::Date][bars.Size() - 1]));
  const std::string text = result.Rows() > 0
                               ? "The values are too large for a picture"
                               : std::string("No ") + result.type.rows + " come out of these bars";
  picture.svg.Begin(Ink::Muted, Ink::None, 0, "font-size=\"16\"");
  picture.svg.Text(Picture::kWidth / 2.0, Picture::kHeight / 2.0, text, Anchor::Middle);
  picture.svg.End();
  return picture.Take();
}

}  // namespace trovenu::tool
