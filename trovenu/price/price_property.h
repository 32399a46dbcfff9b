#pragma once

#include "trovenu/platform/export.h"
#include "trovenu/platform/theme.h"
#include "trovenu/support/text.h"

namespace trovenu {

class CKqArchive;

/// The kinds of price chart.
enum PriceChartKind : int {
  kCandleChart,
  kBarChart,
  kHighLowCloseChart,
  kCloseLineChart,
  kVolumeAtPriceChart,
  kPointAndFigureChart,
  kThreeLineBreakChart,
  kSwingChart,
  kKagiChart,
  kRenkoChart,
  kCounterClockChart,
  kCandleVolumeChart,
  kEquiVolumeChart,
  kFlowChart,
  kScatterChart,
  kNetChart,
  kZigZagChart,
  kMarketProfileChart,
};

inline constexpr int kPriceChartTypes = 18;

/// The Korean name of a chart type, "봉차트" for 0; empty outside 0 to 17.
TROVENU_API const char *PriceChartTypeName(int type);

/// How the price chart of one symbol looks: the chart type and, for each type, its colours and options.
///
/// Arrays are indexed by chart type. "White" is the rising side, "Black" the falling one. The members that
/// begin with `Bl` say whether the settings of that type offer the item.
class TROVENU_API SPriceProperty {
 public:
  /// All defaults, with the theme's colours of this moment.
  SPriceProperty();
  /// As the assignment, onto an object with its defaults.
  SPriceProperty(const SPriceProperty &other);
  /// Copies what the user has set.
  /// Required: `ShowBaseLine` becomes 0 and is not copied. The nine `Bl` arrays other than `BlVolumeDisp`
  /// stay as they are: they belong to the chart types, not to the user's settings.
  SPriceProperty &operator=(const SPriceProperty &other);

  /// All members to their defaults.
  void SetToDefault();

  /// 1 if colours and fills of the rising and the falling side are equal for all chart types, else 0. Nothing
  /// else counts.
  int CompStyle(const SPriceProperty &other) const;
  /// Copies what `CompStyle` compares.
  void AssignStyle(const SPriceProperty &other);

  /// Sets the options that are a price step from a reference price, each brought to a valid step:
  /// `Value2[5]` 2 %, `Value1[7]` and `Value1[8]` 5 %, `Value1[9]` 4 % of it.
  void SetValue(double price);
  /// Sets `Default1` and `Default2` of types 4 to 10 and 15 and `Default1` of type 17 to their defaults;
  /// those that `SetValue` names in `Value1` and `Value2` come from the price as there.
  void SetDefaultOptionValue(double price);

  /// Reads or writes everything in the category "PriceProperty", with `index` appended unless it is -1.
  void Load(CKqArchive &archive, int index);
  void Store(CKqArchive &archive, int index) const;

  int Use128Scale = 0;
  /// 1 only while the constructor sets the defaults.
  int initFlag = 0;
  /// The host's base lines.
  int ShowBaseLine[4] = {};
  Color WhiteLineColor[kPriceChartTypes];
  int WhiteLineFill[kPriceChartTypes];
  Color BlackLineColor[kPriceChartTypes];
  int BlackLineFill[kPriceChartTypes];
  Color VolumeAtPriceColor[kPriceChartTypes];
  /// Names and values of the two options of a type: the variables 0 and 1 of its calculator.
  SString Name1[kPriceChartTypes];
  SString Value1[kPriceChartTypes];
  SString Name2[kPriceChartTypes];
  SString Value2[kPriceChartTypes];
  /// What the settings offer as default for `Value1` and `Value2`.
  SString Default1[kPriceChartTypes];
  SString Default2[kPriceChartTypes];
  int BlWhiteLineColor[kPriceChartTypes];
  int BlWhiteLineFill[kPriceChartTypes];
  int BlBlackLineColor[kPriceChartTypes];
  int BlBlackLineFill[kPriceChartTypes];
  int BlVolumeAtPrice[kPriceChartTypes];
  int BlVolumeDisp[kPriceChartTypes];
  int BlName1[kPriceChartTypes];
  int BlValue1[kPriceChartTypes];
  int BlName2[kPriceChartTypes];
  int BlValue2[kPriceChartTypes];
  /// Scale mode of the Y axis, the host's; `SPriceData::ClearData` turns a 2 into 0.
  int MinMaxY = 0;
  /// The user's Y range.
  double UserMin = 0.0;
  double UserMax = 0.0;
  int LogY = 0;
  int InvertY = 0;
  /// Whether the ratios of low and high, low and close, high and close are shown.
  int ShowLH = 0;
  int ShowLC = 1;
  int ShowHC = 1;
  /// A `PriceChartKind`.
  int PriceChartType = kCandleChart;
  int LineStyle = 0;
  int LineThick = 1;
  int LineCompare = 0;
};

}  // namespace trovenu
