#include "tools/trovenu/sample_bars.h"

#include "tools/trovenu/date_text.h"
#include "tools/trovenu/minute_maker.h"

namespace trovenu::tool {

Bars SampleBars() {
  constexpr int kSessions = 3;
  constexpr double kTicksPerPoint = MinuteMaker::kTicksPerPoint;
  Bars bars;
  bars.name = "sample bars";
  bars.present = (1U << kSeriesFields) - 1;
  MinuteMaker maker(1);
  for (int i = 0; i < kSessions * MinuteMaker::kBarsPerSession; ++i) {
    const MinuteMaker::Bar bar = maker.Next();
    bars[BarField::Date].Add(DateTime{bar.date, bar.time}.Number());
    bars[BarField::Open].Add(bar.open / kTicksPerPoint);
    bars[BarField::High].Add(bar.high / kTicksPerPoint);
    bars[BarField::Low].Add(bar.low / kTicksPerPoint);
    bars[BarField::Close].Add(bar.close / kTicksPerPoint);
    bars[BarField::Volume].Add(static_cast<double>(bar.volume));
    bars[BarField::Amount].Add(static_cast<double>(bar.amount));
    bars[BarField::OpenInterest].Add(static_cast<double>(bar.openInterest));
  }
  return bars;
}

}  // namespace trovenu::tool
