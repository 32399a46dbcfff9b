#include <algorithm>

#include "trovenu/indicator/index.h"
#include "trovenu/price/price_data_list.h"

namespace trovenu {

void SIndex::SetData(SPriceDataList *list, int symbolId) {
  if (list == nullptr) return;
  PriceDataList = list;
  SymbolID = symbolId;
  SPriceData &data = (*list)[GetCurIndex()];
  SetVariable(data.close, data.open, data.high, data.low, data.volume, data.date, data.openInterest,
              data.amount);
}

void SIndex::SetVariable(SVector &close, SVector &open, SVector &high, SVector &low, SVector &volume,
                         SVector &date, SVector &openInterest, SVector &amount) {
  SVector *const series[kInputSeries] = {&close, &open, &high, &low, &volume, &date, &openInterest, &amount};
  std::copy(series, series + kInputSeries, Variable);
}

void SIndex::SetFunction(SFunctionList *list) { FunctionList = list; }

void SIndex::SetCandle(SFunctionList *list) { CandleList = list; }

int SIndex::GetCurIndex() const {
  return PriceDataList != nullptr ? std::max(PriceDataList->GetSymbolNoFromID(SymbolID), 0) : 0;
}

SPriceData *SIndex::GetCurPriceData() const {
  return PriceDataList != nullptr ? &(*PriceDataList)[GetCurIndex()] : nullptr;
}

SVector *SIndex::GetDate() {
  if (ExpDate.GetSize() > 0) return &ExpDate;
  SPriceData *data = GetCurPriceData();
  return data != nullptr ? &data->date : nullptr;
}

int SIndex::GetChartPeriod() const {
  const SPriceData *data = GetCurPriceData();
  return ExpDate.GetSize() > 0 || data == nullptr ? ChartPeriod : data->ChartPeriod;
}

}  // namespace trovenu
