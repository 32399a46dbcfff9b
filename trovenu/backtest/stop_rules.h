#pragma once

#include <algorithm>

#include "trovenu/backtest/signals.h"
#include "trovenu/backtest/simulation.h"

/// \file
/// What the stops share.

namespace trovenu {

/// What a stop returns.
enum StopResult : int { kExitMoved = 0, kExitStays = -1 };

/// Directions of `SSimulation::RoundTickSize`.
enum TickDirection : int { kTickUp = 0, kTickDown = 1 };

/// Modes of a distance.
enum DistanceMode : int { kFraction = 0, kPoints = 1 };

/// Whether the arguments of a stop name a trade on the bars.
inline bool IsTrade(const SSimulation &simulation, int side, int entryBar, const int *exitBar,
                    const double *exitPrice) {
  return (side == kLongSide || side == kShortSide) && entryBar >= 0 &&
         entryBar < BarsOf(simulation.Close).GetSize() && exitBar != nullptr && exitPrice != nullptr;
}

/// The last bar at which a stop may fire: the present exit, or the newest bar.
inline int LastBarOfTrade(const SSimulation &simulation, int exitBar) {
  return std::min(exitBar, BarsOf(simulation.Close).GetSize() - 1);
}

/// Divisor that makes points of price of a distance.
inline double PointScale(const SSimulation &simulation) {
  return simulation.BlPointUnit != 0 ? 1.0 : simulation.BigPointValue;
}

/// The closing time in minutes after midnight.
int ClosingTime(const SSimulationSetting &setting);

/// The time of a bar in minutes after midnight.
int TimeOfDay(double date);

}  // namespace trovenu
