#include "bench/bars.h"

#include <memory>

#include "tools/trovenu/minute_maker.h"

namespace trovenu::bench {

Bars::Bars(int count)
    : close(count),
      open(count),
      high(count),
      low(count),
      volume(count),
      date(count),
      openInterest(count),
      amount(count) {
  tool::MinuteMaker maker(1);
  for (int i = 0; i < count; ++i) {
    const tool::MinuteMaker::Bar bar = maker.Next();
    const auto price = [](int ticks) {
      return static_cast<double>(ticks) / tool::MinuteMaker::kTicksPerPoint;
    };
    close[i] = price(bar.close);
    open[i] = price(bar.open);
    high[i] = price(bar.high);
    low[i] = price(bar.low);
    volume[i] = static_cast<double>(bar.volume);
    date[i] = bar.date * 1e6 + bar.time;
    openInterest[i] = static_cast<double>(bar.openInterest);
    amount[i] = static_cast<double>(bar.amount);
  }
}

void Bars::Bind(SCalc &calc) { calc.SetVariable(close, open, high, low, volume, date, openInterest, amount); }

Bars &SharedBars(int count) {
  static std::unique_ptr<Bars> bars;
  if (bars == nullptr || bars->close.GetSize() != count) bars = std::make_unique<Bars>(count);
  return *bars;
}

}  // namespace trovenu::bench
