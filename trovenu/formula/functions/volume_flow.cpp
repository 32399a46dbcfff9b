#include "trovenu/formula/functions/volume_flow.h"

#include <algorithm>

#include "trovenu/support/select.h"

namespace trovenu {
namespace {

// The volume index, moved on bars where `moves` holds for the volumes of the bar before and the bar.
template <class Moves>
SVector VolumeIndex(const SVector &x, const SVector &volume, Moves moves) {
  SVector result;
  result.BeginResult(x.size, 0);
  double value = 100.0;
  if (result.size > 0) result.data[0] = value;
  for (int i = 1; i < result.size; ++i) {
    const double before = x[i - 1];
    const bool moved = moves(volume[i - 1], volume[i]) & (before != 0.0);
    value += Select(moved, (x[i] - before) / before * 100.0, 0.0);
    result.data[i] = value;
  }
  result.startIndex = x.startIndex;
  return result;
}

Operand AdRule(Call &call) {
  return AccumulationDistribution(call.Bound(Column::Open), call.Bound(Column::High), call.Bound(Column::Low),
                                  call.Bound(Column::Close), call.Bound(Column::Volume));
}

Operand PvtRule(Call &call) {
  return PriceVolumeTrend(call.Bound(Column::Close), call.Bound(Column::Volume));
}

Operand PviRule(Call &call) { return PositiveVolumeIndex(call.X(0), call.Bound(Column::Volume)); }

Operand NviRule(Call &call) { return NegativeVolumeIndex(call.X(0), call.Bound(Column::Volume)); }

constexpr Function kRows[] = {
    {FunctionId::Ad, Reading::Plain, 0, 0, FullCalc::Always, nullptr, nullptr, AdRule, "",
     "Accumulation and distribution line"},
    {FunctionId::Pvt, Reading::Plain, 0, 0, FullCalc::Always, nullptr, nullptr, PvtRule, "",
     "Price-volume trend"},
    {FunctionId::Pvi, Reading::Plain, 1, 1, FullCalc::Always, nullptr, nullptr, PviRule, "x",
     "Positive volume index of x, from 100"},
    {FunctionId::Nvi, Reading::Plain, 1, 1, FullCalc::Always, nullptr, nullptr, NviRule, "x",
     "Negative volume index of x, from 100"},
};

}  // namespace

SVector AccumulationDistribution(const SVector &open, const SVector &high, const SVector &low,
                                 const SVector &close, const SVector &volume) {
  SVector result;
  const int first = std::max(close.startIndex, 0);
  result.BeginResult(close.size, first);
  double value = 0.0;
  for (int i = first; i < result.size; ++i) {
    const double range = high[i] - low[i];
    if (i > first && range != 0.0) value += (close[i] - open[i]) * volume[i] / range;
    result.data[i] = value;
  }
  return result;
}

SVector PriceVolumeTrend(const SVector &close, const SVector &volume) {
  SVector result;
  const int first = std::max(close.startIndex, 0);
  result.BeginResult(close.size, first);
  double value = volume[first];
  for (int i = first; i < result.size; ++i) {
    if (i > first && close[i - 1] != 0.0) value += (close[i] - close[i - 1]) * volume[i] / close[i - 1];
    result.data[i] = value;
  }
  return result;
}

SVector PositiveVolumeIndex(const SVector &x, const SVector &volume) {
  return VolumeIndex(x, volume, [](double before, double now) { return before < now; });
}

SVector NegativeVolumeIndex(const SVector &x, const SVector &volume) {
  return VolumeIndex(x, volume, [](double before, double now) { return before > now; });
}

FunctionRows VolumeFlowRows() { return kRows; }

}  // namespace trovenu
