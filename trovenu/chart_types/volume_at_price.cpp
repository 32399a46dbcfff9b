#include "trovenu/chart_types/volume_at_price.h"

#include <algorithm>

#include "trovenu/support/number_text.h"

namespace trovenu {
namespace {

constexpr long kUsualBands = 15;
constexpr long kFewestBands = 2;

// The first band that holds the price, its edges included, or -1. A band begins exactly where the one below
// it ends, so it is the first one that the price doesn't exceed.
int FindBand(const SVector &lower, const SVector &upper, double price) {
  const double *const end = upper.data + upper.size;
  const double *const found = std::lower_bound(static_cast<const double *>(upper.data), end, price);
  if (found == end) return -1;
  const int band = static_cast<int>(found - upper.data);
  return lower.data[band] <= price && price <= *found ? band : -1;
}

void Share(const SVector &volume, double whole, SVector &share) {
  for (int k = 0; k < volume.size; ++k) share.data[k] = volume.data[k] / whole;
}

}  // namespace

void MakeVolumeAtPrice(const ChartBars &bars, int bands, int first, int last, SVector *results) {
  const double lowest = bars.close.GetMin(first, last, 0);
  const double highest = bars.close.GetMax(first, last, 0);
  if (bands > kMostSteps) return;
  for (int i = 0; i < kExpressions; ++i) {
    results[i].BeginResult(bands, 0);
    if (results[i].GetSize() != bands) return ClearResults(results);
    results[i].InitValue(0.0);
  }
  if (lowest == highest) return;
  SVector &lower = results[0];
  SVector &upper = results[1];
  SVector &volume = results[2];
  const double step = (highest - lowest) / bands;
  for (int k = 0; k < bands; ++k) {
    lower.data[k] = k * step + lowest;
    upper.data[k] = (k + 1) * step + lowest;
  }
  // Bars outside the data have no volume.
  for (int i = std::max(first, 0); i <= std::min(last, bars.volume.GetSize() - 1); ++i) {
    const int band = FindBand(lower, upper, bars.close[i]);
    if (band >= 0) volume.data[band] += bars.volume[i];
  }
  double largest = -1.0;
  double total = 0.0;
  for (int k = 0; k < bands; ++k) {
    if (volume.data[k] >= largest) largest = volume.data[k];
    total += volume.data[k];
  }
  if (largest == 0.0) return;
  Share(volume, largest, results[3]);
  Share(volume, total, results[4]);
}

void SIndex::CalcVolumeAtPrice(int automatic, int first, int last) {
  const ChartBars bars(*this);
  if (automatic != 0) VarValue[0] = kUsualBands;
  const long bands = AnsiStringToInt(VarValue[0], kUsualBands);
  if (bands < kFewestBands) return;
  ClearResults(ExpData);
  MakeVolumeAtPrice(bars, static_cast<int>(bands), first, last, ExpData);
}

}  // namespace trovenu
