#pragma once

#include "trovenu/backtest/setting.h"
#include "trovenu/backtest/summary_rows.h"
#include "trovenu/indicator/index.h"
#include "trovenu/platform/export.h"
#include "trovenu/support/series.h"
#include "trovenu/support/text.h"

namespace trovenu {

class CKqArchive;
class SFunctionList;

/// The results of `SSimulation::Index`: the rules of side s are 2s (entry) and 2s + 1 (exit).
enum RuleSeries : int {
  kLongEntry = 0,
  kLongExit = 1,
  kShortEntry = 2,
  kShortExit = 3,
  /// The running profit of `CalcProfitLoss`.
  kRunningProfit = 4,
};

inline constexpr int kRules = 4;

/// The sides of a trade: `kTradeSide`, and the argument `side` of the back-test.
enum TradeSide : int { kLongSide = 0, kShortSide = 1 };

/// Scale of the number of the stop in an exit value: stop number * kStopScale + fill price.
inline constexpr double kStopScale = 100000000.0;

/// The bar series that a back-test owns, in this order.
enum BarSeries : int {
  kCloseBars,
  kOpenBars,
  kHighBars,
  kLowBars,
  kVolumeBars,
  kDateBars,
  kAmountBars,
  kOpenInterestBars,
  kBarSeries,
};

/// The columns of the trade table `SSimulation::History`.
enum TradeColumn : int {
  /// 0 long, 1 short.
  kTradeSide,
  /// Date number of the entry bar.
  kTradeEntryDate,
  /// Fill price of the entry, and the same with its costs.
  kTradeEntryPrice,
  kTradeEntryCost,
  /// Date number of the exit bar; 0 for a trade that the end of the data closed.
  kTradeExitDate,
  /// Fill price of the exit, and the same with its costs.
  kTradeExitPrice,
  kTradeExitCost,
  kTradeQuantity,
  kTradeProfitLoss,
  /// 1 + return of the trade.
  kTradeProfitLossRatio,
  /// Running profit. Required: for a `ModeVolume` of 1 it is 100 times the running factor.
  kTradeCumProfitLoss,
  /// Running factor of the returns.
  kTradeCumProfitLossRatio,
  /// Largest excursion from the entry price in favour of the trade, 0 or above, and against it, 0 or below.
  kTradeRunup,
  kTradeDrawdown,
  /// Percent of the trade's range of prices that entry, exit and both gained; 0 where that range is 0.
  kTradeEntryEff,
  kTradeExitEff,
  kTradeTotalEff,
  /// Bars from entry to exit.
  kTradeBarsHeld,
  kTradeColumns,
};

/// Places of `SSimulation::SummaryRows`, the last of which stays unused.
inline constexpr int kSummaryRows = 200;

/// A back-test: the bars of one symbol, the rules, the settings, the trades and the summary.
///
/// A back-test is a chain of passes over whole series: `SetIndex`, settings, `TickSize`, `SetFunction`;
/// `SetVariable` or `SetVariablePointer`; `SetVariableToIndex`; `SetBigPointValue`, `SetMargin`;
/// `Index.Calc()`; then `SummaryCount` = 0; `SetHistoryToZero`; `ProcessStop(nullptr)`; `Index.PreProcess()`;
/// `SetHistory`; `SetSummary`, which `TradeRules` does in one call. An object runs any number of back-tests
/// one after the other.
///
/// A signal is a bar on which a rule series is not 0, and the value is the price of the fill, for an exit by
/// a stop with `kStopScale` times the number of the stop on top. Past the end of a rule series, and where it
/// holds NaN, there is no signal. The two sides are separate books of at most one position each. `side` is a
/// `TradeSide`; `bar` counts from 0, the oldest bar. A series pointer that is null counts as an empty series.
class TROVENU_API SSimulation {
 public:
  SSimulation();
  /// Copies everything; the series pointers stay as they are.
  /// Required: a copy goes on pointing at the other object's own series until `SetVariable` is called on it.
  SSimulation(const SSimulation &) = default;
  ~SSimulation() = default;
  /// Required: narrower than the copy. The pointers and the own series of amount and open interest are left
  /// alone, and the own working dates become the other object's working volumes.
  SSimulation &operator=(const SSimulation &other);

