#pragma once

#include "trovenu/formula/calc.h"
#include "trovenu/indicator/index_property.h"

namespace trovenu {

struct SFunction;
class SFunctionList;
class SPriceData;

/// What `SIndex::CheckError` found.
struct TROVENU_API IndexError {
  /// Empty when nothing is wrong; code page.
  SString Message;
  /// 1 when the fault lies in the variables.
  int BlVariable = 0;
  /// The expression of a parenthesis fault, else 0.
  int ExpIndex = 0;
};

/// The condition that `SIndex::ConvBlackBoxToExpression` makes of an indicator.
enum TypeBlackBox : int {
  /// Crosses a level.
  BlackBoxCross = 0,
  /// Lies above or below a level.
  BlackBoxLevel = 1,
  /// Lies between two levels.
  BlackBoxBand = 2,
  BlackBoxNone3 = 3,
  BlackBoxNone4 = 4,
  /// Turns.
  BlackBoxTurn = 5,
  /// Runs on for two bars.
  BlackBoxTrend = 6,
};

/// The eight series that formulas read, in the order of `SetVariable`.
inline constexpr int kInputSeries = 8;

/// One object of a chart that draws on formulas: an indicator, a condition, patterns, a trading system, a
/// candle scan, or a series fed from outside.
///
/// The usual order: construct or `ReadExpression`; `SetData` or `SetVariable`, `SetFunction`; `Calc`; on each
/// tick `CalcLast`; on new data `ClearData`, `SetCalcInit`, `Calc`. A slot outside 0 to 4 is ignored
/// everywhere. An object belongs to one thread at a time, and so do the series that it is bound to.
class TROVENU_API SIndex : public SIndexProp {
 public:
  explicit SIndex(const char *name = "", int type = kIndicatorIndex);
  /// Series, function list and price sets stay shared; everything else is copied by value.
  SIndex(const SIndex &) = default;
  SIndex &operator=(const SIndex &) = default;
  ~SIndex() override = default;

  /// `SetToDefault`, and the run-time members: no functions, no base for live updates, everything to be drawn
  /// anew.
  void SetDefaultValue();

  /// \name Binding
  /// @{

  /// Reads the series of the symbol with that ID, or of the first one if there is none. A null list changes
  /// nothing. To be called again when the list has reallocated its entries.
  void SetData(SPriceDataList *list, int symbolId);
  /// Binds the series one by one; they are not owned.
  void SetVariable(SVector &close, SVector &open, SVector &high, SVector &low, SVector &volume, SVector &date,
                   SVector &openInterest, SVector &amount);
  void SetFunction(SFunctionList *list);
  /// The patterns of a candle scan; not owned.
  void SetCandle(SFunctionList *list);
  /// Position of the symbol in the price sets; 0 without sets or without that symbol.
  int GetCurIndex() const;
  /// The symbol's data; null without price sets.
  SPriceData *GetCurPriceData() const;
  /// The object's own dates if it has any, else those of the symbol; null without both.
  SVector *GetDate();
  /// The kind of bar of the object's own dates if it has any, else that of the symbol.
  int GetChartPeriod() const;
  /// @}

  /// \name Calculation
  /// @{

  /// Calculates everything anew. Signals of conditions and trading systems become the close of their bar.
  void Calc();
  /// Brings the results up to the newest bar. Formulas that look at a window of bars compute their tail
  /// alone; the others, and every formula the first time, are computed in full.
  void CalcLast();
  /// Forgets the base of live updates, for data that were replaced.
  void SetCalcInit();
  /// Makes entries and exits of a trading system alternate. A signal is a value that is neither 0 nor NaN.
  void PreProcess();
  /// Marks the patterns of the candle list: the number of the last pattern that fits on each bar.
  /// Required: bars without a pattern hold -1.0 after a full scan and 0.0 where a live update has redone
  /// them.
  void CalcCandlePattern();
  /// @}

  /// \name Non-time charts
  /// Each turns the bound closes into the chart type of that name and writes it into `ExpData`;
  /// `docs/charts.md` explains the types. Nonzero `automatic` first sets the parameters, which stand in
  /// `VarValue`, from the data; what was really used is written back there where a comment says so.
  /// Everything is calculated anew. The results start at index 0 and have an entry for each element of the
  /// chart; those that are not named stay empty. An unbound series counts as empty; closes without a value
  /// other than 0 give empty results, and so does a walk of more than 10,000,000 boxes, bricks, steps or
  /// bands, or one whose step is too small to move the price.
  /// @{

