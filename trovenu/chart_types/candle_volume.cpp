#include "trovenu/chart_types/candle_volume.h"

namespace trovenu {

void MakeCandleVolume(const ChartBars &bars, SVector *results) {
  const int first = bars.First();
  if (first >= bars.End()) return;
  const int count = bars.End() - first;
  double sum = 0.0;
  for (int i = first; i < bars.End(); ++i) sum += bars.volume[i];
  const double average = sum / count;
  SVector &widths = results[0];
  widths.BeginResult(count, 0);
  // Required: times the average, not divided by it.
  for (int i = 0; i < widths.GetSize(); ++i) widths[i] = bars.volume[first + i] * average;
}

void SIndex::CalcCandleVolume(int) {
  const ChartBars bars(*this);
  ClearResults(ExpData);
  MakeCandleVolume(bars, ExpData);
}

}  // namespace trovenu
