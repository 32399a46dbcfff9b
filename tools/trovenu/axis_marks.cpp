#include "tools/trovenu/axis_marks.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <cstddef>
#include <map>
#include <string_view>

#include "tools/trovenu/date_text.h"
#include "tools/trovenu/svg.h"
#include "tools/trovenu/table_output.h"
#include "trovenu/support/date_number.h"

namespace trovenu::tool {

namespace {

constexpr double kPlainBelow = 1e15;
constexpr std::size_t kDateLength = 10;

void SeparateThousands(std::string &digits) {
  std::size_t end = std::min(digits.find('.'), digits.size());
  const std::size_t begin = digits.starts_with('-') ? 1 : 0;
  while (end > begin + 3) {
    end -= 3;
    digits.insert(end, 1, ',');
  }
}

// How great a beginning the place is: 0 for a year, then month, day, hour, anything else.
int RankOf(double before, double date) {
  const auto units = [](double number) {
    const bool plain = number < 1e8;
    return plain ? number * 1e6 : number;
  };
  const double a = units(before);
  const double b = units(date);
  int rank = 0;
  for (const double unit : {1e10, 1e8, 1e6, 1e4}) {
    if (std::floor(a / unit) != std::floor(b / unit)) return rank;
    ++rank;
  }
  return rank;
}

// The labels that have been put on the axis, by their left ends.
class TakenSpans {
 public:
  bool Take(double left, double right, double gap) {
    const auto next = spans_.upper_bound(left);
    if (next != spans_.end() && next->first < right + gap) return false;
    if (next != spans_.begin() && std::prev(next)->second + gap > left) return false;
    spans_.emplace(left, right);
    return true;
  }

 private:
  std::map<double, double> spans_;
};

}  // namespace

std::string RoundMarks::TextOf(double value) const {
  std::string text;
  constexpr int kMostDecimals = 9;
  const int decimals = std::max(0, static_cast<int>(std::ceil(-std::log10(step) - 1e-9)));
  if (std::abs(value) >= kPlainBelow || decimals > kMostDecimals) return ShortNumber(value);
  char digits[64];
  const double unit = std::abs(value) < step * 1e-6 ? 0.0 : value;
  const auto [end, fault] =
      std::to_chars(digits, digits + sizeof digits, unit, std::chars_format::fixed, decimals);
  text.assign(digits, end);
  SeparateThousands(text);
  return text;
}

double RoundStep(double size) {
  const double power = std::pow(10.0, std::floor(std::log10(size)));
  for (const double times : {1.0, 2.0, 5.0}) {
    if (times * power >= size * (1 - 1e-9)) return times * power;
  }
  return 10 * power;
}

RoundMarks RoundMarksBetween(double low, double high, int most) {
  RoundMarks marks;
  const double range = high - low;
  if (!(range > 0) || !std::isfinite(range)) return marks;
  marks.step = RoundStep(range / most);
  const double first = std::ceil(low / marks.step - 1e-9);
  for (int i = 0; i <= most && (first + i) * marks.step <= high + marks.step * 1e-9; ++i) {
    marks.values.push_back((first + i) * marks.step);
  }
  return marks;
}

std::string ShortNumber(double value) {
  constexpr int kDigits = 10;
  char digits[64];
  const auto [end, fault] =
      std::to_chars(digits, digits + sizeof digits, value, std::chars_format::general, kDigits);
  double rounded = value;
  std::from_chars(digits, end, rounded);
  std::string text;
  AppendNumber(text, rounded);
  if (text.find('e') == text.npos) SeparateThousands(text);
  return text;
}

std::vector<DateLabel> DateLabels(const std::vector<DatePlace> &places, double left, double right,
                                  double fontSize) {
  constexpr int kRanks = 5;
  constexpr int kFreeRanks = 3;
  constexpr double kGap = 18;
  constexpr double kWideGap = 56;
  std::vector<std::vector<std::size_t>> ranked(kRanks + 1);
  for (std::size_t i = 0; i < places.size(); ++i) {
    if (i > 0 && places[i].date == places[i - 1].date) continue;
    const int rank = i == 0 ? 0 : RankOf(places[i - 1].date, places[i].date) + 1;
    ranked[static_cast<std::size_t>(rank)].push_back(i);
  }
  TakenSpans taken;
  std::vector<std::size_t> chosen;
  // All take the room of a date, so that it is open which of a day's labels shows the date.
  const double half = TextWidth("2024-01-02", fontSize) / 2;
  const auto centre = [&](double x) {
    return std::clamp(x, left + half, std::max(left + half, right - half));
  };
  for (std::size_t rank = 0; rank < ranked.size(); ++rank) {
    const double gap = rank <= kFreeRanks ? kGap : kWideGap;
    for (const std::size_t i : ranked[rank]) {
      const double x = centre(places[i].x);
      if (taken.Take(x - half, x + half, gap)) chosen.push_back(i);
    }
  }
  std::sort(chosen.begin(), chosen.end());
  std::vector<DateLabel> labels;
  double day = 0;
  for (const std::size_t i : chosen) {
    const double date = places[i].date;
    const std::string text = DateText(date);
    const bool sameDay = GetCompDate(date) == day;
    day = GetCompDate(date);
    const bool time = sameDay && text.size() > kDateLength;
    labels.push_back({places[i].x, centre(places[i].x),
                      time ? text.substr(kDateLength + 1) : text.substr(0, kDateLength)});
  }
  return labels;
}

}  // namespace trovenu::tool
