#include "trovenu/backtest/stop_rules.h"

namespace trovenu {
namespace {

// A level `distance` above the price or below it, rounded away from the price; 0 in an unknown mode.
double LevelAway(const SSimulation &simulation, bool above, int mode, double distance, double price) {
  const TickDirection direction = above ? kTickUp : kTickDown;
  if (mode == kFraction) {
    return simulation.RoundTickSize(direction, (above ? 1.0 + distance : 1.0 - distance) * price);
  }
  if (mode != kPoints) return 0.0;
  const double points = distance / PointScale(simulation);
  return simulation.RoundTickSize(direction, above ? points + price : price - points);
}

// Whether prices have come to a level, which is compared with the low (side 0) or the high (side 1).
bool IsHit(const SSimulation &simulation, int side, int bar, double level) {
  const double price = simulation.GetExitCompValue(side, bar);
  return side == kLongSide ? level >= price : level <= price;
}

// Leaves at the first bar at which a level that stays is hit. For a target `hitSide` is the opposite side.
int LeaveAtLevel(SSimulation &simulation, int side, int hitSide, double level, int entryBar, int *exitBar,
                 double *exitPrice) {
  const int last = LastBarOfTrade(simulation, *exitBar);
  for (int bar = entryBar + 1; bar <= last; ++bar) {
    if (!IsHit(simulation, hitSide, bar, level)) continue;
    const double fill = simulation.GetStopLossValue(hitSide, bar, level);
    return SSimulation::ProcessStopValue(side, bar, fill, exitBar, exitPrice);
  }
  return kExitStays;
}

// Walks the bars of a trade with the best price of the bars before, the close of the entry to begin with.
// `nextLevel(best, level)` brings the level to a new best price, and says whether the stop is armed.
template <class Level>
int Trail(SSimulation &simulation, int side, int entryBar, int *exitBar, double *exitPrice, Level nextLevel) {
  const bool isLong = side == kLongSide;
  const SVector &extremes = BarsOf(isLong ? simulation.High : simulation.Low);
  const int last = LastBarOfTrade(simulation, *exitBar);
  double best = BarsOf(simulation.Close)[entryBar];
  double level = 0.0;
  bool armed = nextLevel(best, level);
  for (int bar = entryBar + 1; bar <= last; ++bar) {
    const double extreme = extremes[bar - 1];
    if (bar > entryBar + 1 && (isLong ? extreme > best : extreme < best)) {
      best = extreme;
      armed = nextLevel(best, level);
    }
    if (!armed || !IsHit(simulation, side, bar, level)) continue;
    const double fill = simulation.GetStopLossValue(side, bar, level);
    return SSimulation::ProcessStopValue(side, bar, fill, exitBar, exitPrice);
  }
  return kExitStays;
}

}  // namespace

int SSimulation::MoneyManagementStop(SIndex * /*index*/, int side, int entryBar, int *exitBar,
                                     double *exitPrice) {
  if (!IsTrade(*this, side, entryBar, exitBar, exitPrice)) return kExitStays;
  const double level = LevelAway(*this, side == kShortSide, Setting.ModeMoneyManagementStop,
                                 Setting.MoneyManagementStop, BarsOf(Close)[entryBar]);
  return LeaveAtLevel(*this, side, side, level, entryBar, exitBar, exitPrice);
}

int SSimulation::ProfitTargetStop(SIndex * /*index*/, int side, int entryBar, int *exitBar,
                                  double *exitPrice) {
  if (!IsTrade(*this, side, entryBar, exitBar, exitPrice)) return kExitStays;
  const int opposite = side == kLongSide ? kShortSide : kLongSide;
  const double level = LevelAway(*this, side == kLongSide, Setting.ModeProfitTargetStop,
                                 Setting.ProfitTargetStop, BarsOf(Close)[entryBar]);
  return LeaveAtLevel(*this, side, opposite, level, entryBar, exitBar, exitPrice);
}

int SSimulation::RiskTrailingStop(SIndex *index, int side, int entryBar, int *exitBar, double *exitPrice) {
  if (!IsTrade(*this, side, entryBar, exitBar, exitPrice)) return kExitStays;
  const bool isLong = side == kLongSide;
  const double close = BarsOf(Close)[entryBar];
  // Required: series 0 for both sides.
  const double entry = SignalAt((index != nullptr ? *index : Index).ExpData[kLongEntry], entryBar);
  const double scale = PointScale(*this);
  const double start = Setting.RiskTrailingStopStart;
  double arming;
  if (Setting.ModeRiskTrailingStopStart == kFraction) {
    arming = (isLong ? 1.0 + start : 1.0 - start) * close;
  } else {
    arming = isLong ? start / scale + close : close - start / scale;
  }
  const double keep = 1.0 - Setting.RiskTrailingStop;
  const double points = Setting.RiskTrailingStop / scale;
  const int mode = Setting.ModeRiskTrailingStop;
  return Trail(*this, side, entryBar, exitBar, exitPrice, [&](double best, double &level) {
    if (isLong ? arming > best : arming < best) return false;
    if (mode == kFraction) {
      level = isLong ? RoundTickSize(kTickDown, (best - entry) * keep + entry)
                     : RoundTickSize(kTickUp, entry - (entry - best) * keep);
    } else if (mode == kPoints) {
      level = isLong ? RoundTickSize(kTickDown, best - points) : RoundTickSize(kTickUp, points + best);
    }
    return true;
  });
}

int SSimulation::RiskTrailingStop2(SIndex * /*index*/, int side, int entryBar, int *exitBar,
                                   double *exitPrice) {
  if (!IsTrade(*this, side, entryBar, exitBar, exitPrice)) return kExitStays;
  return Trail(*this, side, entryBar, exitBar, exitPrice, [&](double best, double &level) {
    level =
        LevelAway(*this, side == kShortSide, Setting.ModeRiskTrailingStop2, Setting.RiskTrailingStop2, best);
    return true;
  });
}

}  // namespace trovenu
