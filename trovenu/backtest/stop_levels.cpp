#include <cmath>

#include "trovenu/backtest/stop_rules.h"

namespace trovenu {

double SSimulation::RoundTickSize(int direction, double value) const {
  if (std::fmod(value, TickSize) == 0.0) return value;
  if (direction == kTickUp) return std::ceil(value / TickSize) * TickSize;
  if (direction == kTickDown) return std::floor(value / TickSize) * TickSize;
  return value;
}

double SSimulation::GetExitCompValue(int side, int bar) const {
  if (Setting.StopLossType == 0) return BarsOf(Close)[bar];
  return side == kLongSide ? BarsOf(Low)[bar] : BarsOf(High)[bar];
}

double SSimulation::GetEntryCompValue(int /*side*/, int bar) const { return BarsOf(Close)[bar]; }

double SSimulation::GetStopLossValue(int side, int bar, double level) const {
  if (Setting.StopLossType == 0) return BarsOf(Close)[bar];
  const double open = BarsOf(Open)[bar];
  const bool opensBeyond = (side == kLongSide && level >= open) || (side == kShortSide && level <= open);
  return opensBeyond ? open : level;
}

int SSimulation::ProcessStopValue(int side, int bar, double price, int *exitBar, double *exitPrice) {
  if (exitBar == nullptr || exitPrice == nullptr) return kExitStays;
  if ((side != kLongSide && side != kShortSide) || bar > *exitBar) return kExitStays;
  *exitBar = bar;
  *exitPrice = price;
  return kExitMoved;
}

}  // namespace trovenu
