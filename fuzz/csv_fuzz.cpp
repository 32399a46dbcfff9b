// Bars files: any bytes give bars or one line that tells what is wrong.

#include <cmath>
#include <cstdio>
#include <string>

#include "fuzz/check.h"
#include "fuzz/input.h"
#include "tools/trovenu/bars.h"
#include "tools/trovenu/failure.h"
#include "tools/trovenu/terminal_text.h"

namespace trovenu::fuzz {
namespace {

using tool::BarField;
using tool::Bars;

// The bars as another file has them.
std::string Written(const Bars &bars) {
  std::string text = "date,open,high,low,close,volume,amount,oi\n";
  for (int i = 0; i < bars.Size(); ++i) {
    char row[400];
    std::snprintf(row, sizeof row, "%.0f", bars[BarField::Date][i]);
    text += row;
    for (const BarField field : {BarField::Open, BarField::High, BarField::Low, BarField::Close,
                                 BarField::Volume, BarField::Amount, BarField::OpenInterest}) {
      std::snprintf(row, sizeof row, ",%.17g", bars[field][i]);
      text += row;
    }
    text += '\n';
  }
  return text;
}

void Run(Input input) {
  const std::string text = input.Rest();
  Bars bars;
  try {
    bars = tool::ReadBarsText("bars", text);
  } catch (const tool::Failure &failure) {
    const std::string_view what = failure.what();
    Require(what.starts_with("bars:") && what.find('\n') == what.npos,
            "a failure is one line with its place");
    Require(tool::IsUtf8(what), "a failure can be shown");
    return;
  }
  Require(bars.Size() > 0, "there are bars");
  for (const SVector &series : bars.series) {
    Require(series.GetSize() == bars.Size(), "all columns have the same bars");
    for (int i = 0; i < series.GetSize(); ++i) Require(std::isfinite(series[i]), "bars are numbers");
  }
  const SVector &date = bars[BarField::Date];
  for (int i = 1; i < date.GetSize(); ++i) Require(date[i - 1] < date[i], "dates ascend");

  const Bars again = tool::ReadBarsText("bars", Written(bars));
  for (std::size_t i = 0; i < bars.series.size(); ++i)
    Require(HaveSameElements(again.series[i], bars.series[i]), "bars that are written are read");
}

}  // namespace
}  // namespace trovenu::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  trovenu::fuzz::Run({data, size});
  return 0;
}
