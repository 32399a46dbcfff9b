#include <algorithm>

#include "trovenu/indicator/index.h"
#include "trovenu/price/price_data_list.h"

namespace trovenu {
namespace {

// A line of this form stands on the zero line.
constexpr int kFormFromZero = 1;

}  // namespace

double SIndex::GetMax() const {
  double most = kNoMaximum;
  for (int i = 0; i < kExpressions; ++i) {
    if (BlShowLine[i] != 0 && ExpData[i].GetSize() > 0) most = std::max(most, ExpData[i].GetMax());
  }
  return most;
}

// Required: only the least value is taken to 0, not the largest.
double SIndex::GetMin() const {
  double least = -kNoMaximum;
  for (int i = 0; i < kExpressions; ++i) {
    if (BlShowLine[i] == 0 || ExpData[i].GetSize() == 0) continue;
    least = std::min(least, ExpData[i].GetMin());
    if (DisplayType[i] == kFormFromZero) least = std::min(least, 0.0);
  }
  return least;
}

double SIndex::GetMax(int first, int last, int mode) {
  double most = kNoMaximum;
  for (int i = 0; i < kExpressions; ++i) {
    if (BlShowLine[i] == 0 || ExpData[i].GetSize() == 0) continue;
    most = std::max(most, ExpData[i].GetMax(first, last, mode));
    if (ExpData[i].minMaxChanged != 0) BlMinMaxChanged = 1;
  }
  return most;
}

double SIndex::GetMin(int first, int last, int mode) {
  double least = -kNoMaximum;
  for (int i = 0; i < kExpressions; ++i) {
    if (BlShowLine[i] == 0 || ExpData[i].GetSize() == 0) continue;
    least = std::min(least, ExpData[i].GetMin(first, last, mode));
    if (DisplayType[i] == kFormFromZero) least = std::min(least, 0.0);
    if (ExpData[i].minMaxChanged != 0) BlMinMaxChanged = 1;
  }
  return least;
}

void SIndex::SetDrawRange(int first, int last) {
  for (SVector &series : ExpData) {
    const int start = series.GetStartIndex();
    series.SetDrawRange(std::max(first, start), std::max(last, start));
  }
  // The price series of a net chart takes its overlays along.
  SPriceData *data = IndexType == kPriceIndex ? GetCurPriceData() : nullptr;
  if (data == nullptr || data->property->PriceChartType != kNetChart) return;
  for (SIndex &overlay : data->overlays) overlay.SetDrawRange(first, last);
}

void SIndex::SetMinMaxChanged(int changed) {
  BlMinMaxChanged = changed;
  for (SVector &series : ExpData) series.minMaxChanged = changed;
}

void SIndex::SetUserMinMax(double least, double most) {
  UserMin = least;
  UserMax = most;
}

}  // namespace trovenu
