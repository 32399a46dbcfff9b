#include <algorithm>

#include "trovenu/chart_types/turning_points.h"
#include "trovenu/formula/calc.h"
#include "trovenu/support/number_text.h"

namespace trovenu {
namespace {

constexpr long kAutomaticPeriod = 20;
constexpr long kUsualPeriod = 25;
constexpr int kCloseAverage = 2;
constexpr int kVolumeAverage = 3;

}  // namespace

// The averages are formulas, so a curve can be read and edited as one.
void SIndex::CalcCounterClock(int automatic) {
  if (automatic != 0) VarValue[0] = kAutomaticPeriod;
  long period = AnsiStringToInt(VarValue[0], kUsualPeriod);
  if (period == 0) {
    period = kAutomaticPeriod;
    VarValue[0] = period;
  }
  Expression[kCloseAverage] = FormatValue("avg(c,%ld)", period);
  Expression[kVolumeAverage] = FormatValue("avg(v,%ld)", period);
  SCalc calc;
  Bind(calc);
  for (int slot : {kCloseAverage, kVolumeAverage}) {
    ConvExpression[slot] = Expression[slot];
    calc.SetExpression(ConvExpression[slot].c_str());
    ExpData[slot] = calc.Calculate();
    ExpData[slot].InitTemp();
  }
  const ChartBars bars(*this);
  const int start = std::max(static_cast<int>(period), 1) - 1;
  const int count = bars.date.GetSize();
  for (SVector *series : {&ExpData[0], &ExpData[1]}) {
    // Growing drops what lies below the start index, so the room is made first.
    const int size = MoveIndex(series->GetSize(), count);
    series->SetStartIndex(0);
    series->ReAlloc(size);
    series->SetStartIndex(start);
    if (series->capacity < size) return;
  }
  // Required: appended to what is there.
  for (int i = 0; i < count; ++i) {
    ExpData[0].Add(bars.date[i]);
    ExpData[1].Add(i);
  }
}

}  // namespace trovenu
