#include "fuzz/market.h"

#include <algorithm>
#include <iterator>

#include "fuzz/check.h"

namespace trovenu::fuzz {

bool Market::IsSameAs(const Market &other) const {
  for (std::size_t i = 0; i < std::size(series); ++i) {
    if (!IsSameSeries(series[i], other.series[i]) || !HaveSameElements(series[i], other.series[i]))
      return false;
  }
  return true;
}

Market ReadMarket(Input &input, int most) {
  Market market;
  auto &[close, open, high, low, volume, date, openInterest, amount] = market.series;
  const int count = most - input.Below(most + 1);
  // Steps of 0.05. Where the input has no more to say the market goes its own way.
  unsigned own = 1;
  const auto upTo = [&](unsigned n) {
    own = own * 1664525 + 1013904223;
    return static_cast<int>((input.IsEmpty() ? own >> 16 : input.Byte()) % n);
  };
  int price = 2000;
  int day = 0;
  int hour = 9;
  for (int i = 0; i < count; ++i) {
    const int opening = price + upTo(9) - 4;
    const int closing = std::clamp(opening + upTo(41) - 20, 500, 9000);
    open.Add(opening * 0.05);
    close.Add(closing * 0.05);
    high.Add((std::max(opening, closing) + upTo(9)) * 0.05);
    low.Add((std::min(opening, closing) - upTo(9)) * 0.05);
    volume.Add(upTo(200) * 5);
    openInterest.Add(100 + i % 7);
    amount.Add(closing * (1 + i % 5));
    date.Add((20240100 + day / 28 % 12 * 100 + day % 28 + 1) * 1e6 + hour * 1e4);
    price = closing;
    if (++hour > 9 + upTo(4)) {
      ++day;
      hour = 9;
    }
  }
  return market;
}

Market ReadWildMarket(Input &input, int most) {
  const int kind = input.Below(8);
  const int start = input.Below(8) == 7 ? input.Below(most + 8) - 4 : 0;
  const int numbers = kind == 7 ? input.Below(12) : 0;
  struct Change {
    int series;
    int bar;
    double value;
  } changes[12];
  for (int i = 0; i < numbers; ++i) changes[i] = {input.Below(8), input.Below(most), input.Number()};
  const int shorter = kind == 6 ? input.Below(8) : -1;
  const int size = kind == 6 ? input.Below(most + 1) : 0;
  Market market = ReadMarket(input, most);
  for (SVector &series : market.series) series.SetStartIndex(start);
  for (int i = 0; i < numbers; ++i) market.series[changes[i].series][changes[i].bar] = changes[i].value;
  if (shorter >= 0) market.series[shorter].SetSize(size);
  return market;
}

}  // namespace trovenu::fuzz
