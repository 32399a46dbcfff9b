#include "trovenu/price/chart_property.h"

#include <algorithm>

#include "trovenu/support/archive.h"
#include "trovenu/support/field_table.h"
#include "trovenu/support/korean.h"

namespace trovenu {
namespace {

using Property = SChartProperty;

constexpr const char *kCategory = "ChartProperty";

// Marks a member that is no part of the look.
constexpr bool kNoLook = false;

constexpr int kLabelWidth = 60;
constexpr int kEmbeddedPopupMenu = 2;
constexpr int kTenthsPerPoint = 10;
constexpr int kLargestFont = 4096;

// In the order of the archive. What depends on `IntChart` is set in `SetToDefault`.
constexpr Field<SChartProperty> kFields[] = {
    {"UseSystemTrading", &Property::UseSystemTradingFlag, 0, kNoLook},
    {"ShowLeftLabel", &Property::ShowLeftLabel, 0},
    {"ShowRightLabel", &Property::ShowRightLabel, 1},
    {"ShowXAxis", &Property::ShowXAxis, 1},
    {"RightLabelWidth", &Property::RightLabelWidth, 60},
    {"LeftLabelWidth", &Property::LeftLabelWidth, 60},
    {"BlMinMaxPrice", &Property::BlMinMaxPrice, 1, kNoLook},
    {"BlBarsInFront", &Property::BlBarsInFront, 1},
    {"BarsToRight", &Property::BarsToRight, 2},
    {"BarsToRightPixel", &Property::BarsToRightPixel, 40},
    {"UseCorrectedPrice", &Property::UseCorrectedPrice, 1},
    {"ShowCorrectedPrice", &Property::ShowCorrectedPrice, 1},
    {"ShowCrossLineOnClick", &Property::ShowCrossLineOnClick, 0},
    {"ShowCrossLineAlways", &Property::ShowCrossLineAlways, 1},
    {"ShowMinMaxPrice", &Property::ShowMinMaxPrice, 1},
    {"ShowIndexTitle", &Property::ShowIndexTitle, 1},
    {"ShowIndexValue", &Property::ShowIndexValue, 0},
    {"ShowLastClose", &Property::ShowLastClose, 1},
    {"ShowLastCloseFluct", &Property::ShowLastCloseFluct, 1},
    {"ChartBackgroundColor", &Property::ChartBackgroundColor, ThemeColor{330}},
    {"CrossLineColor", &Property::CrossLineColor, ThemeColor{331}},
    {"ChartBorderColor", &Property::ChartBorderColor, ThemeColor{332}, kNoLook},
    {"AxisBackgroundColor", &Property::AxisBackgroundColor, ThemeColor{338}},
    {"AxisFontColor", &Property::AxisFontColor, ThemeColor{340}},
    {"AxisFontSize", &Property::AxisFontSize, 9},
    {"AxisColor", &Property::AxisColor, ThemeColor{339}},
    {"BaseFontName", &Property::BaseFontName, "굴림"_kr},
    {"BaseFontColor", &Property::BaseFontColor, ThemeColor{334}},
    {"BaseFontSize", &Property::BaseFontSize, 9},
    {"GridStyle", &Property::GridStyle, 0},
    {"GridWidth", &Property::GridWidth, 1},
    {"GridColor", &Property::GridColor, ThemeColor{332}},
    {"GridLineExtend", &Property::GridLineExtend, 0},
    {"VGridVisible", &Property::VGridVisible, 1},
    {"VGridColor", &Property::VGridColor, ThemeColor{336}},
    {"VGridStyle", &Property::VGridStyle, 7},
    {"VGridWidth", &Property::VGridWidth, 1},
    {"HGridVisible", &Property::HGridVisible, 1},
    {"HGridColor", &Property::HGridColor, ThemeColor{335}},
    {"HGridStyle", &Property::HGridStyle, 7},
    {"HGridWidth", &Property::HGridWidth, 1},
    {"DisplayDataSize", &Property::DisplayDataSize, 120, kNoLook},
    {"DisplayDataType", &Property::DisplayDataType, 0, kNoLook},
    {"ShowPercentChart", &Property::ShowPercentChart, 0},
    {"BorderLineColor", &Property::BorderLineColor, 14079958},
    {"BorderLineStyle", &Property::BorderLineStyle, 0},
    {"BorderLineThick", &Property::BorderLineThick, 1},
    {"XAxisTimeFormat", &Property::XAxisTimeFormat, ""},
    {"XAxisPrecision", &Property::XAxisPrecision, 0},
    {"XAxisUseComma", &Property::XAxisUseComma, 1},
    {"XAxisUnitText", &Property::XAxisUnitText, "", kNoLook},
    {"XAxisLabelPosType", &Property::XAxisLabelPosType, 0},
    {"XAxisTextDirection", &Property::XAxisTextDirection, 0},
    {"ScrollBarVisible", &Property::ScrollBarVisible, 0},
    {"ZoomSliderVisible", &Property::ZoomSliderVisible, 0},
    {"ToolButtonVisible", &Property::ToolButtonVisible, 0},
    {"BlShowDataTrack", &Property::BlShowDataTrack, 0},
    {"BlShowDataGrid", &Property::BlShowDataGrid, 0},
    {"LScaleDigitCnt", &Property::LScaleDigitCnt, 11},
    {"RScaleDigitCnt", &Property::RScaleDigitCnt, 11},
    {"BlShowToolBar", &Property::BlShowToolBar, 0},
    {"DataTrackMode", &Property::DataTrackMode, 0, kNoLook},
    {"PopupMenuType", &Property::PopupMenuType, 0, kNoLook},
    {"DaySepColor", &Property::DaySepColor, ThemeColor{337}},
    {"DaySepStyle", &Property::DaySepStyle, 7},
    {"DaySepVisible", &Property::DaySepVisible, 1},
    {"LabelColor", &Property::LabelColor, ThemeColor{333}},
    {"CandleAdjust", &Property::CandleAdjust, 1, kNoLook},
    {"PropertyStyle", &Property::PropertyStyle, 1, kNoLook},
    {"LegendType", &Property::LegendType, 0},
    {"ToolTipMode", &Property::ToolTipMode, 1, kNoLook},
    {"BlVerboseIndex", &Property::BlVerboseIndex, 1, kNoLook},
    {"BlFillCroud", &Property::BlFillCroud, 1},
    {"FillCroudMethod", &Property::FillCroudMethod, 0},
    {"BlFillHistogram", &Property::BlFillHistogram, 1},
    {"ButtonVisible", &Property::ButtonVisible, ""},
    {"FooterType", &Property::FooterType, 0, kNoLook},
    {"Align", &Property::Align, 0},
    {"BarSpacing", &Property::BarSpacing, 6.0, kNoLook},
    {"BlUseAutoTrendLine", &Property::BlUseAutoTrendLine, 0, kNoLook},
    {"BlShowSRLineSetting", &Property::BlShowSRLineSetting, 0, kNoLook},
    {"BlSaveLastSetting", &Property::BlSaveLastSetting, 0, kNoLook},
    {"BaseValueType", &Property::BaseValueType, 4, kNoLook},
    {"BarInterval", &Property::BarInterval, 1, kNoLook},
    {"XAxisDivideType", &Property::XAxisDivideType, 0, kNoLook},
    {"XAxisDivideValue", &Property::XAxisDivideValue, 1.0, kNoLook},
    {"BlEnableDragZoom", &Property::BlEnableDragZoom, 1, kNoLook},
    {"PriceChartGapRatio", &Property::PriceChartGapRatio, double{0.02F}, kNoLook},
    {"LastCloseType", &Property::LastCloseType, 0, kNoLook},
    {"LastCloseChangeType", &Property::LastCloseChangeType, 0, kNoLook},
};

}  // namespace

SChartProperty::SChartProperty(int intChart) : IntChart(intChart) { SetToDefault(); }

void SChartProperty::SetToDefault() {
  SetFieldsToDefault(kFields, *this);
  const int embedded = IntChart != 0 ? 1 : 0;
  ScrollBarVisible = embedded;
  ZoomSliderVisible = embedded;
  ToolButtonVisible = embedded;
  PopupMenuType = IntChart > 0 ? kEmbeddedPopupMenu : 0;
  SetLabelWidth();
  CalcFontMetric();
}

void SChartProperty::SetLabelWidth() {
  RightLabelWidth = kLabelWidth;
  LeftLabelWidth = kLabelWidth;
}

void SChartProperty::SetIntChart(int value, int reset) {
  IntChart = value;
  if (reset != 0) SetToDefault();
}

int SChartProperty::CompStyle(const SChartProperty &other) const {
  return EqualFields(kFields, *this, other) ? 1 : 0;
}

void SChartProperty::CalcFontMetric() {
  const int points = std::clamp(BaseFontSize, -kLargestFont, kLargestFont);
  MeasureFont({BaseFontName.c_str(), points * kTenthsPerPoint, kHangulCharSet}, textMetric);
}

void SChartProperty::Load(CKqArchive &archive) {
  archive.SetCategory(kCategory);
  LoadFields(archive, kFields, *this, SChartProperty(IntChart));
}

void SChartProperty::Store(CKqArchive &archive) const {
  archive.SetCategory(kCategory);
  StoreFields(archive, kFields, *this, SChartProperty(IntChart));
}

}  // namespace trovenu