  /// \name Settings
  /// @{

  /// All settings to their defaults; nothing else changes.
  void SetDefaultValue();
  /// Reads the section "SimulationConfigure" of an INI file. What the file lacks stays as it is.
  /// Required: `SignalAction` becomes 0 whatever the file holds.
  void ReadSetting(const char *fileName);
  void SaveSetting(const char *fileName) const;
  /// Reads the category "Simulation" of an archive. What it lacks gets its default; `SymbolName` and
  /// `DispSignalAction` are not stored and stay as they are.
  void Load(CKqArchive &archive);
  void Store(CKqArchive &archive) const;
  /// @}

  /// \name Binding
  /// @{

  /// Copies the bars into the working and the source series of the object, and points at those.
  void SetVariable(SVector &close, SVector &open, SVector &high, SVector &low, SVector &volume, SVector &date,
                   SVector &openInterest, SVector &amount);
  /// Points at the bars, both as working and as source series. They must outlive the back-test.
  void SetVariablePointer(SVector *close, SVector *open, SVector *high, SVector *low, SVector *volume,
                          SVector *date, SVector *openInterest, SVector *amount);
  /// Gives the working series and the function list to `Index`.
  void SetVariableToIndex();
  /// Copies the rules; a `kSystemIndex`.
  void SetIndex(SIndex &index);
  void SetFunction(SFunctionList *list);
  void SetSymbolName(SString name);
  void SetName(SString name);
  /// Money per point of price.
  void SetBigPointValue(double value);
  /// Capital per trade, from which on returns are measured by it.
  /// Required: nothing sets `BlMargin` back.
  void SetMargin(double margin);
  /// @}

  /// \name Signals and trades
  /// @{

  /// All passes that follow the calculation of the rules: the trade table and the summary rows begin anew.
  void TradeRules();
  /// Empties the trade table.
  void SetHistoryToZero();
  /// Appends the trades of the rule series, sorts the table, and computes the results of all its trades.
  void SetHistory();
  /// Orders the table by entry date, oldest first. Trades of equal date end in the order in which an exchange
  /// sort leaves them: for each i and each later j in turn, `Interchange(i, j)` if j is the earlier trade.
  void SortHistory();
  /// Swaps two trades in all columns. Nothing happens for a trade that is not in the table.
  void Interchange(int a, int b);
  /// The first and the last side that `Position` trades.
  int GetStartMode() const;
  int GetEndMode() const;
  /// The fill price of a signal: the value without the number of the stop. `series` is a `RuleSeries`; 0.0
  /// outside the series.
  double GetResult(int series, int bar) const;
  /// Rebuilds the working series close, open, high, low, volume and date from the source series, n bars to
  /// one, the last one of what is left. An n below 1 changes nothing.
  /// Required: a bar has the date of its first source bar.
  void CompressData(int n);
  /// @}

  /// \name Stops
  /// Each stop looks at one trade: `entryBar` is its entry, `*exitBar` and `*exitPrice` are its best exit so
  /// far. It returns 0 if it moved the exit, and -1 if not: so for a null `exitBar` or `exitPrice`, a side
  /// other than 0 and 1, and an entry outside the bars. A null index stands for `Index`. Bars past the newest
  /// one are not looked at.
  /// @{