  /// Point and figure. Variable 0 is the number of boxes of a reversal (3 for text that is no number; 0 is
  /// replaced by 3), variable 1 the box size (1; 0 by 1; one below the tick size by 50 ticks). Automatic: 3,
  /// and 2 percent of the first close, rounded. Results, by column: date and position of the bar that closed
  /// it, price where it starts, price where it ends.
  void CalcPnF(int automatic);
  /// Kagi. Variable 0 is the price distance of a reversal; 0 and text that is no number count as 1 and stay.
  /// Automatic: 5 percent of the first close, rounded. Results, by line: date and position of the bar where
  /// it ended, price where it starts, price where it ends.
  void CalcKagi(int automatic);
  /// Renko. Variable 0 is the brick size; 0 and text that is no number are replaced by 1, a size below the
  /// tick size by 100 ticks. Automatic: 4 percent of the first close, rounded. Results, by brick: date and
  /// position of the bar that made it, price where it starts, price where it ends.
  void CalcRenko(int automatic);
  /// Three-line break. Variable 0 is the number of lines that a reversal must break; 0 and text that is no
  /// number are replaced by 3. Automatic: 3. Results, by line: date and position of the bar that made it,
  /// price where it starts, price where it ends. Variable 1 receives the price of the next reversal as last
  /// computed, 0 without a line; it stays where the results stay empty for want of closes.
  void CalcThreeLineBreak(int automatic);
  /// The smallest of `edges` (the largest if `up` is 0) over the last `lines` positions before `count`.
  /// Required: none before the start index of close, a bound taken from another series. The newest edge,
  /// position `count` - 1, where that leaves none.
  double MakeChangeValue(int up, SVector &edges, int count, int lines);
  /// A swing chart is a Kagi line by another name.
  void CalcSwing(int automatic);
  /// Counter-clock curve. Variable 0 is the period N (25 for text that is no number; 0 is replaced by 20).
  /// Automatic: 20. Results, by bar: date, position, N-bar average of close, N-bar average of volume, the
  /// first two with start index N - 1. `Expression` and `ConvExpression` 2 and 3 become the formulas of the
  /// averages. Required: the first two are not emptied, so a second run appends to them.
  void CalcCounterClock(int automatic);
  /// Candle volume. The argument is not used. One result: the width of each bar's candle from the start index
  /// of close on. Required: the volume times the average volume, not divided by it.
  void CalcCandleVolume(int);
  /// Volume at price over the bars from `first` to `last`, both included. Variable 0 is the number of bands
  /// (15 for text that is no number); below 2 nothing changes, not even the results. Automatic: 15. Results,
  /// by band: lower edge, upper edge, volume, its share of the largest band's volume, its share of the whole.
  /// All zeros where the closes are all equal. Over a range without a bar the edges run from 1e38 to -1e38.
  void CalcVolumeAtPrice(int automatic, int first, int last);
  /// Market profile. The argument is not used. Variable 0 is the length of a time block in minutes, 15 at
  /// least; it is never written. Results, by bar: date; letter (65 for 'A'), or 0 for a close that its block
  /// already has; 1 at the first entry of a day; volume and number of bars of that close in that block, on
  /// its first entry. Required: over closes with a start index above 0 the entries are shifted and cut; see
  /// `docs/charts.md`.
  void CalcMarketProfile(int);
  /// ZigZag line. Variable 0 is the percentage of a reversal (5 for text that is no number), limited to 1 to
  /// 50 for the run. Automatic: 5 percent of the first close, rounded, and read as a percentage all the same.
  /// Results, by bar up to the last extreme: date, the first one twice and the others one entry late; the
  /// close at turning points, 0 elsewhere.
  void CalcZigZagLine(int automatic);
  /// ZigZag ladder: the same turns as steps of price. Variable 0 as in `CalcZigZagLine`. Results, by step:
  /// date and position of the bar that made it, price, and that price again at the first step of a new leg,
  /// else 0.
  void CalcZigZagOrgLine(int automatic);
  /// @}

  /// \name Search over symbols: `GetMinDataSize` once for a formula, then `CalcSrch` for each symbol
  /// @{

  /// The number of bars that the formulas need before their first valid value; 2147483647 for a faulty
  /// formula, and for one that has no valid bar without data. Compiles the formula of slot 0 for `CalcSrch`,
  /// with the user functions and the series that are bound now. The results are empty afterwards.
  int GetMinDataSize();
  /// Runs the compiled formula over what the series hold now. Leaves `ExpData[0]` as it was if slot 0 has no
  /// formula. Required: slot 0 alone, since a search has one formula.
  void CalcSrch();
  /// @}

  /// \name Formulas
  /// @{

