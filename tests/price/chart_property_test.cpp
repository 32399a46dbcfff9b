#include "trovenu/price/chart_property.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

#include "tests/price/stored_values.h"
#include "trovenu/support/korean.h"

namespace trovenu {
namespace {

using tests::StoredBy;
using tests::StoredValue;

// Keys in order with their defaults; "@" is a theme colour, "!" stands before what is no part of the look.
constexpr const char *kKeys =
    "!UseSystemTrading=0 ShowLeftLabel=0 ShowRightLabel=1 ShowXAxis=1 RightLabelWidth=60 LeftLabelWidth=60 "
    "!BlMinMaxPrice=1 BlBarsInFront=1 BarsToRight=2 BarsToRightPixel=40 UseCorrectedPrice=1 "
    "ShowCorrectedPrice=1 ShowCrossLineOnClick=0 ShowCrossLineAlways=1 ShowMinMaxPrice=1 ShowIndexTitle=1 "
    "ShowIndexValue=0 ShowLastClose=1 ShowLastCloseFluct=1 ChartBackgroundColor=@330 CrossLineColor=@331 "
    "!ChartBorderColor=@332 AxisBackgroundColor=@338 AxisFontColor=@340 AxisFontSize=9 AxisColor=@339 "
    "BaseFontName=font BaseFontColor=@334 BaseFontSize=9 GridStyle=0 GridWidth=1 GridColor=@332 "
    "GridLineExtend=0 VGridVisible=1 VGridColor=@336 VGridStyle=7 VGridWidth=1 HGridVisible=1 "
    "HGridColor=@335 HGridStyle=7 HGridWidth=1 !DisplayDataSize=120 !DisplayDataType=0 ShowPercentChart=0 "
    "BorderLineColor=14079958 BorderLineStyle=0 BorderLineThick=1 XAxisTimeFormat= XAxisPrecision=0 "
    "XAxisUseComma=1 !XAxisUnitText= XAxisLabelPosType=0 XAxisTextDirection=0 ScrollBarVisible=0 "
    "ZoomSliderVisible=0 ToolButtonVisible=0 BlShowDataTrack=0 BlShowDataGrid=0 LScaleDigitCnt=11 "
    "RScaleDigitCnt=11 BlShowToolBar=0 !DataTrackMode=0 !PopupMenuType=0 DaySepColor=@337 DaySepStyle=7 "
    "DaySepVisible=1 LabelColor=@333 !CandleAdjust=1 !PropertyStyle=1 LegendType=0 !ToolTipMode=1 "
    "!BlVerboseIndex=1 BlFillCroud=1 FillCroudMethod=0 BlFillHistogram=1 ButtonVisible= !FooterType=0 "
    "Align=0 !BarSpacing=6 !BlUseAutoTrendLine=0 !BlShowSRLineSetting=0 !BlSaveLastSetting=0 "
    "!BaseValueType=4 !BarInterval=1 !XAxisDivideType=0 !XAxisDivideValue=1 !BlEnableDragZoom=1 "
    "!PriceChartGapRatio=0.019999999552965164 !LastCloseType=0 !LastCloseChangeType=0";

TEST(ChartProperty, KeysDefaultsAndLook) {
  const SChartProperty usual;
  const std::vector<StoredValue> values = StoredBy(usual);
  std::istringstream keys(kKeys);
  std::size_t i = 0;
  for (std::string key; keys >> key; ++i) {
    const bool isLook = key[0] != '!';
    if (!isLook) key.erase(0, 1);
    std::string value = key.substr(key.find('=') + 1);
    key.resize(key.find('='));
    if (value[0] == '@') value = std::to_string(CThemeManager::GetColor(std::stoi(value.substr(1))));
    if (value == "font") value = "굴림"_kr;
    ASSERT_LT(i, values.size());
    EXPECT_EQ(values[i], (StoredValue{"ChartProperty", key, value}));

    CKqArchive archive;
    archive.SetCategory("ChartProperty");
    archive.SetInt(key.c_str(), 987654, 0);
    SChartProperty changed;
    changed.Load(archive);
    EXPECT_EQ(usual.CompStyle(changed), isLook ? 0 : 1) << key;
  }
  EXPECT_EQ(i, 90U);
  EXPECT_EQ(values.size(), 90U);
  EXPECT_EQ(usual.CompStyle(usual), 1);
}

TEST(ChartProperty, ControlsDependOnIntChart) {
  const int cases[][3] = {{0, 0, 0}, {1, 1, 2}, {2, 1, 2}, {-1, 1, 0}};
  for (const auto &[intChart, visible, popupMenu] : cases) {
    SChartProperty property(intChart);
    EXPECT_EQ(property.ScrollBarVisible, visible) << intChart;
    CKqArchive empty;
    property.PopupMenuType = property.ScrollBarVisible = 9;
    property.Load(empty);
    EXPECT_EQ(property.ScrollBarVisible, visible) << intChart;
    EXPECT_EQ(property.PopupMenuType, popupMenu) << intChart;
  }
}

FontRequest asked;

bool Answer(const FontRequest &font, TEXTMETRIC &metric) {
  asked = font;
  metric.tmHeight = 33;
  return true;
}

TEST(ChartProperty, CalcFontMetricMeasuresTheBaseFont) {
  SetFontMetricSource(Answer);
  SChartProperty property;
  EXPECT_EQ(property.textMetric.tmHeight, 33);
  EXPECT_EQ(asked.tenths, 90);
  SetFontMetricSource([](const FontRequest &, TEXTMETRIC &) { return false; });
  property.BaseFontSize = 2147483647;
  property.textMetric.tmHeight = 44;
  property.CalcFontMetric();
  SetFontMetricSource(nullptr);
  EXPECT_EQ(property.textMetric.tmHeight, 44) << "stays as it is where nothing can be measured";
}

}  // namespace
}  // namespace trovenu
