#include <algorithm>
#include <iterator>
#include <utility>

#include "trovenu/backtest/stop_rules.h"

namespace trovenu {
namespace {

struct StopRow {
  int SSimulationSetting::*enabled;
  int (SSimulation::*stop)(SIndex *, int, int, int *, double *);
};

// In the order in which they are asked. The place from 1 on is the number of the stop in an exit value.
constexpr StopRow kStops[] = {
    {&SSimulationSetting::BlMoneyManagementStop, &SSimulation::MoneyManagementStop},
    {&SSimulationSetting::BlRiskTrailingStop, &SSimulation::RiskTrailingStop},
    {&SSimulationSetting::BlRiskTrailingStop2, &SSimulation::RiskTrailingStop2},
    {&SSimulationSetting::BlProfitTargetStop, &SSimulation::ProfitTargetStop},
    {&SSimulationSetting::BlMinVariationStop, &SSimulation::MinVariationStop},
    {&SSimulationSetting::BlDayTradingStop, &SSimulation::DayTradingStop},
};

// Bars within which the exit of a trade is looked for first.
constexpr int kFirstReach = 64;

struct Exit {
  // 0 for the exit of the rules.
  int stop = 0;
  int bar;
  double price;
};

// Asks all stops, each of which may move the exit to its bar or an earlier one. Of two that fire on one bar
// the later row wins.
Exit AskStops(SSimulation &simulation, SIndex *index, int side, int entryBar, Exit exit) {
  for (const StopRow &row : kStops) {
    if (simulation.Setting.*row.enabled == 0) continue;
    if ((simulation.*row.stop)(index, side, entryBar, &exit.bar, &exit.price) == kExitMoved) {
      exit.stop = static_cast<int>(std::distance(kStops, &row)) + 1;
    }
  }
  return exit;
}

// Bars that `MinVariationStop` needs before the exit to look at a trade at all; 0 if the trade is too short
// for it or the stop is off.
int QuietReach(const SSimulationSetting &setting, int entryBar, int exitBar) {
  if (setting.BlMinVariationStop == 0) return 0;
  const int needed = MoveIndex(setting.MinVariationStopCount, 2);
  return MoveIndex(entryBar, needed) <= exitBar ? needed : 0;
}

// The exit of a trade. The rule exit may be far away and most stops may never fire, so the stops are asked
// for the first bars of the trade, and for twice as many until one fires: what they find is the same, and the
// walk costs what the trade is long.
Exit FindExit(SSimulation &simulation, SIndex *index, int side, int entryBar, const Exit &ruleExit) {
  int reach = std::max(kFirstReach, QuietReach(simulation.Setting, entryBar, ruleExit.bar));
  for (;; reach = MoveIndex(reach, reach)) {
    const int horizon = MoveIndex(entryBar, reach);
    if (horizon >= ruleExit.bar) return AskStops(simulation, index, side, entryBar, ruleExit);
    const Exit found = AskStops(simulation, index, side, entryBar, {.bar = horizon, .price = 0.0});
    if (found.stop != 0) return found;
  }
}

void CancelEntries(SVector &entries, const SVector &date, int closingTime) {
  for (int bar = 0; bar < entries.GetSize(); ++bar) {
    if (HasSignal(entries, bar) && TimeOfDay(date[bar]) >= closingTime) entries[bar] = 0.0;
  }
}

// Makes a series longer, with zeros. Elements below the start index stay.
void Lengthen(SVector &series, int size) {
  SVector longer(size);
  for (int i = 0; i < series.GetSize(); ++i) longer[i] = series[i];
  longer.SetStartIndex(series.GetStartIndex());
  series = std::move(longer);
}

}  // namespace

void SSimulation::ProcessStop(SIndex *index) {
  if (index == nullptr) {
    index = &Index;
  } else if (index != &Index) {
    Index = *index;
  }
  if (BigPointValue == 0.0) BigPointValue = 1.0;
  if (Setting.BlDayTradingStop != 0) {
    for (const RuleSeries rule : {kLongEntry, kShortEntry}) {
      CancelEntries(index->ExpData[rule], BarsOf(Date), ClosingTime(Setting));
    }
  }
  for (int side = GetStartMode(); side <= GetEndMode(); ++side) ProcessStopsOfSide(*index, side);
  index->PreProcess();
}

void SSimulation::ProcessStopsOfSide(SIndex &index, int side) {
  const int exitRule = 2 * side + 1;
  SVector &entries = index.ExpData[exitRule - 1];
  SVector &exits = index.ExpData[exitRule];
  // The next exit of the rules. Stops write exits only behind the walk.
  int ruleExit = -1;
  bool moreExits = true;
  for (int i = std::max(entries.GetStartIndex(), 0); i < entries.GetSize(); ++i) {
    if (!HasSignal(entries, i)) continue;
    if (moreExits && ruleExit <= i) {
      ruleExit = NextSignal(exits, i + 1);
      moreExits = ruleExit >= 0;
    }
    const int last = entries.GetSize() - 1;
    const Exit rule = moreExits ? Exit{.bar = ruleExit, .price = SignalAt(exits, ruleExit)}
                                : Exit{.bar = last, .price = BarsOf(Close)[last]};
    const Exit exit = FindExit(*this, &index, side, i, rule);
    if (exit.stop != 0) {
      const int behind = std::min(exit.bar, entries.GetSize());
      for (int bar = i + 1; bar < behind; ++bar) entries[bar] = 0.0;
      if (exit.bar >= exits.GetSize()) Lengthen(exits, entries.GetSize());
      exits[exit.bar] = exit.stop * kStopScale + exit.price;
      if (exit.bar == exits.GetSize() - 1) StopOnLastBar[exitRule] = 1;
      if (exit.bar == exits.GetSize() - 2) StopOnBarBeforeLast[exitRule] = 1;
    }
    i = std::max(exit.bar, i);
  }
}

}  // namespace trovenu