  /// Writes stop exits into the exit series of an index, or of `Index` for null, and makes entries and exits
  /// alternate. An index that is given is first copied to `Index`. A stop past the end of its exit series
  /// makes that as long as the entry series, with zeros.
  /// Required: `MaxBarStop` takes no part.
  void ProcessStop(SIndex *index);
  /// Leaves at a loss from the entry.
  int MoneyManagementStop(SIndex *index, int side, int entryBar, int *exitBar, double *exitPrice);
  /// Leaves when a share of the best profit is lost again.
  /// Required: the entry price is that of series 0 for both sides, so 0 for most short trades.
  int RiskTrailingStop(SIndex *index, int side, int entryBar, int *exitBar, double *exitPrice);
  /// Leaves at a distance from the best price since the entry.
  int RiskTrailingStop2(SIndex *index, int side, int entryBar, int *exitBar, double *exitPrice);
  /// Leaves at a profit from the entry.
  int ProfitTargetStop(SIndex *index, int side, int entryBar, int *exitBar, double *exitPrice);
  /// Leaves a quiet market, at the close. It never moves the exit of a trade of `MinVariationStopCount` + 1
  /// bars or fewer, measured by its present exit. A count below 0 moves nothing.
  int MinVariationStop(SIndex *index, int side, int entryBar, int *exitBar, double *exitPrice);
  /// Leaves at the close of the first bar at or after the closing time.
  int DayTradingStop(SIndex *index, int side, int entryBar, int *exitBar, double *exitPrice);
  /// Leaves after `MaxBarStop` bars, at the close; the side does not matter.
  int MaxBarStop(SIndex *index, int side, int entryBar, int *exitBar, double *exitPrice);
  /// Moves the exit to `bar` if that is not after the present one, and returns 0, else -1.
  static int ProcessStopValue(int side, int bar, double price, int *exitBar, double *exitPrice);
  /// What a stop level is compared with: the close for a `StopLossType` of 0, else the low for side 0 and the
  /// high for another one.
  double GetExitCompValue(int side, int bar) const;
  /// The close.
  double GetEntryCompValue(int side, int bar) const;
  /// The fill of a stop: the close for a `StopLossType` of 0, else the level, or the open of a bar that opens
  /// beyond it.
  double GetStopLossValue(int side, int bar, double level) const;
  /// Direction 0 rounds up to a multiple of `TickSize`, 1 rounds down, any other changes nothing. NaN for a
  /// `TickSize` of 0.
  double RoundTickSize(int direction, double value) const;
  /// @}

  /// \name Costs and equity
  /// @{

  /// The price of a fill with commission and slippage, in points.
  double EntryPrice(double price, int side) const;
  /// Required: with `BlPointUnit` 0 the exit price is in money, while the entry price stays in points.
  double ExitPrice(double price, int side) const;
  /// Cost of one fill in the equity curve. Required: `ExitCommission` takes no part.
  double GetCommission(double price) const;
  /// Writes the running profit of the rules, in points and without volume, into result 4 of `Index`.
  void CalcProfitLoss();
  /// Appends the equity of one side (mode 0 long, 1 short) or of both (any other) to an empty series: bar by
  /// bar, in points and without volume.
  void CalcEquity(SVector *target, int mode);
  /// @}

  /// \name Statistics and summary
  /// @{

  /// Writes "mfe.csv" into the working folder: profit and largest excursions of each trade.
  void CalcStatics();
  /// `CalcSummary` of all trades, then of each traded side.
  void SetSummary();
  /// Appends the rows of all trades (-1), of the long (0) or of the short ones (1). For -1 it fills
  /// `SummaryInfo` too, and adds it to the run table at `SummaryInfoFileName` if there is one.
  void CalcSummary(int side);
  /// Appends a row; dropped when all but the last place of `SummaryRows` are taken.
  void InsertSummary(SSummary row);
  /// Does nothing; for hosts that call it.
  void WriteSummary();
  /// @}

  /// \name Result tables
  /// All fields are texts. Each returns 1, whatever came of it; a path that takes no file yields none. The
  /// folder must be there. Tables can be made again, so none of them waits for the disk.
  /// @{

  /// Makes an empty run table, one record a run, in place of one that may be there.
  int CreateSummaryDB(SString fileName);
  /// Adds a run. Nothing happens if there is no run table.
  int InsertSummaryDB(SString fileName, SSummaryInfo &info);
  /// Makes an empty summary table, one record a row.
  int CreateIndividualSummaryDB(SString fileName);
  /// Adds all rows of `SummaryRows`.
  int InsertIndividualSummaryDB(SString fileName);
  /// Makes an empty trade table, one record a trade.
  int CreateTradingHistoryDB(SString fileName);
  /// Adds all trades of `History`, with fill prices and returns in percent.
  int InsertTradingHistoryDB(SString fileName);
  /// Makes the summary table and the trade table of a run, filled, at their paths, each in one write.
  void WriteRunTables();
  /// @}

