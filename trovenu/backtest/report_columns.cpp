#include "trovenu/backtest/report_columns.h"

#include <algorithm>
#include <charconv>
#include <string>
#include <string_view>

#include "trovenu/platform/print_format.h"
#include "trovenu/support/date_number.h"
#include "trovenu/support/korean.h"

namespace trovenu {
namespace {

constexpr int kPathWidth = 200;

constexpr TextColumn<SSummaryInfo> kRunColumns[] = {
    {"SumFileName", kPathWidth, &SSummaryInfo::SumFileName},
    {"TradeListFileName", kPathWidth, &SSummaryInfo::TradeListFileName},
    {"SymbolName", kTextWidth, &SSummaryInfo::SymbolName},
    {"IndicatorName", kTextWidth, &SSummaryInfo::IndicatorName},
    {"IndicatorVariable", kTextWidth, &SSummaryInfo::IndicatorVariable},
    {"Term", kTextWidth, &SSummaryInfo::Term},
    {"Status", kTextWidth, &SSummaryInfo::Status},
    {"EntryCommission", kTextWidth, &SSummaryInfo::EntryCommission},
    {"ExitCommission", kTextWidth, &SSummaryInfo::ExitCommission},
    {"Slippage", kTextWidth, &SSummaryInfo::Slippage},
    {"TotalProfit", kTextWidth, &SSummaryInfo::TotalProfit},
    {"TransactionCount", kTextWidth, &SSummaryInfo::TransactionCount},
    {"WinLossRatio", kTextWidth, &SSummaryInfo::WinLossRatio},
    {"WinRatio", kTextWidth, &SSummaryInfo::WinRatio},
    {"ProfitFactor", kTextWidth, &SSummaryInfo::ProfitFactor},
    {"AverageProfit", kTextWidth, &SSummaryInfo::AverageProfit},
    {"InMarketRatio", kTextWidth, &SSummaryInfo::InMarketRatio},
};

constexpr TextColumn<SSummary> kSummaryColumns[] = {
    {"GroupID", kTextWidth, &SSummary::GroupID},       {"GroupName", kTextWidth, &SSummary::GroupName},
    {"SubGroupID", kTextWidth, &SSummary::SubGroupID}, {"SubGroupName", kTextWidth, &SSummary::SubGroupName},
    {"Sequence", kTextWidth, &SSummary::Sequence},     {"Name1", kTextWidth, &SSummary::Name1},
    {"Value1", kTextWidth, &SSummary::Value1},         {"Name2", kTextWidth, &SSummary::Name2},
    {"Value2", kTextWidth, &SSummary::Value2},
};

void PutText(TradeField field, std::string_view text) { text.copy(field.data(), field.size()); }

template <int kColumn, int kDecimals>
void Number(TradeField field, const SVector *history, int trade) {
  PutPlainFixed(field, history[kColumn][trade], kDecimals);
}

// A factor as the percentage by which it differs from 1.
template <int kColumn>
void Percent(TradeField field, const SVector *history, int trade) {
  PutPlainFixed(field, history[kColumn][trade] * 100.0 - 100.0, 2);
}

// Writes a number at or above 0 with as many digits as the power of ten `least` at least, and returns its
// end.
char *PutDigits(char *out, long number, long least) {
  constexpr int kMostDigits = 10;
  for (; number < least && least > 1; least /= 10) *out++ = '0';
  return std::to_chars(out, out + kMostDigits, number).ptr;
}

template <int kColumn>
void Day(TradeField field, const SVector *history, int trade) {
  PutDigits(field.data(), std::max(GetLongDate(history[kColumn][trade]), 0L), 10000000);
}

template <int kColumn>
void Time(TradeField field, const SVector *history, int trade) {
  const double date = history[kColumn][trade];
  char *const behind = PutDigits(field.data(), GetHour(date), 10);
  *behind = ':';
  PutDigits(behind + 1, GetMinute(date), 10);
}

bool IsLong(const SVector *history, int trade) { return history[kTradeSide][trade] == double{kLongSide}; }

void TradeNumber(TradeField field, const SVector * /*history*/, int trade) {
  std::to_chars(field.data(), field.data() + field.size(), trade + 1);
}

void EntryType(TradeField field, const SVector *history, int trade) {
  PutText(field, IsLong(history, trade) ? "매수진입"_kr : "매도진입"_kr);
}

void ExitType(TradeField field, const SVector *history, int trade) {
  const bool open = history[kTradeExitDate][trade] == 0.0;
  if (IsLong(history, trade)) {
    PutText(field, open ? "매수유지"_kr : "매수청산"_kr);
  } else {
    PutText(field, open ? "매도유지"_kr : "매도청산"_kr);
  }
}

constexpr TradeTableColumn kTradeTableColumns[] = {
    {"TradeNo", TradeNumber},
    {"EntryType", EntryType},
    {"ExitType", ExitType},
    {"EntryDate", Day<kTradeEntryDate>},
    {"ExitDate", Day<kTradeExitDate>},
    {"EntryTime", Time<kTradeEntryDate>},
    {"ExitTime", Time<kTradeExitDate>},
    {"EntryPrice", Number<kTradeEntryPrice, 2>},
    {"ExitPrice", Number<kTradeExitPrice, 2>},
    {"Quantity", Number<kTradeQuantity, 0>},
    {"Runup", Number<kTradeRunup, 2>},
    {"Drawdown", Number<kTradeDrawdown, 2>},
    {"EntryEff", Number<kTradeEntryEff, 2>},
    {"ExitEff", Number<kTradeExitEff, 2>},
    {"TotalEff", Number<kTradeTotalEff, 2>},
    {"ProfitLossRatio", Percent<kTradeProfitLossRatio>},
    {"CumProfitLossRatio", Percent<kTradeCumProfitLossRatio>},
    {"ProfitLoss", Number<kTradeProfitLoss, 2>},
    {"CumProfitLoss", Number<kTradeCumProfitLoss, 2>},
};

}  // namespace

std::span<const TextColumn<SSummaryInfo>> RunTableColumns() { return kRunColumns; }
std::span<const TextColumn<SSummary>> SummaryTableColumns() { return kSummaryColumns; }
std::span<const TradeTableColumn> TradeTableColumns() { return kTradeTableColumns; }

}  // namespace trovenu
