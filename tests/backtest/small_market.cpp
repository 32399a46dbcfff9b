#include "tests/backtest/small_market.h"

#include <sstream>

namespace trovenu::tests {

SmallMarket::SmallMarket(const std::vector<Bar> &bars) {
  for (const Bar &bar : bars) {
    open.Add(bar.open);
    high.Add(bar.high);
    low.Add(bar.low);
    close.Add(bar.close);
    volume.Add(10.0);
    date.Add(date.GetSize() + 1);
    openInterest.Add(0.0);
    amount.Add(0.0);
  }
  SIndex rules("rules", kSystemIndex);
  test.SetIndex(rules);
  test.SetVariablePointer(&close, &open, &high, &low, &volume, &date, &openInterest, &amount);
  test.TickSize = 1.0;
  test.Setting.EntryCommission = test.Setting.ExitCommission = test.Setting.Slippage = 0.0;
  for (int rule = 0; rule < kRules; ++rule) Fire(static_cast<RuleSeries>(rule), {});
}

void SmallMarket::Fire(RuleSeries rule, std::initializer_list<int> at) {
  SVector &series = test.Index.ExpData[rule];
  if (series.GetSize() < close.GetSize()) series = SVector(close.GetSize());
  for (const int bar : at) series[bar] = close[bar];
}

void SmallMarket::Run() {
  test.SetHistoryToZero();
  test.ProcessStop(nullptr);
  test.Index.PreProcess();
  test.SetHistory();
}

std::string SmallMarket::Trades() {
  const auto &table = test.History;
  std::ostringstream text;
  for (int i = 0; i < table[kTradeSide].GetSize(); ++i) {
    const int side = static_cast<int>(table[kTradeSide][i]);
    const int entry = date.FindPos(table[kTradeEntryDate][i], 0);
    const int exit = date.FindPos(table[kTradeExitDate][i], 0);
    text << (i > 0 ? " " : "") << (side == kLongSide ? 'L' : 'S') << entry << '-';
    exit < 0 ? text << "end" : text << exit;
    text << '@' << table[kTradeExitPrice][i];
    const int stop = static_cast<int>(test.Index.ExpData[2 * side + 1][exit] / kStopScale);
    if (stop > 0) text << '#' << stop;
  }
  return text.str();
}

std::string SmallMarket::RunTrades() {
  Run();
  return Trades();
}

}  // namespace trovenu::tests