  /// \name Pages
  /// Each makes a page of the tables of a finished run, which it finds in the run table by the path of the
  /// run's own table, written as it stands there. A run that is not in the run table, or whose own
  /// table can't be read, yields no page. Pages are in the code page, appear whole or not at all, and show
  /// what tables hold as plain text. The forms that end in 2 are narrower, for print.
  /// @{
  static void SaveSummaryToHTML(SString runTable, SString summaryTable, SString outputFile);
  static void SaveSummaryToHTML2(SString runTable, SString summaryTable, SString outputFile);
  static void SaveTradeHistoryToHTML(SString runTable, SString tradeTable, SString outputFile);
  static void SaveTradeHistoryToHTML2(SString runTable, SString tradeTable, SString outputFile);
  /// @}

  /// Smallest step of price, which the host sets before stops are processed.
  double TickSize = 0.0;
  /// User functions of the rules; not owned.
  SFunctionList *FunctionList = nullptr;

  /// \name The bars that every pass reads; not owned
  /// @{
  SVector *Close = nullptr;
  SVector *Open = nullptr;
  SVector *High = nullptr;
  SVector *Low = nullptr;
  SVector *Volume = nullptr;
  SVector *Date = nullptr;
  SVector *Amount = nullptr;
  SVector *OpenInterest = nullptr;
  /// @}

  /// \name The bars that `CompressData` reads; not owned
  /// @{
  SVector *SourceClose = nullptr;
  SVector *SourceOpen = nullptr;
  SVector *SourceHigh = nullptr;
  SVector *SourceLow = nullptr;
  SVector *SourceVolume = nullptr;
  SVector *SourceDate = nullptr;
  SVector *SourceAmount = nullptr;
  SVector *SourceOpenInterest = nullptr;
  /// @}

  /// The object's own bars, by `BarSeries`.
  SVector WorkingBars[kBarSeries];
  SVector SourceBars[kBarSeries];
  /// The rules; results by `RuleSeries`.
  SIndex Index;
  /// 1: distances of stops in points, and exit prices, are points of price; 0: they are money.
  int BlPointUnit = 1;
  /// Money per point of price.
  double BigPointValue = 1.0;
  /// Whether returns are measured by `Margin`, else by the cost of the entry.
  int BlMargin = 0;
  double Margin = 1.0;
  /// The bar compressions that the search over time frames tries: first, last, step.
  int CompressStart = 1;
  int CompressEnd = 1;
  int CompressIncrement = 1;
  int Reserved = 0;
  SSimulationSetting Setting;
  /// Where hosts keep the settings.
  SString SettingFileName;
  /// The record of the last summary.
  SSummaryInfo SummaryInfo;
  SSummaryDetail SummaryDetail;
  /// Name of the tested system.
  SString Name;
  /// Rows in use; the host sets it to 0 before a run.
  int SummaryCount = 0;
  SSummary SummaryRows[kSummaryRows];
  /// A further row, the host's.
  SSummary SummaryTitle;
  /// The trade table: one series a `TradeColumn`, one element a trade.
  SVector History[kTradeColumns];
  /// Set to 1 by `ProcessStop` at the `RuleSeries` of an exit when a stop fell on the last bar of that
  /// series, or on the bar before it. Nothing sets them back.
  int StopOnLastBar[kRules] = {};
  int StopOnBarBeforeLast[kRules] = {};
  /// Whole paths of the result tables: all runs, the summary, the trades.
  SString SummaryInfoFileName;
  SString IndividualSummaryFileName;
  SString TradingHistoryFileName;

 private:
  void ProcessStopsOfSide(SIndex &index, int side);
  void SetHistoryResults();
};

}  // namespace trovenu
