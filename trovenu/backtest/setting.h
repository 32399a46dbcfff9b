#pragma once

#include "trovenu/platform/export.h"
#include "trovenu/platform/theme.h"
#include "trovenu/support/text.h"

namespace trovenu {

/// The sides that a back-test trades: `SSimulationSetting::Position`.
enum TradedSides : int { kLongOnly = 0, kShortOnly = 1, kBothSides = 2 };

/// What the user chose for a back-test: sides, volume, costs, stops and the colours of their markers.
///
/// A fraction is a plain ratio, 0.02 for two percent. A `Mode` member says in which unit its value stands: 0
/// for a fraction, 1 for points; what another value means stands with the member. Texts are in the code page.
/// Members said to be the host's take no part in any calculation.
struct TROVENU_API SSimulationSetting {
  /// All members to their defaults.
  SSimulationSetting();
  SSimulationSetting(const SSimulationSetting &) = default;
  SSimulationSetting &operator=(const SSimulationSetting &) = default;
  ~SSimulationSetting() = default;

  /// All members to their defaults, with the theme's colours of this moment.
  void SetDefaultValue();

  /// Name of the tested symbol; in no file.
  SString SymbolName;
  /// A `TradedSides`; any other value trades the long side.
  int Position;
  int OrderStart;  ///< The host's.
  int OrderType;   ///< The host's.
  /// 0: stops look at the close and fill there. Else they look at the low or high and fill inside the bar.
  int StopLossType;
  int SignalAction;         ///< The host's. Required: reading it from an INI file gives 0.
  int DispSignalAction;     ///< The host's; in the INI file alone.
  int ModeOrderEntryPrice;  ///< The host's.
  int ModeOrderExitPrice;   ///< The host's.
  /// 0: a trade has the volume `TradeVolume`. Else it has 1; for 1 the running profit is in percent.
  int ModeVolume;
  int TradeVolume;
  int BlUseAlarm;         ///< The host's.
  SString AlarmFileName;  ///< The host's.

  /// \name Costs
  /// A mode other than 0 means points.
  /// @{
  double EntryCommission;
  int ModeEntryCommission;
  double ExitCommission;
  int ModeExitCommission;
  /// Charged on entry and on exit.
  double Slippage;
  int ModeSlippage;
  /// @}

  /// \name Stops
  /// `Bl` switches one on.
  /// @{

  /// The loss from the entry that closes the trade. In a mode outside 0 and 1 the level is 0.
  int BlMoneyManagementStop;
  double MoneyManagementStop;
  int ModeMoneyManagementStop;
  /// The profit from the entry that closes the trade; modes as before.
  int BlProfitTargetStop;
  double ProfitTargetStop;
  int ModeProfitTargetStop;
  /// The share of the best profit that may be lost again, or a distance from the best price in points. In
  /// another mode the level is 0.
  int BlRiskTrailingStop;
  double RiskTrailingStop;
  int ModeRiskTrailingStop;
  /// The profit from the entry from which on this stop works; a mode other than 0 means points.
  double RiskTrailingStopStart;
  int ModeRiskTrailingStopStart;
  /// The distance from the best price; in another mode the level is 0.
  int BlRiskTrailingStop2;
  double RiskTrailingStop2;
  int ModeRiskTrailingStop2;
  /// The range over `MinVariationStopCount` bars below which the trade is closed; in another mode 0.
  int BlMinVariationStop;
  double MinVariationStop;
  int ModeMinVariationStop;
  int MinVariationStopCount;
  /// The time of day, hh:mm, from which on trades are closed and none begins. The characters at 0 and 1 are
  /// the hours, those at 3 and 4 the minutes; what is no number counts as 0.
  int BlDayTradingStop;
  SString DayTradingStop;
  /// 1: the time is after noon, 12 hours are added.
  int ModeDayTradingStop;
  /// Required: no back-test consults it; hosts may call `SSimulation::MaxBarStop`.
  int BlMaxBarStop;
  /// Most bars of a trade.
  int MaxBarStop;
  /// @}

  /// \name Colours of the markers, the host's
  /// @{
  Color MoneyManagementColor;
  Color RiskTrailingColor;
  Color RiskTrailing2Color;
  Color ProfitTargetColor;
  Color MinVariationColor;
  Color DayTradingColor;
  /// @}
};

}  // namespace trovenu
