#include "trovenu/backtest/report_columns.h"

#include <algorithm>
#include <string_view>

#include "trovenu/support/date_number.h"
#include "trovenu/support/korean.h"
#include "trovenu/support/number_text.h"

namespace trovenu {
namespace {

constexpr int kPathWidth = 200;
constexpr int kTextWidth = 50;
// The width that texts of figures are asked for; they are not filled up to it.
constexpr int kNumberWidth = 15;

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

template <int kColumn, int kDecimals>
SString Number(const SVector *history, int trade) {
  return FloatToStrF(history[kColumn][trade], kNumberWidth, kDecimals);
}

// A factor as the percentage by which it differs from 1.
template <int kColumn>
SString Percent(const SVector *history, int trade) {
  return FloatToStrF(history[kColumn][trade] * 100.0 - 100.0, kNumberWidth, 2);
}

char DigitOf(int number) { return static_cast<char>('0' + number); }

template <int kColumn>
SString Day(const SVector *history, int trade) {
  return FormatValue("%08ld", std::max(GetLongDate(history[kColumn][trade]), 0L));
}

template <int kColumn>
SString Time(const SVector *history, int trade) {
  const double date = history[kColumn][trade];
  const int hour = GetHour(date);
  const int minute = GetMinute(date);
  const char text[] = {DigitOf(hour / 10), DigitOf(hour % 10), ':', DigitOf(minute / 10),
                       DigitOf(minute % 10)};
  return SString(std::string_view(text, sizeof text));
}

bool IsLong(const SVector *history, int trade) { return history[kTradeSide][trade] == double{kLongSide}; }

SString TradeNumber(const SVector * /*history*/, int trade) { return FormatValue("%ld", trade + 1L); }

SString EntryType(const SVector *history, int trade) {
  return IsLong(history, trade) ? "매수진입"_kr : "매도진입"_kr;
}

SString ExitType(const SVector *history, int trade) {
  const bool open = history[kTradeExitDate][trade] == 0.0;
  if (IsLong(history, trade)) return open ? "매수유지"_kr : "매수청산"_kr;
  return open ? "매도유지"_kr : "매도청산"_kr;
}

constexpr TradeTableColumn kTradeTableColumns[] = {
    {"TradeNo", kTextWidth, TradeNumber},
    {"EntryType", kTextWidth, EntryType},
    {"ExitType", kTextWidth, ExitType},
    {"EntryDate", kTextWidth, Day<kTradeEntryDate>},
    {"ExitDate", kTextWidth, Day<kTradeExitDate>},
    {"EntryTime", kTextWidth, Time<kTradeEntryDate>},
    {"ExitTime", kTextWidth, Time<kTradeExitDate>},
    {"EntryPrice", kTextWidth, Number<kTradeEntryPrice, 2>},
    {"ExitPrice", kTextWidth, Number<kTradeExitPrice, 2>},
    {"Quantity", kTextWidth, Number<kTradeQuantity, 0>},
    {"Runup", kTextWidth, Number<kTradeRunup, 2>},
    {"Drawdown", kTextWidth, Number<kTradeDrawdown, 2>},
    {"EntryEff", kTextWidth, Number<kTradeEntryEff, 2>},
    {"ExitEff", kTextWidth, Number<kTradeExitEff, 2>},
    {"TotalEff", kTextWidth, Number<kTradeTotalEff, 2>},
    {"ProfitLossRatio", kTextWidth, Percent<kTradeProfitLossRatio>},
    {"CumProfitLossRatio", kTextWidth, Percent<kTradeCumProfitLossRatio>},
    {"ProfitLoss", kTextWidth, Number<kTradeProfitLoss, 2>},
    {"CumProfitLoss", kTextWidth, Number<kTradeCumProfitLoss, 2>},
};

}  // namespace

std::span<const TextColumn<SSummaryInfo>> RunTableColumns() { return kRunColumns; }
std::span<const TextColumn<SSummary>> SummaryTableColumns() { return kSummaryColumns; }
std::span<const TradeTableColumn> TradeTableColumns() { return kTradeTableColumns; }

}  // namespace trovenu
