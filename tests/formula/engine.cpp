#include "tests/formula/engine.h"

#include <algorithm>
#include <random>

#include "trovenu/platform/code_page.h"

namespace trovenu::tests {

Bars FourBars() {
  Bars bars;
  bars.close = Series({10, 20, 30, 40});
  bars.open = Series({1, 22, 3, 44});
  bars.high = Series({11, 22, 33, 44});
  bars.low = Series({5, 15, 25, 35});
  bars.volume = Series({100, 200, 300, 400});
  bars.date = Series({20240102, 20240103, 20240104, 20240201});
  bars.openInterest = Series({7, 8, 9, 6});
  bars.amount = Series({1000, 4000, 9000, 16000});
  return bars;
}

Bars RandomBars(int count, std::uint32_t seed) {
  Bars bars;
  std::mt19937 random(seed);
  const auto upTo = [&random](unsigned n) { return static_cast<int>(random() % n); };
  // Prices move in steps of 0.05.
  int price = 2000;
  int day = -1;
  int hour = 24;
  int lastHour = 0;
  for (int i = 0; i < count; ++i, ++hour) {
    if (hour > lastHour) {
      ++day;
      hour = 9;
      lastHour = 10 + upTo(3);
    }
    const int opening = price + upTo(21) - 10;
    const int closing = upTo(8) == 0 ? price : opening + upTo(41) - 20;
    const bool flat = upTo(16) == 0;
    bars.open.Add(opening * 0.05);
    bars.close.Add(closing * 0.05);
    bars.low.Add((std::min(opening, closing) - (flat ? 0 : upTo(9))) * 0.05);
    bars.high.Add(flat ? bars.low[i] : (std::max(opening, closing) + upTo(9)) * 0.05);
    bars.volume.Add(upTo(5000) + 1);
    bars.openInterest.Add(upTo(900) + 100);
    bars.amount.Add(upTo(100000));
    const int year = 2024 + day / 336;
    const int date = year * 10000 + (day / 28 % 12 + 1) * 100 + day % 28 + 1;
    bars.date.Add(date * 1e6 + hour * 1e4);
    price = std::clamp(closing, 500, 9000);
  }
  return bars;
}

std::string Readable(const std::string &codePage) { return Utf8FromCodePage(codePage, nullptr); }

std::vector<double> ValuesOf(const SVector &series) {
  std::vector<double> values(static_cast<std::size_t>(series.GetSize()));
  for (int i = std::max(series.GetStartIndex(), 0); i < series.GetSize(); ++i) {
    values[static_cast<std::size_t>(i)] = series[i];
  }
  return values;
}

testing::AssertionResult Agree(const SVector &a, const SVector &b) {
  if (a.isSeries != b.isSeries) return testing::AssertionFailure() << "one is a constant";
  if (a.size != b.size || a.startIndex != b.startIndex) {
    return testing::AssertionFailure() << "sizes " << a.size << " and " << b.size << ", start indexes "
                                       << a.startIndex << " and " << b.startIndex;
  }
  for (int i = std::max(a.startIndex, 0); i < a.size; ++i) {
    if (!SameNumber(a[i], b[i])) {
      return testing::AssertionFailure() << "at bar " << i << ": " << a[i] << " and " << b[i];
    }
  }
  return testing::AssertionSuccess();
}

}  // namespace trovenu::tests
