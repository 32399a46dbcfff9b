#include "trovenu/price/chart_property.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/price/stored_values.h"
#include "trovenu/support/korean.h"

namespace trovenu {
namespace {

using tests::Renumbered;
using tests::StoredBy;
using tests::StoredValue;
using tests::ValuesOf;

struct Key {
  std::string name;
  std::string byDefault;
  bool isLook = true;
};

std::string Theme(int index) { return std::to_string(CThemeManager::GetColor(index)); }

std::vector<Key> Keys() {
  return {
      {"UseSystemTrading", "0", false},
      {"ShowLeftLabel", "0"},
      {"ShowRightLabel", "1"},
      {"ShowXAxis", "1"},
      {"RightLabelWidth", "60"},
      {"LeftLabelWidth", "60"},
      {"BlMinMaxPrice", "1", false},
      {"BlBarsInFront", "1"},
      {"BarsToRight", "2"},
      {"BarsToRightPixel", "40"},
      {"UseCorrectedPrice", "1"},
      {"ShowCorrectedPrice", "1"},
      {"ShowCrossLineOnClick", "0"},
      {"ShowCrossLineAlways", "1"},
      {"ShowMinMaxPrice", "1"},
      {"ShowIndexTitle", "1"},
      {"ShowIndexValue", "0"},
      {"ShowLastClose", "1"},
      {"ShowLastCloseFluct", "1"},
      {"ChartBackgroundColor", Theme(330)},
      {"CrossLineColor", Theme(331)},
      {"ChartBorderColor", Theme(332), false},
      {"AxisBackgroundColor", Theme(338)},
      {"AxisFontColor", Theme(340)},
      {"AxisFontSize", "9"},
      {"AxisColor", Theme(339)},
      {"BaseFontName", "굴림"_kr},
      {"BaseFontColor", Theme(334)},
      {"BaseFontSize", "9"},
      {"GridStyle", "0"},
      {"GridWidth", "1"},
      {"GridColor", Theme(332)},
      {"GridLineExtend", "0"},
      {"VGridVisible", "1"},
      {"VGridColor", Theme(336)},
      {"VGridStyle", "7"},
      {"VGridWidth", "1"},
      {"HGridVisible", "1"},
      {"HGridColor", Theme(335)},
      {"HGridStyle", "7"},
      {"HGridWidth", "1"},
      {"DisplayDataSize", "120", false},
      {"DisplayDataType", "0", false},
      {"ShowPercentChart", "0"},
      {"BorderLineColor", "14079958"},
      {"BorderLineStyle", "0"},
      {"BorderLineThick", "1"},
      {"XAxisTimeFormat", ""},
      {"XAxisPrecision", "0"},
      {"XAxisUseComma", "1"},
      {"XAxisUnitText", "", false},
      {"XAxisLabelPosType", "0"},
      {"XAxisTextDirection", "0"},
      {"ScrollBarVisible", "0"},
      {"ZoomSliderVisible", "0"},
      {"ToolButtonVisible", "0"},
      {"BlShowDataTrack", "0"},
      {"BlShowDataGrid", "0"},
      {"LScaleDigitCnt", "11"},
      {"RScaleDigitCnt", "11"},
      {"BlShowToolBar", "0"},
      {"DataTrackMode", "0", false},
      {"PopupMenuType", "0", false},
      {"DaySepColor", Theme(337)},
      {"DaySepStyle", "7"},
      {"DaySepVisible", "1"},
      {"LabelColor", Theme(333)},
      {"CandleAdjust", "1", false},
      {"PropertyStyle", "1", false},
      {"LegendType", "0"},
      {"ToolTipMode", "1", false},
      {"BlVerboseIndex", "1", false},
      {"BlFillCroud", "1"},
      {"FillCroudMethod", "0"},
      {"BlFillHistogram", "1"},
      {"ButtonVisible", ""},
      {"FooterType", "0", false},
      {"Align", "0"},
      {"BarSpacing", "6", false},
      {"BlUseAutoTrendLine", "0", false},
      {"BlShowSRLineSetting", "0", false},
      {"BlSaveLastSetting", "0", false},
      {"BaseValueType", "4", false},
      {"BarInterval", "1", false},
      {"XAxisDivideType", "0", false},
      {"XAxisDivideValue", "1", false},
      {"BlEnableDragZoom", "1", false},
      {"PriceChartGapRatio", "0.019999999552965164", false},
      {"LastCloseType", "0", false},
      {"LastCloseChangeType", "0", false},
  };
}

TEST(ChartProperty, EveryKeyHasItsDefault) {
  const std::vector<StoredValue> values = StoredBy(SChartProperty());
  const std::vector<Key> keys = Keys();
  ASSERT_EQ(keys.size(), 90U);
  ASSERT_EQ(values.size(), 90U);
  for (std::size_t i = 0; i < keys.size(); ++i) {
    EXPECT_EQ(values[i].category, "ChartProperty");
    EXPECT_EQ(values[i].key, keys[i].name);
    EXPECT_EQ(values[i].value, keys[i].byDefault) << keys[i].name;
  }
}

TEST(ChartProperty, EveryKeyComesBack) {
  CKqArchive archive = Renumbered(StoredBy(SChartProperty()));
  SChartProperty property(3);
  property.Load(archive);
  EXPECT_EQ(StoredBy(property), ValuesOf(archive));
  EXPECT_EQ(property.GetIntChart(), 3);
  EXPECT_EQ(property.UseSystemTrading(), 1001);
  EXPECT_EQ(property.LastCloseChangeType, 1090);

  const SChartProperty copy(property);
  EXPECT_EQ(StoredBy(copy), ValuesOf(archive));
  EXPECT_EQ(copy.IntChart, 3);
  EXPECT_EQ(copy.textMetric.tmHeight, property.textMetric.tmHeight);

  property.SetToDefault();
  EXPECT_EQ(StoredBy(property), StoredBy(SChartProperty(3)));
}

TEST(ChartProperty, CompStyleLooksAtTheLookAlone) {
  const SChartProperty usual;
  EXPECT_EQ(usual.CompStyle(usual), 1);
  for (const Key &key : Keys()) {
    CKqArchive archive;
    archive.SetCategory("ChartProperty");
    archive.SetInt(key.name.c_str(), 987654, 0);
    SChartProperty changed;
    changed.Load(archive);
    EXPECT_EQ(usual.CompStyle(changed), key.isLook ? 0 : 1) << key.name;
  }
  EXPECT_EQ(usual.CompStyle(SChartProperty(1)), 0) << "the controls are part of the look";
}

TEST(ChartProperty, ControlsDependOnIntChart) {
  struct Case {
    int intChart;
    int visible;
    int popupMenu;
  };
  for (const Case &c : {Case{0, 0, 0}, Case{1, 1, 2}, Case{2, 1, 2}, Case{-1, 1, 0}}) {
    SChartProperty property(c.intChart);
    EXPECT_EQ(property.ScrollBarVisible, c.visible) << c.intChart;
    EXPECT_EQ(property.ZoomSliderVisible, c.visible) << c.intChart;
    EXPECT_EQ(property.ToolButtonVisible, c.visible) << c.intChart;
    EXPECT_EQ(property.PopupMenuType, c.popupMenu) << c.intChart;

    property.PopupMenuType = property.ScrollBarVisible = 9;
    CKqArchive empty;
    property.Load(empty);
    EXPECT_EQ(property.ScrollBarVisible, c.visible) << c.intChart;
    EXPECT_EQ(property.PopupMenuType, c.popupMenu) << c.intChart;
  }
}

TEST(ChartProperty, SetIntChartResetsOnRequest) {
  SChartProperty property;
  property.BarsToRight = 9;
  property.SetIntChart(1, 0);
  EXPECT_EQ(property.GetIntChart(), 1);
  EXPECT_EQ(property.BarsToRight, 9);
  EXPECT_EQ(property.ScrollBarVisible, 0);
  property.SetIntChart(1, 1);
  EXPECT_EQ(property.BarsToRight, 2);
  EXPECT_EQ(property.ScrollBarVisible, 1);
}

TEST(ChartProperty, SetLabelWidthSetsBoth) {
  SChartProperty property;
  property.LeftLabelWidth = property.RightLabelWidth = 9;
  property.SetLabelWidth();
  EXPECT_EQ(property.LeftLabelWidth, 60);
  EXPECT_EQ(property.RightLabelWidth, 60);
}

TEST(ChartProperty, DefaultsFollowTheThemeOfTheMoment) {
  CThemeManager::SetColor(330, 0x123456);
  SChartProperty property;
  CThemeManager::ResetColors();
  EXPECT_EQ(property.ChartBackgroundColor, 0x123456U);
  property.SetToDefault();
  EXPECT_EQ(property.ChartBackgroundColor, CThemeManager::GetColor(330));
}

FontRequest asked;
std::string askedFace;

bool Answer(const FontRequest &font, TEXTMETRIC &metric) {
  asked = font;
  askedFace = font.face;
  metric.tmHeight = 33;
  return true;
}

bool Refuse(const FontRequest &, TEXTMETRIC &) { return false; }

TEST(ChartProperty, CalcFontMetricMeasuresTheBaseFont) {
  SetFontMetricSource(Answer);
  SChartProperty property;
  EXPECT_EQ(property.textMetric.tmHeight, 33);
  EXPECT_EQ(askedFace, "굴림"_kr);
  EXPECT_EQ(asked.tenths, 90);
  EXPECT_EQ(asked.charSet, 129);
  property.BaseFontName = "face";
  property.BaseFontSize = 12;
  property.textMetric.tmHeight = 1;
  property.CalcFontMetric();
  EXPECT_EQ(property.textMetric.tmHeight, 33);
  EXPECT_EQ(askedFace, "face");
  EXPECT_EQ(asked.tenths, 120);
  property.BaseFontSize = 2147483647;
  property.CalcFontMetric();

  SetFontMetricSource(Refuse);
  property.textMetric.tmHeight = 44;
  property.CalcFontMetric();
  SetFontMetricSource(nullptr);
  EXPECT_EQ(property.textMetric.tmHeight, 44) << "stays as it is where nothing can be measured";
}

}  // namespace
}  // namespace trovenu
