#include "trovenu/indicator/index_property.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

#include "tests/price/stored_values.h"
#include "trovenu/indicator/index.h"
#include "trovenu/price/price_data_list.h"

namespace trovenu {
namespace {

using tests::Renumbered;
using tests::StoredBy;
using tests::StoredValue;
using tests::ValuesOf;

struct Key {
  std::string name;
  std::string byDefault;
};

std::string Theme(int index) { return std::to_string(CThemeManager::GetColor(index)); }

// Of a new object, in the order of storing.
std::vector<Key> Keys() {
  std::vector<Key> keys = {
      {"ChartPeriod", "2"},
      {"ChartCycle", "1"},
      {"UserID", "-1"},
      {"SymbolID", "0"},
      {"ShareIndex", "-1"},
      {"BlMovable", "1"},
      {"BlDeleble", "1"},
      {"BlPopupDlg", "1"},
      {"ChartNo", "-1"},
      {"IndexName", ""},
      {"YValueColor", Theme(357)},
      {"YValueStyle", "0"},
      {"YValueWidth", "1"},
      {"MinMaxY", "0"},
      {"UserMax", "0"},
      {"UserMin", "0"},
      {"InvertY", "0"},
      {"LogY", "0"},
      {"IndexType", "0"},
      {"YScaleType", "0"},
      {"YAxisCount", "0"},
      {"YAxisUnitSize", "1"},
      {"YAxisUnitText", ""},
      {"YAxisPrecision", "0"},
      {"YAxisUseComma", "1"},
      {"BlShow", "1"},
      {"BlShowLegend", "1"},
      {"RealUpdateType", "0"},
      {"ExtID", "-1"},
  };
  for (int i = 0; i < 10; ++i) keys.push_back({std::to_string(i) + ".VarValue", ""});
  for (int i = 0; i < 5; ++i) {
    const std::string line = std::to_string(i) + ".";
    const std::vector<Key> ofLine = {
        {"BlShowLine", "1"}, {"Shape", "0"},      {"DisplayType", "0"},        {"LineColor", Theme(347 + i)},
        {"LineStyle", "0"},  {"LineWidth", "1"},  {"LineUpColor", Theme(345)}, {"LineDnColor", Theme(346)},
        {"LineUpValue", ""}, {"LineDnValue", ""}, {"LineCompMethod", "0"},     {"YValue", ""},
    };
    for (const Key &key : ofLine) keys.push_back({line + key.name, key.byDefault});
  }
  keys.push_back({"ExtData", ""});
  keys.push_back({"DRAWLV", "0"});
  return keys;
}

TEST(IndexProperty, EveryKeyHasItsDefault) {
  const std::vector<StoredValue> values = StoredBy(SIndexProp(), 2);
  const std::vector<Key> keys = Keys();
  ASSERT_EQ(values.size(), keys.size());
  for (std::size_t i = 0; i < keys.size(); ++i) {
    EXPECT_EQ(values[i].category, "Index2");
    EXPECT_EQ(values[i].key, keys[i].name);
    EXPECT_EQ(values[i].value, keys[i].byDefault) << keys[i].name;
  }
  EXPECT_EQ(StoredBy(SIndexProp(), -1)[0].category, "Index");
  EXPECT_EQ(StoredBy(SIndexProp(), 0)[0].category, "Index0");
}

TEST(IndexProperty, EveryKeyComesBack) {
  CKqArchive archive = Renumbered(StoredBy(SIndexProp(), 0));
  SIndexProp property;
  property.Load(archive, 0);
  EXPECT_EQ(StoredBy(property, 0), ValuesOf(archive));
  EXPECT_EQ(property.ChartPeriod, 1001);
  EXPECT_EQ(property.DRAWLV, 1000 + static_cast<int>(Keys().size()));
  EXPECT_EQ(property.YValue[4].View(), std::to_string(property.DRAWLV - 2));
}

TEST(IndexProperty, MissingKeyGivesTheDefaultOfANewObject) {
  SIndexProp property;
  property.UserID = property.BlDeleble = property.IndexType = property.LineWidth[3] = 7;
  property.VarValue[9] = property.IndexName = property.VarName[0] = property.Expression[0] = "x";
  CKqArchive empty;
  property.Load(empty, 5);
  EXPECT_EQ(StoredBy(property, 5), StoredBy(SIndexProp(), 5));
  EXPECT_EQ(property.VarName[0].View(), "x") << "formulas are not in the archive";
  EXPECT_EQ(property.Expression[0].View(), "x");
}

TEST(IndexProperty, SetToDefaultLeavesIdentityAndResults) {
  SPriceDataList prices;
  SIndex index("a", kIndicatorIndex);
  const std::vector<StoredValue> fresh = StoredBy(index, 0);
  CKqArchive archive = Renumbered(fresh);
  index.Load(archive, 0);
  const std::vector<StoredValue> changed = StoredBy(index, 0);
  index.PriceDataList = &prices;
  for (SString *texts : {index.VarName, index.VarStart, index.VarEnd, index.VarIncrement, index.ExpName,
                         index.Expression, index.ConvExpression}) {
    texts[4] = "x";
  }
  index.Description = index.Password = "x";
  index.ExpData[1].Add(3.0);
  index.ExpDate.Add(20240102.0);
  index.RealKeys.Add("close");
  index.ExtLabels.Add("label");

  index.SetToDefault();
  const std::vector<StoredValue> now = StoredBy(index, 0);
  for (std::size_t i = 0; i < now.size(); ++i) {
    const bool stays = std::string(" UserID ShareIndex BlMovable BlDeleble BlPopupDlg IndexName IndexType ")
                           .find(" " + now[i].key + " ") != std::string::npos;
    EXPECT_EQ(now[i].value, stays ? changed[i].value : fresh[i].value) << now[i].key;
  }
  EXPECT_EQ(index.PriceDataList, nullptr);
  for (const SString *texts :
       {index.VarName, index.VarStart, index.VarEnd, index.VarIncrement, index.ExpName, index.Expression}) {
    EXPECT_TRUE(texts[4].IsEmpty());
  }
  EXPECT_TRUE(index.Description.IsEmpty());
  EXPECT_TRUE(index.Password.IsEmpty());
  EXPECT_EQ(index.ConvExpression[4].View(), "x");
  EXPECT_EQ(index.ExpData[1].GetSize(), 1);
  EXPECT_EQ(index.ExpDate.GetSize(), 1);
  EXPECT_EQ(index.RealKeys.GetSize(), 1);
  EXPECT_EQ(index.ExtLabels.GetSize(), 1);
}

TEST(IndexProperty, ColorsOfTheLinesDependOnTheKind) {
  const auto theme = [](int color) { return CThemeManager::GetColor(color); };
  struct Case {
    int kind;
    std::vector<Color> colors;
  };
  const Case cases[] = {
      {kConditionIndex, {theme(347), theme(348), theme(349), theme(350), theme(351)}},
      {kPatternIndex, {0xFFCCFF, 0xFFECCC, theme(349), theme(350), theme(351)}},
      {kSystemIndex, {theme(358), theme(359), theme(359), theme(358), theme(351)}},
  };
  for (const Case &c : cases) {
    const SIndex made("a", c.kind);
    SIndexProp turned;
    turned.IndexType = c.kind;
    turned.SetToDefault();
    for (std::size_t i = 0; i < 5; ++i) {
      EXPECT_EQ(made.LineColor[i], c.colors[i]) << c.kind << ", line " << i;
      EXPECT_EQ(turned.LineColor[i], c.colors[i]) << c.kind << ", line " << i;
    }
  }
}

TEST(IndexProperty, FindRealKeyIgnoresTheCaseOfLetters) {
  SIndexProp property;
  EXPECT_EQ(property.FindRealKey("close"), -1);
  property.RealKeys.Add("open");
  property.RealKeys.Add("close");
  property.RealKeys.Add("Close");
  EXPECT_EQ(property.FindRealKey("CLOSE"), 1);
  EXPECT_EQ(property.FindRealKey("clos"), -1);
  EXPECT_EQ(property.FindRealKey(nullptr), -1);
}

}  // namespace
}  // namespace trovenu
