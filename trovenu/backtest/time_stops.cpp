#include <algorithm>
#include <cstdlib>
#include <string>

#include "trovenu/backtest/stop_rules.h"
#include "trovenu/support/date_number.h"

namespace trovenu {
namespace {

constexpr int kMinutesPerHour = 60;
constexpr int kHalfDay = 12 * kMinutesPerHour;
constexpr int kAfternoon = 1;

// The number in two characters of a text, 0 where there is none.
int TwoDigits(const std::string &text, std::size_t at) {
  return at < text.size() ? std::atoi(text.substr(at, 2).c_str()) : 0;
}

// Whether the prices of `count` bars up to `bar`, and the close before them, lie closer together than
// `range`.
bool IsQuiet(const SSimulation &simulation, int bar, int count, double range) {
  const SVector &highs = BarsOf(simulation.High);
  const SVector &lows = BarsOf(simulation.Low);
  double high = BarsOf(simulation.Close)[bar - count];
  double low = high;
  for (int i = bar - count + 1; range > high - low; ++i) {
    if (i > bar) return true;
    high = std::max(high, highs[i]);
    low = std::min(low, lows[i]);
  }
  return false;
}

}  // namespace

int ClosingTime(const SSimulationSetting &setting) {
  const std::string text = setting.DayTradingStop.c_str();
  const int time = TwoDigits(text, 0) * kMinutesPerHour + TwoDigits(text, 3);
  return setting.ModeDayTradingStop == kAfternoon ? time + kHalfDay : time;
}

int TimeOfDay(double date) { return GetHour(date) * kMinutesPerHour + GetMinute(date); }

int SSimulation::MinVariationStop(SIndex * /*index*/, int side, int entryBar, int *exitBar,
                                  double *exitPrice) {
  if (!IsTrade(*this, side, entryBar, exitBar, exitPrice)) return kExitStays;
  const int count = Setting.MinVariationStopCount;
  if (count < 0 || *exitBar <= MoveIndex(entryBar, MoveIndex(count, 1))) return kExitStays;
  const SVector &close = BarsOf(Close);
  const int mode = Setting.ModeMinVariationStop;
  const double points = Setting.MinVariationStop / PointScale(*this);
  const int last = LastBarOfTrade(*this, *exitBar);
  for (int bar = MoveIndex(entryBar, count); bar <= last; ++bar) {
    double range = 0.0;
    if (mode == kFraction) range = RoundTickSize(kTickUp, close[bar - count] * Setting.MinVariationStop);
    if (mode == kPoints) range = RoundTickSize(kTickUp, points);
    if (IsQuiet(*this, bar, count, range)) {
      return ProcessStopValue(side, bar, close[bar], exitBar, exitPrice);
    }
  }
  return kExitStays;
}

int SSimulation::DayTradingStop(SIndex * /*index*/, int side, int entryBar, int *exitBar, double *exitPrice) {
  if (!IsTrade(*this, side, entryBar, exitBar, exitPrice)) return kExitStays;
  const int closing = ClosingTime(Setting);
  const SVector &date = BarsOf(Date);
  const int last = LastBarOfTrade(*this, *exitBar);
  for (int bar = entryBar + 1; bar <= last; ++bar) {
    if (TimeOfDay(date[bar]) >= closing) {
      return ProcessStopValue(side, bar, BarsOf(Close)[bar], exitBar, exitPrice);
    }
  }
  return kExitStays;
}

int SSimulation::MaxBarStop(SIndex * /*index*/, int /*side*/, int entryBar, int *exitBar, double *exitPrice) {
  if (exitBar == nullptr || exitPrice == nullptr) return kExitStays;
  const int latest = MoveIndex(entryBar, Setting.MaxBarStop);
  if (*exitBar <= latest) return kExitStays;
  *exitBar = latest;
  *exitPrice = BarsOf(Close)[latest];
  return kExitMoved;
}

}  // namespace trovenu
