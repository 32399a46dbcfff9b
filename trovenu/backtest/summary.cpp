#include <algorithm>
#include <utility>

#include "trovenu/backtest/signals.h"
#include "trovenu/backtest/simulation.h"
#include "trovenu/backtest/summary_figures.h"
#include "trovenu/support/date_number.h"
#include "trovenu/support/korean.h"
#include "trovenu/support/number_text.h"

namespace trovenu {

namespace {

constexpr int kAllTrades = -1;
// The width that texts of figures are asked for; they are not filled up to it.
constexpr int kWidth = 15;
constexpr int kMoneyDecimals = 2;

struct Cell {
  const char *label = "";
  Figure Figures::*figure = nullptr;
  int decimals = 0;
};

struct Row {
  const char *block;
  const char *title;
  Cell left;
  Cell right;
};

// Required: the titles "거래 횟수" and "거래횟수" are two.
constexpr Row kRows[] = {
    {"0", "손익 요약"_kr, {"총손익"_kr, &Figures::total, 2}, {"Profit Factor", &Figures::profitFactor, 2}},
    {"0", "손익 요약"_kr, {"총수익"_kr, &Figures::grossProfit, 2}, {"총손실"_kr, &Figures::grossLoss, 2}},
    {"1", "거래 횟수"_kr, {"총거래횟수"_kr, &Figures::trades, 0}, {"승률"_kr, &Figures::winRatio, 2}},
    {"1", "거래횟수"_kr, {"수익 거래수"_kr, &Figures::wins, 0}, {"손실 거래수"_kr, &Figures::losses, 0}},
    {"1",
     "거래횟수"_kr,
     {"수익 거래 평균 봉 갯수"_kr, &Figures::winBars, 1},
     {"손실 거래 평균 봉 갯수"_kr, &Figures::lossBars, 1}},
    {"2",
     "최대 손익"_kr,
     {"최대 수익"_kr, &Figures::largestWin, 2},
     {"최대 손실"_kr, &Figures::largestLoss, 2}},
    {"2",
     "최대 손익"_kr,
     {"최대 연속 수익 금액"_kr, &Figures::bestRun, 2},
     {"최대 연속 손실 금액"_kr, &Figures::worstRun, 2}},
    {"2",
     "최대 손익"_kr,
     {"최대 연속 수익 거래"_kr, &Figures::longestWinning, 0},
     {"최대 연속 손실 거래"_kr, &Figures::longestLosing, 0}},
    {"2", "최대 손익"_kr, {"최대 손실폭"_kr, &Figures::drawdown, 2}, {}},
    {"3",
     "평균 손익"_kr,
     {"평균 수익"_kr, &Figures::averageWin, 2},
     {"평균 손실"_kr, &Figures::averageLoss, 2}},
    {"3",
     "평균 손익"_kr,
     {"평균 거래 손익"_kr, &Figures::averageProfit, 2},
     {"표준편차"_kr, &Figures::deviation, 2}},
    {"3", "평균 손익"_kr, {"평균 수익/평균 손실"_kr, &Figures::winLossRatio, 2}, {}},
    {"4",
     "효율성"_kr,
     {"진입효율성"_kr, &Figures::entryEfficiency, 2},
     {"청산효율성"_kr, &Figures::exitEfficiency, 2}},
    {"4", "효율성"_kr, {"전체효율성"_kr, &Figures::totalEfficiency, 2}, {}},
};

constexpr const char *kGroupNames[] = {"전체 거래"_kr, "매수 거래"_kr, "매도 거래"_kr};

SString TextOf(const Figure &figure, int decimals) {
  return figure ? FloatToStrF(*figure, kWidth, decimals) : SString();
}

SString TextOf(const Cell &cell, const Figures &figures) {
  return cell.figure != nullptr ? TextOf(figures.*cell.figure, cell.decimals) : SString();
}

Tally TallyOf(const SVector *history, int side) {
  Tally tally;
  const double wanted = side;
  for (int i = 0; i < history[kTradeSide].GetSize(); ++i) {
    if (side != kAllTrades && history[kTradeSide][i] != wanted) continue;
    tally.Take(history[kTradeProfitLoss][i], history[kTradeBarsHeld][i], history[kTradeEntryEff][i],
               history[kTradeExitEff][i]);
  }
  return tally;
}

double LargestDrawdown(const SVector &equity) {
  double peak = equity[0];
  double largest = 0.0;
  for (int i = 0; i < equity.GetSize(); ++i) {
    peak = std::max(peak, equity[i]);
    largest = std::max(largest, peak - equity[i]);
  }
  return largest;
}

// The standard deviation of all profits as a population.
double DeviationOf(const SVector &profits) {
  SVector deviation;
  deviation.CalcStdev(profits, profits.GetSize());
  const SVector &result = deviation;
  return result[result.GetSize() - 1];
}

SString CostText(double cost, int mode) {
  SString text = FloatToStrF(mode == 0 ? cost * 100.0 : cost, kWidth, kMoneyDecimals);
  text += mode == 0 ? "%" : "원"_kr;
  return text;
}

// The name with the values of the variables, as "ma(5,20)".
SString NameWithValues(const SIndex &index) {
  SString name = index.IndexName;
  for (int i = 0; i < kVariables && !index.VarName[i].IsEmpty(); ++i) {
    if (i == 0) name += "(";
    name += index.VarValue[i];
    // Required: behind the tenth variable the first value is taken for the next name, so with ten the text
    // ends in ",".
    const SString &next = i + 1 < kVariables ? index.VarName[i + 1] : index.VarValue[0];
    name += next.IsEmpty() ? ")" : ",";
  }
  return name;
}

SString TermText(const SVector &dates) {
  const double first = dates[0];
  const double last = dates[dates.GetSize() - 1];
  return FormatValue("%04d.%02d.%02d ~ %04d.%02d.%02d", GetYear(first), GetMonth(first), GetDate(first),
                     GetYear(last), GetMonth(last), GetDate(last));
}

const char *StatusText(const SVector *history) {
  const int trades = history[kTradeSide].GetSize();
  if (trades == 0) return "거래 없음"_kr;
  const bool isLong = history[kTradeSide][trades - 1] == 0.0;
  const bool isOpen = history[kTradeExitDate][trades - 1] == 0.0;
  if (isOpen) return isLong ? "매수"_kr : "매도"_kr;
  return isLong ? "매수청산"_kr : "매도청산"_kr;
}

// Bars from the entries to the exits of a side; a position that is still open counts up to `bars`.
long long BarsInMarket(const SVector &entries, const SVector &exits, int bars) {
  long long count = 0;
  int entry = NextSignal(entries, std::max(0, entries.GetStartIndex()));
  while (entry >= 0) {
    const int exit = NextSignal(exits, entry + 1);
    if (exit < 0) return count + bars - entry;
    count += exit - entry;
    entry = NextSignal(entries, exit + 1);
  }
  return count;
}

SString InMarketText(const SSimulation &simulation) {
  const int bars = BarsOf(simulation.Close).GetSize();
  if (bars <= 0) return "";
  const int position = simulation.Setting.Position;
  const SVector *rules = simulation.Index.ExpData;
  long long count = 0;
  // Required: a Position that is none of the three counts no bar.
  if (position == kLongOnly || position == kBothSides) {
    count += BarsInMarket(rules[kLongEntry], rules[kLongExit], bars);
  }
  if (position == kShortOnly || position == kBothSides) {
    count += BarsInMarket(rules[kShortEntry], rules[kShortExit], bars);
  }
  return FloatToStrF(static_cast<double>(count) / bars * 100.0, kWidth, 2);
}

// As `SString` prints numbers, not as the rows do.
SString PlainText(const Figure &figure) {
  SString text;
  if (figure) text = *figure;
  return text;
}

SSummaryInfo RunRecord(const SSimulation &simulation, const Figures &figures, int trades) {
  const SSimulationSetting &setting = simulation.Setting;
  SSummaryInfo info;
  info.SumFileName = simulation.IndividualSummaryFileName;
  info.TradeListFileName = simulation.TradingHistoryFileName;
  info.SymbolName = setting.SymbolName;
  info.IndicatorName = NameWithValues(simulation.Index);
  info.Term = TermText(BarsOf(simulation.Date));
  info.Status = StatusText(simulation.History);
  info.EntryCommission = CostText(setting.EntryCommission, setting.ModeEntryCommission);
  info.ExitCommission = CostText(setting.ExitCommission, setting.ModeExitCommission);
  info.Slippage = CostText(setting.Slippage, setting.ModeSlippage);
  info.TotalProfit = TextOf(figures.total, kMoneyDecimals);
  info.TransactionCount = trades;
  info.WinLossRatio = PlainText(figures.winLossRatio);
  info.WinRatio = PlainText(figures.winRatio);
  info.ProfitFactor = PlainText(figures.profitFactor);
  info.AverageProfit = TextOf(figures.averageProfit, kMoneyDecimals);
  info.InMarketRatio = InMarketText(simulation);
  return info;
}

}  // namespace

void SSimulation::SetSummary() {
  CalcSummary(kAllTrades);
  for (int side = GetStartMode(); side <= GetEndMode(); ++side) CalcSummary(side);
}

void SSimulation::CalcSummary(int side) {
  if (side < kAllTrades || side > kShortSide) return;
  const Tally tally = TallyOf(History, side);
  Figures figures(tally);
  SVector equity;
  CalcEquity(&equity, side);
  figures.drawdown = -LargestDrawdown(equity);
  // Required: every group shows the deviation of all trades.
  figures.deviation = DeviationOf(History[kTradeProfitLoss]);

  int sequence = 0;
  for (const Row &row : kRows) {
    SSummary shown;
    shown.GroupID = side + 1;
    shown.GroupName = kGroupNames[side + 1];
    shown.SubGroupID = row.block;
    shown.SubGroupName = row.title;
    shown.Sequence = sequence++;
    shown.Name1 = row.left.label;
    shown.Value1 = TextOf(row.left, figures);
    shown.Name2 = row.right.label;
    shown.Value2 = TextOf(row.right, figures);
    InsertSummary(std::move(shown));
  }
  if (side != kAllTrades) return;
  SummaryInfo = RunRecord(*this, figures, tally.trades);
  InsertSummaryDB(SummaryInfoFileName, SummaryInfo);
}

void SSimulation::InsertSummary(SSummary row) {
  if (SummaryCount >= 0 && SummaryCount < kSummaryRows - 1) SummaryRows[SummaryCount++] = std::move(row);
}

void SSimulation::WriteSummary() {}

}  // namespace trovenu
