#include <gtest/gtest.h>

#include "tests/price/stored_values.h"
#include "trovenu/price/chart_pane.h"
#include "trovenu/price/chart_property.h"
#include "trovenu/price/price_data.h"

namespace trovenu {
namespace {

using tests::KeysOf;
using tests::Renumbered;
using tests::StoredBy;
using tests::StoredValue;
using tests::ValuesOf;

TEST(PriceArchive, KeysInOrder) {
  const std::string pane =
      "ChartID WidthRatio HeightRatio LeftLabelIndex RightLabelIndex ChartName BlDeleble BlShowUnit BlShow";
  const std::string price = "ID MarketType SymbolName SymbolCode RealSymbol ChartCycle ChartPeriod TickSize";
  const std::string lines =
      "ShowAlarmLine ShowAlarmDlg ShowTitle ShowValue LineStyle TextPos 0.LineValue 0.ShowLine 0.LineThick "
      "0.ShowAlert 0.LineColor 1.LineValue ";
  const std::string property =
      "BlUse128Scale ShowBaseLine0 ShowBaseLine1 ShowBaseLine2 ShowBaseLine3 0.WhiteLineColor "
      "0.WhiteLineFill 0.BlackLineColor 0.BlackLineFill 0.VolumeAtPriceColor 0.Name1 0.Value1 0.Name2 "
      "0.Value2 0.Default1 0.Default2 0.BlWhiteLineColor 0.BlWhiteLineFill 0.BlBlackLineColor "
      "0.BlBlackLineFill 0.BlVolumeAtPrice 0.BlVolumeDisp 0.BlName1 0.BlValue1 0.BlName2 0.BlValue2 "
      "1.WhiteLineColor ";
  const std::string end =
      " 17.BlValue2 MinMaxY UserMin UserMax LogY InvertY ShowLH ShowLC ShowHC PriceChartType LineStyle "
      "LineThick LineCompare";
  for (const int number : {-1, 0, 12}) {
    const std::string suffix = number < 0 ? "" : std::to_string(number);
    const std::vector<StoredValue> values = StoredBy(SPriceData(), number);
    EXPECT_EQ(KeysOf(values, "PriceData" + suffix), price);
    EXPECT_TRUE(KeysOf(values, "SSRLines" + suffix).starts_with(lines));
    EXPECT_TRUE(KeysOf(values, "PriceProperty" + suffix).starts_with(property));
    EXPECT_TRUE(KeysOf(values, "PriceProperty" + suffix).ends_with(end));
    EXPECT_EQ(values.size(), 8U + 6 + 28 * 5 + 5 + 18 * 21 + 12);
    EXPECT_EQ(KeysOf(StoredBy(SChartProp(), number), "Chart" + suffix), pane);
  }
}

// Every key comes back, and a missing one gives the default of a new object.
template <class Object, class... Index>
void ExpectRoundTrip(Index... index) {
  const std::vector<StoredValue> fresh = StoredBy(Object(), index...);
  CKqArchive archive = Renumbered(fresh);
  CKqArchive empty;
  Object object;
  object.Load(archive, index...);
  EXPECT_EQ(StoredBy(object, index...), ValuesOf(archive));
  object.Load(empty, index...);
  EXPECT_EQ(StoredBy(object, index...), fresh);
}

TEST(PriceArchive, EveryKeyComesBackAndAMissingOneGivesTheDefault) {
  ExpectRoundTrip<SPriceData>(0);
  ExpectRoundTrip<SPriceProperty>(7);
  ExpectRoundTrip<SSRLines>(-1);
  ExpectRoundTrip<SChartProp>(5);
  ExpectRoundTrip<SChartProperty>();
}

TEST(PriceArchive, ThemeLeavesTheLinesOut) {
  CKqArchive archive = Renumbered(StoredBy(SPriceData(), 2));
  SPriceData data;
  data.LoadTheme(archive, 2);
  EXPECT_TRUE(*data.lines == SSRLines());
  EXPECT_EQ(data.ID, 1001);
  CKqArchive theme;
  data.StoreTheme(theme, 2);
  EXPECT_EQ(KeysOf(ValuesOf(theme), "SSRLines2"), "");
  EXPECT_EQ(KeysOf(ValuesOf(theme), "PriceProperty2"), KeysOf(ValuesOf(archive), "PriceProperty2"));
  data.lines = nullptr;
  EXPECT_EQ(KeysOf(StoredBy(data, 0), "SSRLines0"), "");
  data.LoadTheme(archive, 2);
  EXPECT_EQ(data.lines, nullptr);
}

}  // namespace
}  // namespace trovenu