  /// Fills the values of the variables into the formula of one slot, or of all.
  void ConvertExpression(int slot);
  void ConvertExpression();
  /// Looks for faults of variables and parentheses; trims names, values and formulas on the way.
  /// Required: a variable without a name needs a value, so that an object with unused variables is refused.
  IndexError CheckError();
  /// Removes comments. Required: the closing mark of a block comment stays.
  static void SkipComments(SString &text);
  /// Removes control characters and blanks from a buffer, and returns it.
  static char *ProcessString(char *text);
  /// Turns the last statement of a formula into a condition. `params` are three numbers: a direction, 0 or
  /// not, and two levels.
  void ConvBlackBoxToExpression(int slot, TypeBlackBox kind, const double *params);
  /// @}

  /// \name Formula tables
  /// Each returns 1 when the formula was found and read, or written, else 0 with the object as it was.
  /// @{
  int ReadExpression(const char *name, SString indexFile, SString userFile);
  /// As `ReadExpression`; a line of an indicator with a formula and a name becomes visible.
  int ReadExpForConv(const char *name, SString indexFile, SString userFile);
  /// Appends a record for a `mode` of 1, else updates the one of that name; in the user's table unless
  /// `toSystem`.
  int WriteExpression(const char *name, int mode, int toSystem);
  /// Required: does nothing and gives 0.
  int ReadIndex(const char *name);
  /// @}

  /// \name Results
  /// @{
  void AddData(int slot, double value);
  /// Overwrites the newest value; ignored for an empty series.
  void UpdateData(int slot, double value);
  void ClearData();
  /// Largest value of the visible lines, -1e38 without one.
  double GetMax() const;
  /// Smallest value of the visible lines, 1e38 without one. A line of form 1 takes the range down to 0.
  double GetMin() const;
  /// The same over a range of bars; notes whether a line's range must be worked out anew.
  double GetMax(int first, int last, int mode);
  double GetMin(int first, int last, int mode);
  void SetDrawRange(int first, int last);
  void SetMinMaxChanged(int changed);
  void SetUserMinMax(double least, double most);
  /// @}

  /// \name Looks
  /// @{
  void SetExpName(int slot, const char *name);
  void SetExpression(int slot, const char *text);
  void SetLineStyle(int slot, int type, unsigned long color, int width, int style);
  void SetLineCompStyle(int slot, unsigned long up, unsigned long down, const char *upValue,
                        const char *downValue, int method);
  void SetBaseLineValue(int slot, double value);
  void SetBaseLineStyle(unsigned long color, int width, int style);
  void SetShape(int slot, int shape);
  /// A mode outside 0 to 3 counts as 0.
  void SetScale(int mode);
  void SetUseLog(int use);
  void SetUseInvert(int use);
  void SetShareIndex(int index);
  void SetUserID(int id);
  void SetMovable(int movable);
  void SetDeletable(int deletable);
  /// @}

  /// \name Texts of the chart, in the code page
  /// A line outside 0 to 4 gives an empty text.
  /// @{
  SString GetExpName(int line) const;
  SString GetExpNameWithVariable(int line) const;
  SString GetExpNameWithValue(int line, int position) const;
  SString GetExpTitleName(int line) const;
  SString GetExpTitle(int showName, int showValue, int showSymbol, int line, int position) const;
  SString GetExpValue(int line, int position) const;
  SString GetIndexVariable() const;
  int GetMaxExpNameLength() const;
  SString GetPriceName() const;
  SString GetPriceTitle(int showName, int showValue, int position) const;
  SString GetPriceValue(int position) const;
  /// @}

  /// The text Period of a condition's record.
  SString Period;
  /// Start index of each result when it was first computed in full by `CalcLast`; -1 until then.
  int CalcStart[kExpressions];
  /// -1 while a slot has no base for live updates.
  int CalcCount[kExpressions];
  /// Whether `PreProcess` does its work.
  int BlPreProcess = 1;
  /// Set when the Y range must be worked out anew.
  int BlMinMaxChanged = 1;
  /// Close, open, high, low, volume, date, open interest, amount; not owned.
  SVector *Variable[kInputSeries] = {};
  SFunctionList *FunctionList = nullptr;
  /// Names of the user functions that the last `Calc` called.
  SAnsiStringList FuncHistory;
  SFunctionList *CandleList = nullptr;
  /// The compiled formula of a search. That of a copy doesn't run: call `GetMinDataSize` on the copy.
  SCalc SearchCalc;
  /// Result of the last `CheckError`.
  IndexError LastError;

 private:
  void Bind(SCalc &calc) const;
  bool IsFedFromOutside() const;
  void MarkPrices(SVector &series, int from) const;
  int ReadRecord(const char *name, SString indexFile, SString userFile, bool showNamedLines);

  static constexpr unsigned kReadsUnknown = 0xffffffffU;

  void LoadPattern(const SFunction &pattern, SCalc &calc);

  // Bit i of entry j: formula j reads a variable that formula i has assigned.
  unsigned reads_[kExpressions];
};

}  // namespace trovenu
