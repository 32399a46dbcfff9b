#include <algorithm>
#include <cmath>
#include <span>
#include <utility>
#include <vector>

#include "trovenu/backtest/signals.h"
#include "trovenu/backtest/simulation.h"
#include "trovenu/backtest/trade_order.h"

namespace trovenu {
namespace {

// The extremes of a trade's prices so far, its entry price to begin with.
struct PriceRange {
  double high;
  double low;

  void Add(double barHigh, double barLow) {
    if (barHigh > high) high = barHigh;
    if (barLow < low) low = barLow;
  }
};

// Puts a value into the newest row of a column.
void PutLast(SVector &column, double value) { column.Update(value, 0); }

// The excursions of the newest trade, with its entry and exit prices.
void PutExcursions(SVector (&table)[kTradeColumns], int side, double entry, double exit,
                   const PriceRange &range) {
  const bool isLong = side == kLongSide;
  PutLast(table[kTradeRunup], isLong ? range.high - entry : entry - range.low);
  PutLast(table[kTradeDrawdown], isLong ? range.low - entry : entry - range.high);
  if (range.high == range.low) return;
  const double width = range.high - range.low;
  PutLast(table[kTradeEntryEff], (isLong ? range.high - entry : entry - range.low) / width * 100.0);
  PutLast(table[kTradeExitEff], (isLong ? exit - range.low : range.high - exit) / width * 100.0);
  PutLast(table[kTradeTotalEff], (isLong ? exit - entry : entry - exit) / width * 100.0);
}

// Brings a column into the given order of its rows.
void Reorder(SVector &column, std::span<const int> order) {
  const SVector before = column;
  const int rows = std::min(before.GetSize(), static_cast<int>(order.size()));
  for (int i = 0; i < rows; ++i) column[i] = before[order[static_cast<std::size_t>(i)]];
}

}  // namespace

void SSimulation::SetHistoryToZero() {
  for (SVector &column : History) column.SetSize(0);
}

int SSimulation::GetStartMode() const { return Setting.Position == kShortOnly ? kShortSide : kLongSide; }

int SSimulation::GetEndMode() const {
  return Setting.Position == kShortOnly || Setting.Position == kBothSides ? kShortSide : kLongSide;
}

double SSimulation::GetResult(int series, int bar) const {
  if (series < 0 || series >= kExpressions) return 0.0;
  return std::fmod(SignalAt(Index.ExpData[series], bar), kStopScale);
}

void SSimulation::SetHistory() {
  const SVector &close = BarsOf(Close);
  const SVector &high = BarsOf(High);
  const SVector &low = BarsOf(Low);
  const SVector &date = BarsOf(Date);
  const int quantity = Setting.ModeVolume != 0 ? 1 : Setting.TradeVolume;
  for (int side = GetStartMode(); side <= GetEndMode(); ++side) {
    const int entryRule = 2 * side;
    const int exitRule = entryRule + 1;
    const SVector &entries = Index.ExpData[entryRule];
    const SVector &exits = Index.ExpData[exitRule];
    for (int i = std::max(entries.GetStartIndex(), 0); i < entries.GetSize(); ++i) {
      if (!HasSignal(entries, i)) continue;
      const double entry = GetResult(entryRule, i);
      History[kTradeSide].Add(side);
      History[kTradeEntryDate].Add(date[i]);
      History[kTradeEntryPrice].Add(entry);
      History[kTradeEntryCost].Add(EntryPrice(entry, side));
      History[kTradeExitDate].Add(0.0);
      History[kTradeExitPrice].Add(entry);
      History[kTradeExitCost].Add(ExitPrice(entry, side));
      History[kTradeQuantity].Add(quantity);
      for (const TradeColumn column :
           {kTradeRunup, kTradeDrawdown, kTradeEntryEff, kTradeExitEff, kTradeTotalEff, kTradeBarsHeld}) {
        History[column].Add(0.0);
      }
      PriceRange range = {entry, entry};
      for (int j = i + 1; j < exits.GetSize(); ++j) {
        range.Add(high[j], low[j]);
        const bool signal = HasSignal(exits, j);
        if (!signal && j < exits.GetSize() - 1) continue;
        const double exit = signal ? GetResult(exitRule, j) : close[j];
        // Required: the end of the data closes a trade without costs.
        const double exitCost =
            signal ? ExitPrice(exit, side) : (BlPointUnit != 0 ? exit : BigPointValue * exit);
        if (signal) PutLast(History[kTradeExitDate], date[j]);
        PutLast(History[kTradeExitPrice], exit);
        PutLast(History[kTradeExitCost], exitCost);
        PutExcursions(History, side, entry, exit, range);
        PutLast(History[kTradeBarsHeld], j - i);
        if (signal) i = j;
        break;
      }
    }
  }
  SortHistory();
  SetHistoryResults();
}

// The results run over the whole table, also over rows of an earlier call.
void SSimulation::SetHistoryResults() {
  for (int column = kTradeProfitLoss; column <= kTradeCumProfitLossRatio; ++column) {
    History[column].SetSize(0);
  }
  double profitSoFar = 0.0;
  double factor = 1.0;
  for (int k = 0; k < History[kTradeSide].GetSize(); ++k) {
    const double entry = History[kTradeEntryCost][k];
    const double quantity = History[kTradeQuantity][k];
    const double gain = (History[kTradeExitCost][k] - entry) * quantity;
    const double profit = History[kTradeSide][k] == double{kLongSide} ? gain : -gain;
    const double capital = BlMargin != 0 ? Margin : entry * quantity;
    const double ratio = (capital == 0.0 ? 0.0 : profit / capital) + 1.0;
    if (k == 0) {
      profitSoFar = profit;
      factor = ratio;
    } else {
      profitSoFar = profit + profitSoFar;
      factor = BlMargin != 0 ? ratio - 1.0 + factor : ratio * factor;
    }
    History[kTradeProfitLoss].Add(profit);
    History[kTradeProfitLossRatio].Add(ratio);
    History[kTradeCumProfitLossRatio].Add(factor);
    // Required: in volume mode 1 the column holds percent.
    History[kTradeCumProfitLoss].Add(Setting.ModeVolume == 1 ? 100.0 * factor : profitSoFar);
  }
}

void SSimulation::SortHistory() {
  const SVector &dates = History[kTradeEntryDate];
  const std::span<const double> keys(dates.data, static_cast<std::size_t>(dates.GetSize()));
  const auto outOfOrder = [](double earlier, double later) { return !(earlier <= later); };
  if (std::ranges::adjacent_find(keys, outOfOrder) == keys.end()) return;
  const std::vector<int> order = ExchangeSortOrder(keys);
  for (SVector &column : History) Reorder(column, order);
}

void SSimulation::Interchange(int a, int b) {
  for (SVector &column : History) {
    const auto has = [&column](int row) { return row >= 0 && row < column.GetSize(); };
    if (has(a) && has(b)) std::swap(column[a], column[b]);
  }
}

}  // namespace trovenu
