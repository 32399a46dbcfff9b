// The calculators of the non-time charts over any closes and parameters.

#include <algorithm>
#include <cmath>
#include <iterator>
#include <string>

#include "fuzz/check.h"
#include "fuzz/input.h"
#include "trovenu/chart_types/turning_points.h"
#include "trovenu/price/price_data_list.h"
#include "trovenu/support/number_text.h"

namespace trovenu::fuzz {
namespace {

constexpr int kMostBars = 120;
// A walk that is long for its own sake takes long here and shows nothing new.
constexpr double kMostBoxes = 20000.0;

using Calculator = void (SIndex::*)(int);
constexpr Calculator kCalculators[] = {&SIndex::CalcPnF,          &SIndex::CalcKagi,
                                       &SIndex::CalcRenko,        &SIndex::CalcThreeLineBreak,
                                       &SIndex::CalcSwing,        &SIndex::CalcCounterClock,
                                       &SIndex::CalcCandleVolume, &SIndex::CalcMarketProfile,
                                       &SIndex::CalcZigZagLine,   &SIndex::CalcZigZagOrgLine};
// Their results are lists, whose series are alike in length.
constexpr Calculator kLists[] = {&SIndex::CalcPnF, &SIndex::CalcKagi, &SIndex::CalcRenko,
                                 &SIndex::CalcThreeLineBreak, &SIndex::CalcZigZagOrgLine};

struct Chart {
  Calculator calculator;  // null for the volume at price
  SPriceDataList list;
  std::string variables[2];
  int automatic;
  int first, last;
};

void Run(const Chart &chart, SIndex &index) {
  if (chart.calculator != nullptr) {
    (index.*chart.calculator)(chart.automatic);
  } else {
    index.CalcVolumeAtPrice(chart.automatic, chart.first, chart.last);
  }
}

bool WalksFar(const Chart &chart) {
  const SPriceData &data = chart.list[0];
  double least = 0.0;
  double most = 0.0;
  bool hasClose = false;
  for (int i = 0; i < data.close.GetSize(); ++i) {
    const double close = data.close[i];
    if (std::isnan(close)) continue;
    least = hasClose ? std::min(least, close) : close;
    most = hasClose ? std::max(most, close) : close;
    hasClose = true;
  }
  double step = 1.0;
  if (data.TickSize > 0.0) step = std::min(step, data.TickSize);
  for (const std::string &text : chart.variables) {
    const double value = std::fabs(AnsiStringToFloat(text.c_str(), 0.0));
    if (value > kMostBoxes && chart.calculator == nullptr) return true;
    if (value > 0.0) step = std::min(step, value);
  }
  // An automatic step, and that of a ladder, are a share of a price.
  const double price = std::fabs(data.close.GetFirstNonZeroValue()) / 100.0;
  if (price > 0.0) step = std::min(step, price);
  return !((most - least) / step < kMostBoxes);
}

bool HasList(const Chart &chart) { return std::ranges::find(kLists, chart.calculator) != std::end(kLists); }

void Run(Input input) {
  Chart chart;
  chart.variables[0] = input.NumberText();
  chart.variables[1] = input.NumberText();
  const int which = input.Below(static_cast<int>(std::size(kCalculators)) + 1);
  chart.calculator = which == 0 ? nullptr : kCalculators[which - 1];
  chart.automatic = input.Below(4) / 3;
  chart.first = input.Below(kMostBars) - 5;
  chart.last = kMostBars - input.Below(kMostBars + 5);
  const int start = input.Below(8) == 7 ? TruncateToInt(input.Number()) : 0;
  const double tick = input.Below(4) == 3 ? input.Number() : 1.0;
  chart.list.Add();
  SPriceData &data = chart.list[0];
  data.TickSize = tick;
  double close = 100.0;
  double date = 20240102090000.0;
  for (int i = 0; i < kMostBars && !input.IsEmpty(); ++i) {
    const int step = input.Byte();
    close = step < 250 ? close + (step - 125) / 4.0 : input.Number();
    data.AddData(SPriceData::kClose, close);
    data.AddData(SPriceData::kVolume, step == 248 ? input.Number() : step % 9);
    data.AddData(SPriceData::kDate, step == 249 ? input.Number() : date);
    date += step % 16 == 15 ? 1e6 : 300.0;
    if (!(std::fabs(close) < 1e300)) close = 100.0;
  }
  data.close.SetStartIndex(start);
  if (WalksFar(chart)) return;

  SIndex index, again;
  for (SIndex *each : {&index, &again}) {
    each->SetData(&chart.list, data.GetID());
    for (int i = 0; i < 2; ++i) each->VarValue[i] = chart.variables[i].c_str();
    Run(chart, *each);
  }
  for (int i = 0; i < kExpressions; ++i) {
    Require(HaveSameElements(index.ExpData[i], again.ExpData[i]), "a chart is repeatable");
    Require(index.ExpData[i].GetSize() <= kMostSteps, "a chart has its limit");
    if (i > 0 && i < 4 && HasList(chart))
      Require(index.ExpData[i].GetSize() == index.ExpData[0].GetSize(), "a list is of one length");
  }
  const SString used = index.VarValue[0];
  chart.automatic = 0;
  Run(chart, index);
  // A step below the tick becomes a number of ticks.
  Require(index.VarValue[0] == used || !(tick > 0.0), "a parameter that was used is good for the next run");
}

}  // namespace
}  // namespace trovenu::fuzz

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t *data, std::size_t size) {
  trovenu::fuzz::Run({data, size});
  return 0;
}
