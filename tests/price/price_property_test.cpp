#include "trovenu/price/price_property.h"

#include <gtest/gtest.h>

#include <set>
#include <string>

#include "tests/price/stored_values.h"
#include "trovenu/support/korean.h"

namespace trovenu {
namespace {

using tests::KeysOf;
using tests::Renumbered;
using tests::StoredBy;
using tests::StoredValue;
using tests::ValuesOf;

TEST(PriceProperty, NamesAndOptionsOfEveryType) {
  struct Type {
    const char *name;
    const char *name1;
    const char *value1;
    const char *name2;
    const char *value2;
  };
  const Type types[] = {
      {"봉차트"_kr, "매물대 수"_kr, "10", " ", "0"},
      {"바차트(시고저종)"_kr, "매물대 수"_kr, "10", " ", "0"},
      {"바차트(고저종)"_kr, "매물대 수"_kr, "10", " ", "0"},
      {"종가선차트"_kr, "매물대 수"_kr, "10", " ", "0"},
      {"매물대차트"_kr, "매물대 수"_kr, "10", " ", "0"},
      {"P&F차트"_kr, "칸전환"_kr, "3", "", "0"},
      {"삼선전환도"_kr, "칸전환"_kr, "3", "", "0"},
      {"Swing차트"_kr, "최소반전폭"_kr, "3", "", "0"},
      {"Kagi차트"_kr, "최소반전폭"_kr, "3", "", "0"},
      {"Renko차트"_kr, "최소변화폭"_kr, "3", "", "0"},
      {"역시계곡선"_kr, "이동평균"_kr, "25", "", "0"},
      {"CandleVolume차트"_kr, "", "0", "", "0"},
      {"EquiVolume차트"_kr, "", "0", "", "0"},
      {"Flow차트"_kr, "매물대 수"_kr, "10", "", "0"},
      {"분산형차트"_kr, "", "0", "", "0"},
      {"그물망차트"_kr, "시작값"_kr, "10", "", "10"},
      {"ZigZag차트"_kr, "전환비율"_kr, "5", "", "0"},
      {"마켓프로파일"_kr, "분간격"_kr, "30", "", "0"},
  };
  const SPriceProperty property;
  for (int i = 0; i < 18; ++i) {
    const Type &type = types[i];
    EXPECT_STREQ(PriceChartTypeName(i), type.name) << i;
    EXPECT_TRUE(property.Name1[i] == type.name1) << i;
    EXPECT_TRUE(property.Value1[i] == type.value1) << i;
    EXPECT_TRUE(property.Name2[i] == type.name2) << i;
    EXPECT_TRUE(property.Value2[i] == type.value2) << i;
    EXPECT_TRUE(property.Default1[i] == type.value1) << i;
    EXPECT_TRUE(property.Default2[i] == type.value2) << i;
  }
  EXPECT_STREQ(PriceChartTypeName(-1), "");
  EXPECT_STREQ(PriceChartTypeName(18), "");
}

TEST(PriceProperty, ColorsAndFillsOfEveryType) {
  const SPriceProperty property;
  for (int i = 0; i < 18; ++i) {
    const Color white = CThemeManager::GetColor(i == 10 ? 357 : 343);
    const Color black = CThemeManager::GetColor(i == 10 ? 357 : 344);
    const Color volume = i == 16 ? CThemeManager::GetColor(343) : 10092492;
    EXPECT_EQ(property.WhiteLineColor[i], i == 17 ? 0 : white) << i;
    EXPECT_EQ(property.BlackLineColor[i], i == 17 ? 0 : black) << i;
    EXPECT_EQ(property.VolumeAtPriceColor[i], i == 17 ? 0 : volume) << i;
    EXPECT_EQ(property.WhiteLineFill[i], i == 12 || i == 17 ? 0 : 1) << i;
    EXPECT_EQ(property.BlackLineFill[i], i == 17 ? 0 : 1) << i;
  }
}

TEST(PriceProperty, OffersOfEveryType) {
  struct Table {
    int (SPriceProperty::*member)[18];
    std::set<int> types;
  };
  const std::set<int> fills = {0, 4, 6, 9, 11, 12, 15, 16};
  const std::set<int> options = {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 10, 13, 15, 16, 17};
  const Table tables[] = {
      {&SPriceProperty::BlWhiteLineColor, {0, 1, 2, 3, 4, 5, 6, 7, 8, 9, 11, 12, 13, 14, 15, 16}},
      {&SPriceProperty::BlWhiteLineFill, fills},
      {&SPriceProperty::BlBlackLineColor, {0, 1, 2, 4, 5, 6, 7, 8, 9, 11, 12, 14, 15, 16}},
      {&SPriceProperty::BlBlackLineFill, fills},
      {&SPriceProperty::BlVolumeAtPrice, {4, 16}},
      {&SPriceProperty::BlVolumeDisp, {4}},
      {&SPriceProperty::BlName1, options},
      {&SPriceProperty::BlValue1, options},
      {&SPriceProperty::BlName2, {5, 15}},
      {&SPriceProperty::BlValue2, {5, 15}},
  };
  const SPriceProperty property;
  for (const Table &table : tables) {
    for (int i = 0; i < 18; ++i) {
      EXPECT_EQ((property.*table.member)[i], table.types.contains(i) ? 1 : 0)
          << (&table - tables) << ' ' << i;
    }
  }
}

TEST(PriceProperty, DefaultsOfTheSingleMembers) {
  const SPriceProperty property;
  EXPECT_EQ(property.ShowLC, 1);
  EXPECT_EQ(property.ShowHC, 1);
  EXPECT_EQ(property.LineThick, 1);
  for (const int zero : {property.Use128Scale, property.initFlag, property.MinMaxY, property.LogY,
                         property.InvertY, property.ShowLH, property.PriceChartType, property.LineStyle,
                         property.LineCompare, property.ShowBaseLine[0], property.ShowBaseLine[3]}) {
    EXPECT_EQ(zero, 0);
  }
  EXPECT_EQ(property.UserMin, 0.0);
  EXPECT_EQ(property.UserMax, 0.0);
}

TEST(PriceProperty, SetToDefaultUndoesEverything) {
  CKqArchive archive = Renumbered(StoredBy(SPriceProperty(), 0));
  SPriceProperty property;
  property.Load(archive, 0);
  property.SetToDefault();
  EXPECT_EQ(StoredBy(property, 0), StoredBy(SPriceProperty(), 0));
}

TEST(PriceProperty, ArchiveHasEveryKeyInOrder) {
  std::string expected = "BlUse128Scale ShowBaseLine0 ShowBaseLine1 ShowBaseLine2 ShowBaseLine3";
  for (int i = 0; i < 18; ++i) {
    for (const char *key :
         {"WhiteLineColor",  "WhiteLineFill",    "BlackLineColor",  "BlackLineFill",    "VolumeAtPriceColor",
          "Name1",           "Value1",           "Name2",           "Value2",           "Default1",
          "Default2",        "BlWhiteLineColor", "BlWhiteLineFill", "BlBlackLineColor", "BlBlackLineFill",
          "BlVolumeAtPrice", "BlVolumeDisp",     "BlName1",         "BlValue1",         "BlName2",
          "BlValue2"}) {
      expected += " " + std::to_string(i) + "." + key;
    }
  }
  expected +=
      " MinMaxY UserMin UserMax LogY InvertY ShowLH ShowLC ShowHC PriceChartType LineStyle LineThick"
      " LineCompare";
  EXPECT_EQ(KeysOf(StoredBy(SPriceProperty(), -1), "PriceProperty"), expected);
  EXPECT_EQ(KeysOf(StoredBy(SPriceProperty(), 12), "PriceProperty12"), expected);

  CKqArchive archive = Renumbered(StoredBy(SPriceProperty(), 12));
  SPriceProperty property;
  property.Load(archive, 12);
  EXPECT_EQ(StoredBy(property, 12), ValuesOf(archive));
  EXPECT_TRUE(property.Value1[5] == "1117");  // 5 keys, 5 types of 21, Value1 the seventh
}

// Required: `ShowBaseLine` becomes 0 and is not copied. The nine `Bl` arrays other than `BlVolumeDisp` stay.
TEST(PriceProperty, AssignmentLeavesBaseLinesAndOffers) {
  CKqArchive archive = Renumbered(StoredBy(SPriceProperty(), 0));
  SPriceProperty source;
  source.Load(archive, 0);
  SPriceProperty assigned;
  assigned.ShowBaseLine[2] = 1;
  assigned = source;

  // What each key holds afterwards: the source's value, 0, or the default.
  const std::vector<StoredValue> from = StoredBy(source, 0);
  const std::vector<StoredValue> defaults = StoredBy(SPriceProperty(), 0);
  for (const SPriceProperty &target : {assigned, SPriceProperty(source)}) {
    const std::vector<StoredValue> values = StoredBy(target, 0);
    ASSERT_EQ(values.size(), from.size());
    for (std::size_t i = 0; i < values.size(); ++i) {
      const std::string key = values[i].key.substr(values[i].key.find('.') + 1);
      const bool offer = key.starts_with("Bl") && key != "BlUse128Scale" && key != "BlVolumeDisp" &&
                         key != "BlackLineColor" && key != "BlackLineFill";
      if (key.starts_with("ShowBaseLine")) {
        EXPECT_EQ(values[i].value, "0") << values[i].key;
      } else {
        EXPECT_EQ(values[i].value, offer ? defaults[i].value : from[i].value) << values[i].key;
      }
    }
  }
}

TEST(PriceProperty, StyleIsFourTables) {
  const SPriceProperty usual;
  SPriceProperty other;
  other.PriceChartType = 5;
  other.Value1[0] = "99";
  other.VolumeAtPriceColor[3] = 1;
  other.BlVolumeDisp[3] = 5;
  EXPECT_EQ(usual.CompStyle(other), 1);

  Color(SPriceProperty::*const colors[])[18] = {&SPriceProperty::WhiteLineColor,
                                                &SPriceProperty::BlackLineColor};
  int(SPriceProperty::*const fills[])[18] = {&SPriceProperty::WhiteLineFill, &SPriceProperty::BlackLineFill};
  for (int i = 0; i < 18; ++i) {
    for (int k = 0; k < 2; ++k) {
      SPriceProperty changed;
      (changed.*colors[k])[i] ^= 1U;
      EXPECT_EQ(usual.CompStyle(changed), 0) << i;
      changed = usual;
      (changed.*fills[k])[i] ^= 1;
      EXPECT_EQ(usual.CompStyle(changed), 0) << i;
    }
    other.WhiteLineColor[i] = other.BlackLineColor[i] = static_cast<Color>(i);
    other.WhiteLineFill[i] = other.BlackLineFill[i] = i;
  }
  SPriceProperty target;
  target.AssignStyle(other);
  EXPECT_EQ(target.CompStyle(other), 1);
  EXPECT_EQ(target.PriceChartType, 0);
  EXPECT_TRUE(target.Value1[0] == "10");
  EXPECT_EQ(target.VolumeAtPriceColor[3], 10092492U);
}

TEST(PriceProperty, OptionsFromAReferencePrice) {
  SPriceProperty property;
  property.SetValue(10000.0);
  EXPECT_TRUE(property.Value2[5] == "200");  // 2 %
  EXPECT_TRUE(property.Value1[7] == "500");  // 5 %
  EXPECT_TRUE(property.Value1[8] == "500");
  EXPECT_TRUE(property.Value1[9] == "400");  // 4 %
  EXPECT_TRUE(property.Value1[5] == "3");
  EXPECT_TRUE(property.Default1[7] == "3");
  // 5 % of 123,450 is 6,172.5, a step of 10 there.
  property.SetValue(123450.0);
  EXPECT_TRUE(property.Value1[8] == "6170");
  property.SetValue(-1.0);
  EXPECT_TRUE(property.Value1[8] == "0");
}

TEST(PriceProperty, DefaultOptionsFromAReferencePrice) {
  SPriceProperty property;
  for (int i = 0; i < 18; ++i) property.Default1[i] = property.Default2[i] = "x";
  property.SetDefaultOptionValue(10000.0);
  const char *const first[18] = {"x",   "x",  "x", "x", "10", "3", "3",  "500", "500",
                                 "400", "25", "x", "x", "x",  "x", "10", "x",   "30"};
  const char *const second[18] = {"x", "x", "x", "x", "0", "200", "0",  "0", "0",
                                  "0", "0", "x", "x", "x", "x",   "10", "x", "x"};
  for (int i = 0; i < 18; ++i) {
    EXPECT_TRUE(property.Default1[i] == first[i]) << i;
    EXPECT_TRUE(property.Default2[i] == second[i]) << i;
  }
  EXPECT_TRUE(property.Value1[7] == "3");
}

}  // namespace
}  // namespace trovenu
