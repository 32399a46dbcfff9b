#include "trovenu/price/sr_lines.h"

namespace trovenu {

void SSRLines::CalcAlarmLine() {
  const double open = LineValue[kPreviousOpen];
  const double high = LineValue[kPreviousHigh];
  const double low = LineValue[kPreviousLow];
  const double last = LineValue[kPreviousClose];

  LineValue[kTodayAverage] = (LineValue[kTodayOpen] + LineValue[kTodayHigh] + LineValue[kTodayLow]) / 3;

  const double pivot = (high + low + last) / 3;
  LineValue[kPivot] = pivot;
  LineValue[kPivotResistance1] = pivot + pivot - low;
  LineValue[kPivotResistance2] = pivot + high - low;
  LineValue[kPivotSupport1] = pivot + pivot - high;
  LineValue[kPivotSupport2] = pivot - high + low;

  // A falling day weighs the low twice, a rising one the high, a day that ends where it began the close.
  double sum = last + last + high + low;
  if (open < last) sum = high + high + low + last;
  if (open > last) sum = low + low + high + last;
  LineValue[kDeMark] = sum / 4;
  LineValue[kDeMarkHigh] = sum / 2 - low;
  LineValue[kDeMarkLow] = sum / 2 - high;
}

}  // namespace trovenu
