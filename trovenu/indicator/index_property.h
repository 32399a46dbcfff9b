#pragma once

#include "trovenu/platform/export.h"
#include "trovenu/platform/theme.h"
#include "trovenu/support/series.h"
#include "trovenu/support/string_list.h"
#include "trovenu/support/text.h"

namespace trovenu {

class CKqArchive;
class SPriceDataList;

/// Expressions and variables of an indicator.
inline constexpr int kExpressions = 5;
inline constexpr int kVariables = 10;

/// What an `SIndexProp` is: its `IndexType`.
enum IndexKind : int {
  /// The price series of a symbol itself.
  kPriceIndex = -1,
  /// Up to five lines.
  kIndicatorIndex = 0,
  /// One expression, which marks the price.
  kConditionIndex = 1,
  /// A bull and a bear pattern.
  kPatternIndex = 2,
  /// Four rules: open long, close long, open short, close short.
  kSystemIndex = 3,
  /// A user function, in the formula table only.
  kFunctionIndex = 4,
  /// Series fed from outside.
  kFedIndex = 5,
  /// The equity curve, fed by the back-test.
  kEquityIndex = 6,
  /// Series fed from outside and shown like an indicator.
  kFedIndicatorIndex = 10,
  /// A scan for candle patterns.
  kCandleIndex = 30,
};

/// What of an indicator is stored: names, variables, formula texts, line styles, axis settings, and its
/// results.
///
/// Arrays of five belong to the expressions, arrays of ten to the variables. Members bear the names of their
/// keys, misspellings included.
class TROVENU_API SIndexProp {
 public:
  /// An indicator with its defaults; `UserID` and `ShareIndex` are -1, the three host flags 1.
  SIndexProp();
  virtual ~SIndexProp() = default;
  SIndexProp(const SIndexProp &) = default;
  SIndexProp &operator=(const SIndexProp &) = default;

  /// Sets the members that have a default; the colours of kinds 2 and 3 depend on the present `IndexType`.
  /// `UserID`, `ShareIndex`, the host flags, `IndexName`, `IndexType`, `ConvExpression`, the results and the
  /// lists stay.
  void SetToDefault();

  /// Reads or writes what a chart keeps of an indicator, not its formulas: category "Index", with `index`
  /// appended unless it is -1. A missing key gives the default of a new object.
  void Load(CKqArchive &archive, int index);
  void Store(CKqArchive &archive, int index) const;
  /// Position of a key in `RealKeys`, whatever its case, or -1.
  int FindRealKey(const char *key) const;

  /// The price sets that the object reads; not owned, null until `SIndex::SetData`.
  SPriceDataList *PriceDataList = nullptr;
  /// Kind of bar and units per bar of the object's own date axis.
  int ChartPeriod = 2;
  double ChartCycle = 1.0;
  /// Identity within an `SUserIndexList`; -1 for none.
  int UserID = -1;
  /// ID of the price set in `PriceDataList`.
  int SymbolID = 0;
  /// The host's tag.
  int ExtID = -1;
  /// The chart area that it shares; -1 for none.
  int ShareIndex = -1;
  int BlMovable = 1;
  int BlDeleble = 1;
  int BlPopupDlg = 1;
  /// Whether the line is visible, and counts in the Y range.
  int BlShowLine[kExpressions] = {};
  int Shape[kExpressions] = {};
  /// Number of the chart pane; -1 for none.
  int ChartNo = -1;
  /// Name of the formula, its key in the formula table.
  SString IndexName;
  SString VarName[kVariables];
  SString VarValue[kVariables];
  /// What the optimiser tries for each variable of a trading system.
  SString VarStart[kVariables];
  SString VarEnd[kVariables];
  SString VarIncrement[kVariables];
  SString ExpName[kExpressions];
  /// The formulas as the user wrote them, and with the variables filled in, which is what is evaluated.
  SString Expression[kExpressions];
  SString ConvExpression[kExpressions];
  /// Form of the line; the Y range of form 1 always reaches 0.
  int DisplayType[kExpressions] = {};
  Color LineColor[kExpressions] = {};
  int LineStyle[kExpressions] = {};
  int LineWidth[kExpressions] = {};
  /// Colours and thresholds of a line that changes colour above and below a value.
  Color LineUpColor[kExpressions] = {};
  Color LineDnColor[kExpressions] = {};
  SString LineUpValue[kExpressions];
  SString LineDnValue[kExpressions];
  int LineCompMethod[kExpressions] = {};
  /// Base lines.
  SString YValue[kExpressions];
  Color YValueColor = 0;
  int YValueStyle = 0;
  int YValueWidth = 1;
  /// Mode of the Y scale, 0 to 3, and the user's range.
  int MinMaxY = 0;
  double UserMax = 0.0;
  double UserMin = 0.0;
  int InvertY = 0;
  int LogY = 0;
  SString Description;
  /// Carried, never interpreted.
  SString Password;
  /// The results, one series for each expression.
  SVector ExpData[kExpressions];
  /// The object's own dates, for a non-time chart; empty otherwise.
  SVector ExpDate;
  SAnsiStringList ExtLabels;
  int IndexType = kIndicatorIndex;
  int YScaleType = 0;
  int YAxisCount = 0;
  int YAxisUnitSize = 1;
  SString YAxisUnitText;
  int YAxisPrecision = 0;
  int YAxisUseComma = 1;
  int BlShow = 1;
  int BlShowLegend = 1;
  /// Keys of real-time fields, and how their ticks update the object.
  SAnsiStringList RealKeys;
  int RealUpdateType = 0;
  /// The host's text.
  SString ExtData;
  int DRAWLV = 0;

 protected:
  /// For a kind of object with a name.
  SIndexProp(const char *name, int type);
};

}  // namespace trovenu
