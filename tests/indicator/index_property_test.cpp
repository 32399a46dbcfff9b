#include "trovenu/indicator/index_property.h"

#include <gtest/gtest.h>

#include <sstream>
#include <string>
#include <vector>

#include "tests/price/stored_values.h"
#include "trovenu/indicator/index.h"

namespace trovenu {
namespace {

using tests::Renumbered;
using tests::StoredBy;
using tests::StoredValue;
using tests::ValuesOf;

// Keys of a new object in order with their defaults; "@" is a theme colour.
constexpr const char *kKeys =
    "ChartPeriod=2 ChartCycle=1 UserID=-1 SymbolID=0 ShareIndex=-1 BlMovable=1 BlDeleble=1 BlPopupDlg=1 "
    "ChartNo=-1 IndexName= YValueColor=@357 YValueStyle=0 YValueWidth=1 MinMaxY=0 UserMax=0 UserMin=0 "
    "InvertY=0 LogY=0 IndexType=0 YScaleType=0 YAxisCount=0 YAxisUnitSize=1 YAxisUnitText= YAxisPrecision=0 "
    "YAxisUseComma=1 BlShow=1 BlShowLegend=1 RealUpdateType=0 ExtID=-1 ";
constexpr const char *kLineKeys =
    "#.BlShowLine=1 #.Shape=0 #.DisplayType=0 #.LineColor=@34$ #.LineStyle=0 #.LineWidth=1 "
    "#.LineUpColor=@345 "
    "#.LineDnColor=@346 #.LineUpValue= #.LineDnValue= #.LineCompMethod=0 #.YValue= ";

TEST(IndexProperty, KeysAndDefaults) {
  std::string text = kKeys;
  for (int i = 0; i < 10; ++i) text += std::to_string(i) + ".VarValue= ";
  for (int i = 0; i < 5; ++i) {
    std::string line = kLineKeys;
    line.replace(line.find("34$"), 3, std::to_string(347 + i));
    for (const char c : line) text += c == '#' ? static_cast<char>('0' + i) : c;
  }
  std::istringstream keys(text + "ExtData= DRAWLV=0");
  const std::vector<StoredValue> fresh = StoredBy(SIndexProp(), 2);
  std::size_t i = 0;
  for (std::string key; keys >> key; ++i) {
    std::string value = key.substr(key.find('=') + 1);
    if (value[0] == '@') value = std::to_string(CThemeManager::GetColor(std::stoi(value.substr(1))));
    ASSERT_LT(i, fresh.size());
    EXPECT_EQ(fresh[i], (StoredValue{"Index2", key.substr(0, key.find('=')), value}));
  }
  EXPECT_EQ(i, fresh.size());
  EXPECT_EQ(StoredBy(SIndexProp(), -1)[0].category, "Index");

  CKqArchive archive = Renumbered(fresh);
  CKqArchive empty;
  SIndexProp property;
  property.Expression[0] = "x";
  property.Load(archive, 2);
  EXPECT_EQ(StoredBy(property, 2), ValuesOf(archive));
  property.Load(empty, 2);
  EXPECT_EQ(StoredBy(property, 2), fresh);
  EXPECT_EQ(property.Expression[0].View(), "x") << "formulas are not in the archive";

  property.Load(archive, 2);
  property.SetToDefault();
  const std::vector<StoredValue> reset = StoredBy(property, 2);
  const std::vector<StoredValue> changed = ValuesOf(archive);
  const std::string kept = " UserID ShareIndex BlMovable BlDeleble BlPopupDlg IndexName IndexType ";
  for (i = 0; i < fresh.size(); ++i) {
    const bool stays = kept.find(" " + fresh[i].key + " ") != std::string::npos;
    EXPECT_EQ(reset[i], stays ? changed[i] : fresh[i]) << fresh[i].key;
  }
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

}  // namespace
}  // namespace trovenu
