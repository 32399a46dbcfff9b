#include "trovenu/backtest/report_columns.h"

#include <algorithm>
#include <string>
#include <string_view>

#include "trovenu/platform/print_format.h"
#include "trovenu/support/date_number.h"
#include "trovenu/support/korean.h"

namespace trovenu {
namespace {

constexpr int kPathWidth = 200;
constexpr int kTextWidth = 50;

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

void PutText(std::span<char> field, std::string_view text) { text.copy(field.data(), field.size()); }

template <int kColumn, int kDecimals>
void Number(std::span<char> field, const SVector *history, int trade) {
  PutPlainFixed(field, history[kColumn][trade], kDecimals);
}

// A factor as the percentage by which it differs from 1.
template <int kColumn>
void Percent(std::span<char> field, const SVector *history, int trade) {
  PutPlainFixed(field, history[kColumn][trade] * 100.0 - 100.0, 2);
}

// A number at or above 0 with so many digits at least.
std::string_view DigitsOf(long number, std::size_t count, std::span<char, 16> buffer) {
  std::size_t begin = buffer.size();
  for (std::size_t i = 0; i < count || number > 0; ++i, number /= 10) {
    buffer[--begin] = static_cast<char>('0' + number % 10);
  }
  return {buffer.data() + begin, buffer.size() - begin};
}

template <int kColumn>
void Day(std::span<char> field, const SVector *history, int trade) {
  char buffer[16];
  PutText(field, DigitsOf(std::max(GetLongDate(history[kColumn][trade]), 0L), 8, buffer));
}

template <int kColumn>
void Time(std::span<char> field, const SVector *history, int trade) {
  const double date = history[kColumn][trade];
  char buffer[16];
  std::string text(DigitsOf(GetHour(date), 2, buffer));
  text += ':';
  text += DigitsOf(GetMinute(date), 2, buffer);
  PutText(field, text);
}

bool IsLong(const SVector *history, int trade) { return history[kTradeSide][trade] == double{kLongSide}; }

void TradeNumber(std::span<char> field, const SVector * /*history*/, int trade) {
  PutPlainFixed(field, trade + 1.0, 0);
}

void EntryType(std::span<char> field, const SVector *history, int trade) {
  PutText(field, IsLong(history, trade) ? "매수진입"_kr : "매도진입"_kr);
}

void ExitType(std::span<char> field, const SVector *history, int trade) {
  const bool open = history[kTradeExitDate][trade] == 0.0;
  if (IsLong(history, trade)) {
    PutText(field, open ? "매수유지"_kr : "매수청산"_kr);
  } else {
    PutText(field, open ? "매도유지"_kr : "매도청산"_kr);
  }
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
