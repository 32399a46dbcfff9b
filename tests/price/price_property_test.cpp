#include "trovenu/price/price_property.h"

#include <gtest/gtest.h>

#include <string>

#include "tests/price/stored_values.h"

namespace trovenu {
namespace {

using tests::StoredBy;
using tests::StoredValue;

// Required: `ShowBaseLine` becomes 0 and is not copied. The nine `Bl` arrays other than `BlVolumeDisp` stay.
TEST(PriceProperty, AssignmentLeavesBaseLinesAndOffers) {
  const std::vector<StoredValue> defaults = StoredBy(SPriceProperty(), 0);
  CKqArchive archive = tests::Renumbered(defaults);
  SPriceProperty source;
  source.Load(archive, 0);
  const std::vector<StoredValue> from = StoredBy(source, 0);
  SPriceProperty assigned;
  assigned.ShowBaseLine[2] = 1;
  assigned = source;
  for (const SPriceProperty &target : {assigned, SPriceProperty(source)}) {
    const std::vector<StoredValue> values = StoredBy(target, 0);
    for (std::size_t i = 0; i < from.size(); ++i) {
      const std::string key = values[i].key.substr(values[i].key.find('.') + 1);
      const bool isOffer = key.starts_with("Bl") && key != "BlUse128Scale" && key != "BlVolumeDisp" &&
                           !key.starts_with("Black");
      const bool stays = isOffer || key.starts_with("ShowBaseLine");
      EXPECT_EQ(values[i].value, stays ? defaults[i].value : from[i].value) << values[i].key;
    }
  }
  source.SetToDefault();
  EXPECT_EQ(StoredBy(source, 0), defaults);
}

TEST(PriceProperty, StyleIsColorsAndFillsOfBothSides) {
  const SPriceProperty usual;
  SPriceProperty other;
  other.PriceChartType = 5;
  other.Value1[0] = "99";
  other.VolumeAtPriceColor[3] = 1;
  EXPECT_EQ(usual.CompStyle(other), 1);
  for (const int side : {0, 1, 2, 3}) {
    SPriceProperty changed;
    if (side < 2) {
      (side == 0 ? changed.WhiteLineColor : changed.BlackLineColor)[17] = 1;
    } else {
      (side == 2 ? changed.WhiteLineFill : changed.BlackLineFill)[17] = 1;
    }
    EXPECT_EQ(usual.CompStyle(changed), 0) << side;
    other.AssignStyle(changed);
    EXPECT_EQ(other.CompStyle(changed), 1) << side;
  }
  EXPECT_TRUE(other.Value1[0] == "99" && other.VolumeAtPriceColor[3] == 1);
}

TEST(PriceProperty, OptionsFromAReferencePrice) {
  SPriceProperty property;
  property.SetValue(10000.0);
  property.SetDefaultOptionValue(10000.0);
  EXPECT_TRUE(property.Value2[5] == "200" && property.Default2[5] == "200");  // 2 %
  EXPECT_TRUE(property.Value1[7] == "500" && property.Default1[7] == "500");  // 5 %
  EXPECT_TRUE(property.Value1[8] == "500" && property.Default1[8] == "500");
  EXPECT_TRUE(property.Value1[9] == "400" && property.Default1[9] == "400");  // 4 %
  EXPECT_TRUE(property.Value1[5] == "3" && property.Default1[5] == "3");
  // 5 % of 123,450 is 6,172.5, a step of 10 there.
  property.SetValue(123450.0);
  EXPECT_TRUE(property.Value1[8] == "6170");
  property.SetValue(-1.0);
  EXPECT_TRUE(property.Value1[8] == "0");
}

}  // namespace
}  // namespace trovenu
