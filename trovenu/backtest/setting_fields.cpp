#include "trovenu/backtest/setting_fields.h"

#include <algorithm>
#include <array>
#include <iterator>

namespace trovenu {
namespace {

using Setting = SSimulationSetting;
using SettingField = Field<SSimulationSetting>;

// A setting with its key in the INI file; the key of the field is the archive's.
struct SettingRow {
  const char *iniKey;
  SettingField field;
};

constexpr const char *kIniOnly = nullptr;

constexpr SettingRow kRows[] = {
    {"Position", {"POS", &Setting::Position, 2}},
    {"OrderStart", {"ORDSTART", &Setting::OrderStart, 0}},
    {"SignalAction", {"SACT", &Setting::SignalAction, 0}},
    {"DispSignalAction", {kIniOnly, &Setting::DispSignalAction, 1}},
    {"OrderType", {"ORDTYPE", &Setting::OrderType, 0}},
    {"StopLossType", {"STOPLOSS", &Setting::StopLossType, 1}},
    {"ModeOrderEntryPrice", {"ENTRY", &Setting::ModeOrderEntryPrice, 2}},
    {"ModeOrderExitPrice", {"EXIT", &Setting::ModeOrderExitPrice, 2}},
    {"ModeVolume", {"MODEVOL", &Setting::ModeVolume, 0}},
    {"TradeVolume", {"TRADEVOL", &Setting::TradeVolume, 1}},
    {"BlUseAlarm", {"UALARM", &Setting::BlUseAlarm, 0}},
    {"AlarmFileName", {"ALARMFILE", &Setting::AlarmFileName, ""}},
    {"EntryCommission", {"ENTRYCOMM", &Setting::EntryCommission, 0.0001}},
    {"ModeEntryCommission", {"MENTRYCOMM", &Setting::ModeEntryCommission, 0}},
    {"ExitCommission", {"EXITCOMM", &Setting::ExitCommission, 0.0001}},
    {"ModeExitCommission", {"MEXITCOMM", &Setting::ModeExitCommission, 0}},
    {"Slippage", {"SLIPPAGE", &Setting::Slippage, 0.0005}},
    {"ModeSlippage", {"MSLIPPAGE", &Setting::ModeSlippage, 0}},
    {"BlMoneyManagementStop", {"BMMS", &Setting::BlMoneyManagementStop, 0}},
    {"MoneyManagementStop", {"MMS", &Setting::MoneyManagementStop, 0.02}},
    {"ModeMoneyManagementStop", {"MMMS", &Setting::ModeMoneyManagementStop, 0}},
    {"BlProfitTargetStop", {"BPTS", &Setting::BlProfitTargetStop, 0}},
    {"ProfitTargetStop", {"PTS", &Setting::ProfitTargetStop, 0.02}},
    {"ModeProfitTargetStop", {"MPTS", &Setting::ModeProfitTargetStop, 0}},
    {"BlRiskTrailingStop", {"BRTS", &Setting::BlRiskTrailingStop, 0}},
    {"RiskTrailingStop", {"RTS", &Setting::RiskTrailingStop, 0.6}},
    {"ModeRiskTrailingStop", {"MRS", &Setting::ModeRiskTrailingStop, 0}},
    {"RiskTrailingStopStart", {"RTSS", &Setting::RiskTrailingStopStart, 0.02}},
    {"ModeRiskTrailingStopStart", {"MSS", &Setting::ModeRiskTrailingStopStart, 0}},
    {"BlRiskTrailingStop2", {"BRTS2", &Setting::BlRiskTrailingStop2, 0}},
    {"RiskTrailingStop2", {"RTS2", &Setting::RiskTrailingStop2, 0.025}},
    {"ModeRiskTrailingStop2", {"MRTS2", &Setting::ModeRiskTrailingStop2, 0}},
    {"BlMinVariationStop", {"BMVS", &Setting::BlMinVariationStop, 0}},
    {"MinVariationStop", {"MVS", &Setting::MinVariationStop, 0.02}},
    {"ModeMinVariationStop", {"MMVS", &Setting::ModeMinVariationStop, 0}},
    {"MinVariationStopCount", {"MVSC", &Setting::MinVariationStopCount, 10}},
    {"BlDayTradingStop", {"BDTS", &Setting::BlDayTradingStop, 0}},
    {"DayTradingStop", {"DTS", &Setting::DayTradingStop, "02:30"}},
    {"ModeDayTradingStop", {"MDTS", &Setting::ModeDayTradingStop, 1}},
    {"BlMaxBarStop", {"BMBS", &Setting::BlMaxBarStop, 0}},
    {"MaxBarStop", {"MBS", &Setting::MaxBarStop, 30}},
    {"MoneyManagementColor", {"MMCLR", &Setting::MoneyManagementColor, ThemeColor{367}}},
    {"RiskTrailingColor", {"RTCLR", &Setting::RiskTrailingColor, ThemeColor{369}}},
    {"RiskTrailing2Color", {"RT2CLR", &Setting::RiskTrailing2Color, ThemeColor{369}}},
    {"ProfitTargetColor", {"PTCLR", &Setting::ProfitTargetColor, ThemeColor{358}}},
    {"MinVariationColor", {"MVCLR", &Setting::MinVariationColor, ThemeColor{359}}},
    {"DayTradingColor", {"DRCLR", &Setting::DayTradingColor, ThemeColor{365}}},
};

constexpr bool IsArchived(const SettingRow &row) { return row.field.key != kIniOnly; }

constexpr std::array<SettingField, std::size(kRows)> IniFields() {
  std::array<SettingField, std::size(kRows)> fields{};
  std::ranges::transform(kRows, fields.begin(), [](const SettingRow &row) {
    return SettingField{row.iniKey, row.field.member, row.field.value};
  });
  return fields;
}

constexpr auto kArchived = static_cast<std::size_t>(std::ranges::count_if(kRows, IsArchived));

constexpr std::array<SettingField, kArchived> ArchiveFields() {
  std::array<SettingField, kArchived> fields{};
  std::size_t count = 0;
  for (const SettingRow &row : kRows) {
    if (IsArchived(row)) fields[count++] = row.field;
  }
  return fields;
}

constexpr auto kIniFields = IniFields();
constexpr auto kArchiveFields = ArchiveFields();

}  // namespace

std::span<const Field<SSimulationSetting>> IniSettingFields() { return kIniFields; }

std::span<const Field<SSimulationSetting>> ArchiveSettingFields() { return kArchiveFields; }

}  // namespace trovenu
