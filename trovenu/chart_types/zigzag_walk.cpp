#include "trovenu/chart_types/zigzag_walk.h"

#include <algorithm>

#include "trovenu/support/number_text.h"

namespace trovenu {

double ReadZigZagRate(SString &variable, int automatic, double firstPrice) {
  constexpr double kUsualPercent = 5.0;
  constexpr double kAutomaticShare = 0.05;
  constexpr double kLeastRate = 0.01;
  constexpr double kLargestRate = 0.5;
  // Required: a price distance, which is read as a percentage all the same.
  if (automatic != 0) WriteRoundedStep(variable, firstPrice * kAutomaticShare, 0.0);
  return std::clamp(AnsiStringToFloat(variable, kUsualPercent) / 100.0, kLeastRate, kLargestRate);
}

}  // namespace trovenu
