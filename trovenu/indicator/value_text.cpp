#include <string>

#include "trovenu/indicator/index.h"
#include "trovenu/indicator/line_names.h"
#include "trovenu/price/price_data_list.h"
#include "trovenu/support/korean.h"
#include "trovenu/support/number_text.h"

namespace trovenu {
namespace {

// The form of a line without values of its own.
constexpr int kLineWithoutValue = 13;

// The unit of a tick chart, of which each bar is one trade when a bar has one unit.
constexpr int kTickPeriod = 0;

// A code beyond the chart types, for which prices are shown as well.
constexpr int kSpareChart = 18;

bool HasValues(const SIndex &index, int line) {
  return (index.IndexType == kIndicatorIndex || index.IndexType == kFedIndicatorIndex) &&
         index.DisplayType[line] != kLineWithoutValue;
}

std::string PriceText(double value, double tick) {
  char text[kPriceTextSize];
  return GetTickFullFormat(text, value, tick);
}

bool ShowsPrices(int chartType) {
  return (chartType >= kCandleChart && chartType <= kVolumeAtPriceChart) ||
         (chartType >= kCandleVolumeChart && chartType <= kZigZagChart) || chartType == kSpareChart;
}

}  // namespace

SString SIndex::GetExpValue(int line, int position) const {
  const SPriceData *data = GetCurPriceData();
  if (!IsLine(line) || !HasValues(*this, line) || data == nullptr) return {};
  return PriceText(ExpData[line][position], data->TickSize).c_str();
}

SString SIndex::GetExpNameWithValue(int line, int position) const {
  if (!IsLine(line)) return {};
  if (HasValues(*this, line)) return FloatToStrF(ExpData[line][position], 10, 2);
  if (Expression[line].IsEmpty()) return {};
  if (IndexType == kPatternIndex) return kPatternNames[line];
  if (IndexType == kSystemIndex) return kOrderNames[line];
  return {};
}

SString SIndex::GetPriceValue(int position) const {
  const SPriceData *data = GetCurPriceData();
  if (data == nullptr || !ShowsPrices(data->property->PriceChartType)) return {};
  const auto price = [&](const SVector &series) { return PriceText(series[position], data->TickSize); };
  const bool isTrade = data->ChartPeriod == kTickPeriod && data->ChartCycle == 1.0;
  if (data->property->PriceChartType == kCloseLineChart || isTrade) return price(data->close).c_str();

  std::string text;
  const auto add = [&](const char *name, const SVector &series) {
    if (!text.empty()) text += ' ';
    text += std::string(name) + ":" + price(series);
  };
  add("시"_kr, data->open);
  add("고"_kr, data->high);
  add("저"_kr, data->low);
  add("종"_kr, data->close);
  return text.c_str();
}

}  // namespace trovenu
