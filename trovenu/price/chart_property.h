#pragma once

#include "trovenu/platform/export.h"
#include "trovenu/platform/font_metric.h"
#include "trovenu/platform/theme.h"
#include "trovenu/support/text.h"

namespace trovenu {

class CKqArchive;

/// Look and behaviour of one chart window. The library keeps the members, gives them defaults and stores them
/// under their names; what styles, types and modes mean is the window's.
class TROVENU_API SChartProperty {
 public:
  /// All defaults, with the theme's colours of this moment. `intChart` is nonzero for a chart that is
  /// embedded in another screen.
  explicit SChartProperty(int intChart = 0);

  /// All members but `IntChart` to their defaults.
  void SetToDefault();
  /// Both label widths to 60.
  void SetLabelWidth();
  /// Stores `IntChart`; if `reset` is not zero, sets all defaults as well.
  void SetIntChart(int value, int reset);
  int GetIntChart() const { return IntChart; }
  int UseSystemTrading() const { return UseSystemTradingFlag; }
  /// 1 if all members of the look are equal, else 0. Modes of behaviour, the number of bars shown and the
  /// like don't count.
  int CompStyle(const SChartProperty &other) const;
  /// Measures the base font into `textMetric`, which stays as it is if the font can't be measured.
  void CalcFontMetric();

  /// Reads or writes all members but `IntChart` and `textMetric` in the category "ChartProperty". What is
  /// missing becomes the default of an object with the same `IntChart`.
  void Load(CKqArchive &archive);
  void Store(CKqArchive &archive) const;

  /// Nonzero for a chart that is embedded in another screen.
  int IntChart;
  /// The key "UseSystemTrading"; `UseSystemTrading()` reads it.
  int UseSystemTradingFlag;
  /// Which axes are shown, and the widths of the labels in pixels.
  int ShowLeftLabel;
  int ShowRightLabel;
  int ShowXAxis;
  int RightLabelWidth;
  int LeftLabelWidth;
  int BlMinMaxPrice;
  /// Room to the right of the newest bar, in bars and in pixels.
  int BlBarsInFront;
  int BarsToRight;
  int BarsToRightPixel;
  /// Only stored: adjusted prices come from the host.
  int UseCorrectedPrice;
  int ShowCorrectedPrice;
  /// What is shown over the chart.
  int ShowCrossLineOnClick;
  int ShowCrossLineAlways;
  int ShowMinMaxPrice;
  int ShowIndexTitle;
  int ShowIndexValue;
  int ShowLastClose;
  int ShowLastCloseFluct;
  /// Colours and fonts of the window and its axes.
  Color ChartBackgroundColor;
  Color CrossLineColor;
  Color ChartBorderColor;
  Color AxisBackgroundColor;
  Color AxisFontColor;
  int AxisFontSize;
  Color AxisColor;
  SString BaseFontName;
  Color BaseFontColor;
  int BaseFontSize;
  /// Border and grid, vertical and horizontal.
  int GridStyle;
  int GridWidth;
  Color GridColor;
  int GridLineExtend;
  int VGridVisible;
  Color VGridColor;
  int VGridStyle;
  int VGridWidth;
  int HGridVisible;
  Color HGridColor;
  int HGridStyle;
  int HGridWidth;
  /// How many bars are shown.
  int DisplayDataSize;
  int DisplayDataType;
  int ShowPercentChart;
  /// A fixed colour, none of the theme.
  Color BorderLineColor;
  int BorderLineStyle;
  int BorderLineThick;
  /// Labels of the X axis.
  SString XAxisTimeFormat;
  int XAxisPrecision;
  int XAxisUseComma;
  SString XAxisUnitText;
  int XAxisLabelPosType;
  int XAxisTextDirection;
  /// 1 in an embedded chart by default, else 0.
  int ScrollBarVisible;
  int ZoomSliderVisible;
  int ToolButtonVisible;
  /// Data window, scales and tool bar.
  int BlShowDataTrack;
  int BlShowDataGrid;
  int LScaleDigitCnt;
  int RScaleDigitCnt;
  int BlShowToolBar;
  int DataTrackMode;
  /// 2 in an embedded chart (`IntChart` above 0) by default, else 0.
  int PopupMenuType;
  /// The line between days.
  Color DaySepColor;
  int DaySepStyle;
  int DaySepVisible;
  /// Legend, fills and other modes of the window.
  Color LabelColor;
  int CandleAdjust;
  int PropertyStyle;
  int LegendType;
  int ToolTipMode;
  int BlVerboseIndex;
  int BlFillCroud;
  int FillCroudMethod;
  int BlFillHistogram;
  SString ButtonVisible;
  int FooterType;
  int Align;
  /// Pixels from bar to bar.
  double BarSpacing;
  /// Modes of the window.
  int BlUseAutoTrendLine;
  int BlShowSRLineSetting;
  int BlSaveLastSetting;
  int BaseValueType;
  int BarInterval;
  int XAxisDivideType;
  double XAxisDivideValue;
  int BlEnableDragZoom;
  /// Share of the height that stays free; the default is 0.02 in single precision.
  double PriceChartGapRatio;
  /// How the last close is shown.
  int LastCloseType;
  int LastCloseChangeType;
  /// Measures of the base font.
  TEXTMETRIC textMetric;
};

}  // namespace trovenu
